// Materials, maps, objects, modifiers and their sub-objects in scripts.
#include <stdmat.h>
#include <triobj.h>

#include "simhost/bindings/params.h"
#include "simhost/bindings/scene_value.h"
#include "simhost/script/convert.h"
#include "simhost/script/error.h"
#include "simhost/script/raise.h"

namespace simhost::script {
namespace {

std::optional<Value> FindName(Animatable& thing) {
    if (auto* mtl = dynamic_cast<MtlBase*>(&thing))
        return MakeString(mtl->GetName().data());
    if (const Entity* entity = EntityOf(&thing))
        return MakeString(entity->name.empty() ? entity->Class().name : entity->name);
    return std::nullopt;
}

bool SetName(Animatable& thing, const Value& value) {
    if (auto* mtl = dynamic_cast<MtlBase*>(&thing)) {
        mtl->SetName(MSTR(ToString(value)));
        return true;
    }
    Entity* entity = EntityOf(&thing);
    if (entity)
        entity->name = ToString(value);
    return entity != nullptr;
}

// Bitmap keeps its file outside of its parameters.
BitmapTex* FileOwner(Animatable& thing, const std::wstring& property) {
    return property == L"filename" ? dynamic_cast<BitmapTex*>(&thing) : nullptr;
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

std::wstring ScriptClassName(Animatable& thing) {
    if (Entity* entity = EntityOf(&thing)) {
        entity->faults.Check(Call::GetClassName);
        const ClassInfo& info = entity->Class();
        return ScriptWord(info.scriptName.empty() ? info.name : info.scriptName);
    }
    // A mesh that a modifier stack made counts as what it would collapse to.
    return dynamic_cast<TriObject*>(&thing) ? L"Editable_mesh"
                                            : ScriptWord(thing.ClassName(false).data());
}

void ThingValue::Print(Printer& printer, bool) const {
    if (!Exists()) {
        printer.Append(L"<Deleted scene object>");
        return;
    }
    try {
        Animatable& thing = Thing();
        const auto name = FindName(thing);
        printer.Append(name ? TextOf(*name) : ScriptClassName(thing));
        printer.Append(L":" + ScriptClassName(thing));
    } catch (const ScriptError&) {
        throw;
    } catch (...) { // a broken class must not hide the message that prints it
        printer.Append(L"<unnamed scene object>");
    }
}

std::wstring ThingValue::ClassName() const {
    return ScriptClassName(Thing());
}
std::wstring ThingValue::SuperClassName() const {
    return SuperClassNameOf(Thing().SuperClassID());
}

std::optional<Value> ThingValue::FindProperty(const std::wstring& name) {
    Animatable& thing = Thing();
    if (name == L"name")
        return FindName(thing);
    if (name == L"numsubs")
        return Value::Integer(thing.NumSubs());
    if (Entity* entity = EntityOf(&thing)) {
        if (auto property = FindEntityProperty(*entity, name))
            return property;
    }
    BitmapTex* bitmap = FileOwner(thing, name);
    if (!bitmap)
        return std::nullopt;
    const MCHAR* path = bitmap->GetMapName();
    return MakeString(path ? path : L"");
}

bool ThingValue::SetProperty(const std::wstring& name, const Value& value) {
    Animatable& thing = Thing();
    if (name == L"name")
        return SetName(thing, value);
    Entity* entity = EntityOf(&thing);
    if (entity && SetEntityProperty(*entity, name, value))
        return true;
    BitmapTex* bitmap = FileOwner(thing, name);
    if (bitmap)
        bitmap->SetMapName(ToString(value, L"FileName").c_str());
    return bitmap != nullptr;
}

void ThingValue::CollectPropertyNames(std::vector<std::wstring>& names) const {
    if (const Entity* entity = EntityOf(&Thing()))
        CollectEntityProperties(*entity, names);
}

} // namespace simhost::script
