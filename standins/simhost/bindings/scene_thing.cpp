// Materials, maps, objects, modifiers and their sub-objects in scripts.
#include <stdmat.h>
#include <triobj.h>

#include <algorithm>

#include "simhost/bindings/scene_params.h"
#include "simhost/bindings/scene_value.h"
#include "simhost/classes/catalogue.h"
#include "simhost/scene/factory.h"
#include "simhost/script/convert.h"
#include "simhost/script/interpreter.h"
#include "simhost/script/number.h"
#include "simhost/script/raise.h"
#include "simhost/script/text.h"

namespace simhost::script {
namespace {

// Class names have no blanks or marks in scripts.
std::wstring WordOf(std::wstring_view name) {
    std::wstring word(name);
    for (wchar_t& unit : word)
        unit = IsWordUnit(unit) ? unit : L'_';
    return word;
}

std::wstring Squeezed(std::wstring_view name) {
    std::wstring squeezed = Lower(name);
    std::erase_if(squeezed, [](wchar_t unit) { return unit == L'_' || unit == L' '; });
    return squeezed;
}

// The host's scripts spell some parameters with underscores ("Output_Amount") that their
// definitions write without.
ParamPlace FindSqueezed(const Entity& entity, const std::wstring& name) {
    const std::wstring wanted = Squeezed(name);
    for (size_t b = 0; b < entity.Blocks().size(); ++b) {
        if (!entity.Blocks()[b])
            continue;
        const auto& params = entity.Blocks()[b]->Shape().Params();
        for (size_t i = 0; i < params.size(); ++i) {
            if (params[i].name && !params[i].name->empty() && Squeezed(*params[i].name) == wanted)
                return {static_cast<int>(b), static_cast<int>(i), -1};
        }
    }
    return {};
}

// What scripts call a sub-object, beside its role.
int FindSubObject(const Entity& entity, const std::wstring& name) {
    const auto& specs = entity.Class().subObjects;
    for (size_t i = 0; i < specs.size(); ++i) {
        const std::wstring role = Lower(specs[i].role);
        const bool placement = role == L"uvgen" && (name == L"coords" || name == L"coordinates");
        if (name == WordOf(role) || placement)
            return static_cast<int>(i);
    }
    return -1;
}

bool GetNamed(Animatable& thing, const std::wstring& name, Value& result) {
    if (name == L"numsubs") {
        result = Value::Integer(thing.NumSubs());
        return true;
    }
    auto* mtl = dynamic_cast<MtlBase*>(&thing);
    if (name == L"name") {
        if (mtl)
            result = MakeString(mtl->GetName().data());
        else if (Entity* entity = EntityOf(&thing))
            result = MakeString(entity->name.empty() ? entity->Class().name : entity->name);
        else
            return false;
        return true;
    }
    if (auto* multi = dynamic_cast<Mtl*>(&thing);
        multi && multi->IsMultiMtl() && (name == L"numsubs" || name == L"count")) {
        result = Value::Integer(multi->NumSubMtls());
        return true;
    }
    return false;
}

// Bitmap keeps its file outside of its parameters.
bool GetBitmapFile(Animatable& thing, const std::wstring& name, Value& result) {
    auto* bitmap = dynamic_cast<BitmapTex*>(&thing);
    if (!bitmap || name != L"filename")
        return false;
    const MCHAR* path = bitmap->GetMapName();
    result = MakeString(path ? path : L"");
    return true;
}

// A ramp's flag: flag__1 is the start, flag__2 the end, all others lie between.
class RampFlag final : public Object {
  public:
    RampFlag(Entity& ramp, size_t index)
        : ramp_(Animatable::GetHandleByAnim(ramp.Self())), index_(index) {}
    void Print(Printer& printer, bool) const override {
        printer.Put(L"SubAnim:Flag__" + std::to_wstring(index_ + 1));
    }
    [[nodiscard]] std::wstring ClassName() const override { return L"SubAnim"; }
    bool GetProperty(Interpreter& interpreter, const std::wstring& name, Value& result) override {
        const wchar_t* table = name == L"position" ? L"positions" : L"colors";
        if (name != L"position" && name != L"color")
            return false;
        Entity* ramp = EntityOf(Animatable::GetAnimByHandle(ramp_));
        if (!ramp)
            RaiseRuntime(L"attempt to access a deleted scene object");
        const Value index = Value::Integer(static_cast<int32_t>(index_ + 1));
        result = interpreter.GetIndex(ReadParam(*ramp, ramp->FindParam(table)), index);
        return true;
    }

  private:
    AnimHandle ramp_;
    size_t index_;
};

bool GetRampFlag(Interpreter& interpreter, Entity& entity, const std::wstring& name,
                 Value& result) {
    constexpr std::wstring_view prefix = L"flag__";
    const ParamPlace positions = entity.FindParam(L"positions");
    if (!name.starts_with(prefix) || !positions.Known())
        return false;
    const auto number = LeadingWhole(name.substr(prefix.size()));
    const Value count = interpreter.GetProperty(ReadParam(entity, positions), L"count");
    if (!number || *number < 1 || *number > count.AsWhole())
        return false;
    result = {std::make_shared<RampFlag>(entity, static_cast<size_t>(*number) - 1)};
    return true;
}

Mtl* EntryOf(Mtl& multi, const Value& index) {
    const size_t position = ToPosition(index);
    if (position >= static_cast<size_t>(multi.NumSubMtls()))
        return nullptr;
    return multi.GetSubMtl(static_cast<int>(position));
}

} // namespace

Animatable& SceneValue::Thing() const {
    Animatable* thing = Animatable::GetAnimByHandle(handle_);
    if (!thing)
        RaiseRuntime(L"attempt to access a deleted scene object");
    return *thing;
}

bool SceneValue::Equals(const Object& other) const {
    const auto* value = dynamic_cast<const SceneValue*>(&other);
    return value && value->handle_ == handle_;
}

Value WrapThing(Animatable* thing) {
    if (!thing)
        return {};
    if (auto* node = dynamic_cast<SceneNode*>(thing))
        return {std::make_shared<NodeValue>(node)};
    return {std::make_shared<ThingValue>(thing)};
}

Animatable* ThingOf(const Value& value) {
    const auto* wrapped = value.As<SceneValue>();
    return wrapped ? &wrapped->Thing() : nullptr;
}

SceneNode& NodeOf(const wchar_t* function, const Value& value) {
    const auto* node = value.As<NodeValue>();
    if (!node)
        RaiseNoFunction(function, value);
    return node->Node();
}

std::wstring SuperClassNameOf(SClass_ID superClass) {
    switch (superClass) {
    case GEOMOBJECT_CLASS_ID:
        return L"GeometryClass";
    case SHAPE_CLASS_ID:
        return L"shape";
    case LIGHT_CLASS_ID:
        return L"light";
    case CAMERA_CLASS_ID:
        return L"camera";
    case HELPER_CLASS_ID:
        return L"helper";
    case SYSTEM_CLASS_ID:
        return L"system";
    case MATERIAL_CLASS_ID:
        return L"material";
    case TEXMAP_CLASS_ID:
        return L"textureMap";
    case OSM_CLASS_ID:
        return L"modifier";
    case WSM_CLASS_ID:
        return L"SpacewarpModifier";
    case WSM_OBJECT_CLASS_ID:
        return L"SpacewarpObject";
    case RENDERER_CLASS_ID:
        return L"renderer";
    case TEXOUTPUT_CLASS_ID:
        return L"TextureOutput";
    case UVGEN_CLASS_ID:
        return L"UVGenClass";
    case SHADER_KIND:
        return L"shader";
    default:
        return L"ReferenceTarget";
    }
}

std::wstring ScriptClassName(Animatable& thing) {
    if (Entity* entity = EntityOf(&thing)) {
        entity->faults.Check(Call::GetClassName);
        const ClassInfo& info = entity->Class();
        return info.scriptName.empty() ? WordOf(info.name) : WordOf(info.scriptName);
    }
    const std::wstring name = thing.ClassName(false).data();
    // A mesh that a modifier stack made counts as what it would collapse to.
    return dynamic_cast<TriObject*>(&thing) ? L"Editable_mesh" : WordOf(name);
}

std::wstring ScriptSuperClassName(Animatable& thing) {
    return SuperClassNameOf(thing.SuperClassID());
}

bool GetThingProperty(Entity& entity, const std::wstring& name, Value& result) {
    // A class can have both a sub-object and a parameter that refers to it.
    const int sub = FindSubObject(entity, name);
    if (sub >= 0 && entity.SubObject(sub)) {
        entity.faults.Check(Call::GetReference);
        result = WrapThing(entity.SubObject(sub));
        return true;
    }
    ParamPlace place = entity.FindParam(name);
    if (!place.Known() && sub < 0)
        place = FindSqueezed(entity, name);
    if (place.Known()) {
        result = ReadParam(entity, place);
        return true;
    }
    if (sub >= 0)
        return true; // an empty role
    // A material shows its shader's parameters as its own.
    Entity* shader = EntityOf(entity.SubObject(L"shader"));
    return shader && GetThingProperty(*shader, name, result);
}

bool SetThingProperty(Entity& entity, const std::wstring& name, const Value& value) {
    ParamPlace place = entity.FindParam(name);
    if (!place.Known() && FindSubObject(entity, name) < 0)
        place = FindSqueezed(entity, name);
    if (place.Known()) {
        WriteParam(entity, place, value);
        return true;
    }
    Entity* shader = EntityOf(entity.SubObject(L"shader"));
    return shader && SetThingProperty(*shader, name, value);
}

void ThingPropertyNames(const Entity& entity, std::vector<std::wstring>& names) {
    for (const auto& block : entity.Blocks()) {
        if (!block)
            continue;
        for (const ParamSpec& param : block->Shape().Params()) {
            if (param.name && !param.name->empty())
                names.push_back(*param.name);
        }
    }
}

void ThingValue::Print(Printer& printer, bool) const {
    if (!Exists()) {
        printer.Put(L"<Deleted scene object>");
        return;
    }
    try {
        Animatable& thing = Thing();
        Value name;
        const bool named = GetNamed(thing, L"name", name);
        printer.Put(named ? TextOf(name) : ScriptClassName(thing));
        printer.Put(L":" + ScriptClassName(thing));
    } catch (const ScriptError&) {
        throw;
    } catch (...) { // a broken class must not hide the message that prints it
        printer.Put(L"<unnamed scene object>");
    }
}

std::wstring ThingValue::ClassName() const {
    return ScriptClassName(Thing());
}
std::wstring ThingValue::SuperClassName() const {
    return ScriptSuperClassName(Thing());
}

bool ThingValue::GetProperty(Interpreter& interpreter, const std::wstring& name, Value& result) {
    Animatable& thing = Thing();
    if (GetNamed(thing, name, result))
        return true;
    Entity* entity = EntityOf(&thing);
    if (entity && (GetThingProperty(*entity, name, result) ||
                   GetRampFlag(interpreter, *entity, name, result)))
        return true;
    return GetBitmapFile(thing, name, result);
}

bool ThingValue::SetProperty(Interpreter&, const std::wstring& name, const Value& value) {
    Animatable& thing = Thing();
    if (name == L"name") {
        if (auto* mtl = dynamic_cast<MtlBase*>(&thing))
            mtl->SetName(MSTR(ToString(value)));
        else if (Entity* entity = EntityOf(&thing))
            entity->name = ToString(value);
        else
            return false;
        return true;
    }
    Entity* entity = EntityOf(&thing);
    if (entity && SetThingProperty(*entity, name, value))
        return true;
    auto* bitmap = dynamic_cast<BitmapTex*>(&thing);
    if (!bitmap || name != L"filename")
        return false;
    bitmap->SetMapName(ToFileName(value).c_str());
    return true;
}

// multi[i]: the sub-material of an entry.
bool ThingValue::GetIndex(Interpreter&, const Value& index, Value& result) {
    auto* mtl = dynamic_cast<Mtl*>(&Thing());
    if (!mtl || !mtl->IsMultiMtl())
        return false;
    result = WrapThing(EntryOf(*mtl, index));
    return true;
}

bool ThingValue::SetIndex(Interpreter&, const Value& index, const Value& value) {
    auto* mtl = dynamic_cast<Mtl*>(&Thing());
    if (!mtl || !mtl->IsMultiMtl())
        return false;
    auto* sub = dynamic_cast<Mtl*>(ThingOf(value));
    if (!sub && !value.IsUndefined())
        RaiseConversion(value, L"Material");
    mtl->SetSubMtl(static_cast<int>(ToPosition(index)), sub);
    return true;
}

// A copy shares what the original refers to.
bool ThingValue::Copy(Interpreter& interpreter, const std::wstring& how, Arguments& arguments,
                      Value& result) {
    Entity* entity = EntityOf(&Thing());
    if (!entity || how != L"copy")
        return false;
    std::unique_ptr<ReferenceTarget> made = MakeThing(entity->ClassShared());
    Entity* copy = EntityOf(made.get());
    if (!copy)
        return false;
    copy->CopyFrom(*entity);
    CopySubObjects(*entity, *copy);
    result = WrapThing(Scene::Current().Own(std::move(made)));
    for (const auto& [name, value] : arguments.keywords)
        interpreter.SetProperty(result, name, value);
    return true;
}

void ThingValue::PropertyNames(std::vector<std::wstring>& names) const {
    if (const Entity* entity = EntityOf(&Thing()))
        ThingPropertyNames(*entity, names);
}

} // namespace simhost::script
