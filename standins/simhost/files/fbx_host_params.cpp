#include "simhost/files/fbx_host_params.h"

#include "simhost/files/fbx_guard.h"
#include "simhost/scene/entity.h"
#include "text/utf8.h"

#include <algorithm>

namespace simhost {

namespace {

/// One parameter, or one entry of a table.
struct Place {
    IParamBlock2& block;
    ParamID id;
    int index;
    TimeValue time;
};

template <class T>
T ValueAt(const Place& place) {
    return FbxAsk(T{}, [&] {
        T value{};
        Interval valid = FOREVER;
        place.block.GetValue(place.id, place.time, value, valid, place.index);
        return value;
    });
}

FbxVec3 Vec(const Point3& p) {
    return {p.x, p.y, p.z};
}

FbxVec4 Vec(const Point4& p) {
    return {p.x, p.y, p.z, p.w};
}

class Collector {
  public:
    Collector(FbxHostParams& out, TimeValue time) : out_(out), time_(time) {}

    void AddClass(ReferenceMaker& thing) {
        const Class_ID id = FbxAsk(Class_ID(0, 0), [&] { return thing.ClassID(); });
        const SClass_ID super = FbxAsk(SClass_ID{0}, [&] { return thing.SuperClassID(); });
        Add("3dsMax", FbxTypes::compound, {});
        Add("3dsMax|ClassIDa", FbxTypes::integer, static_cast<std::int32_t>(id.PartA()));
        Add("3dsMax|ClassIDb", FbxTypes::integer, static_cast<std::int32_t>(id.PartB()));
        Add("3dsMax|SuperClassID", FbxTypes::integer, static_cast<std::int32_t>(super));
    }

    void AddBlocks(ReferenceMaker& thing) {
        const int count = FbxAsk(0, [&] { return thing.NumParamBlocks(); });
        for (int i = 0; i < count; ++i) {
            IParamBlock2* block =
                FbxAsk<IParamBlock2*>(nullptr, [&] { return thing.GetParamBlock(i); });
            if (block)
                AddBlock(*block);
        }
        AddHiddenBlocks(thing);
    }

    void AddSubObjects(ReferenceMaker& thing) {
        const int count = FbxAsk(0, [&] { return thing.NumRefs(); });
        for (int i = 0; i < count; ++i) {
            ReferenceTarget* target =
                FbxAsk<ReferenceTarget*>(nullptr, [&] { return thing.GetReference(i); });
            if (target && !dynamic_cast<IParamBlock2*>(target) && !dynamic_cast<MtlBase*>(target) &&
                !dynamic_cast<INode*>(target) && !dynamic_cast<BaseObject*>(target))
                AddBlocks(*target);
        }
    }

  private:
    /// Values that the host keeps where plug-ins don't see them (old lights have no blocks).
    void AddHiddenBlocks(ReferenceMaker& thing) {
        const Entity* entity = EntityOf(&thing);
        if (!entity)
            return;
        for (const auto& block : entity->Blocks())
            if (block && block->Hidden())
                AddBlock(*block);
    }

    void Add(std::string name, FbxType type, FbxValue value) {
        out_.properties.push_back({std::move(name), type, std::move(value)});
    }

    void AddBlock(IParamBlock2& block) {
        ParamBlockDesc2* desc = FbxAsk<ParamBlockDesc2*>(nullptr, [&] { return block.GetDesc(); });
        if (!desc)
            return;
        std::string name = FbxText(desc->int_name);
        if (name.empty())
            name = "ParamBlock_" + std::to_string(blocks_);
        ++blocks_;
        const std::string prefix = "3dsMax|" + name;
        Add(prefix, FbxTypes::compound, {});
        for (int i = 0; i < desc->count; ++i)
            AddParam(block, desc->paramdefs[i], i, prefix);
    }

    void AddParam(IParamBlock2& block, const ParamDef& def, int index, const std::string& prefix) {
        std::string name = FbxText(def.int_name);
        if (name.empty())
            name = "_Unnamed_Parameter_" + std::to_string(index);
        name = prefix + "|" + name;
        const auto type = static_cast<ParamType2>(def.type & ~TYPE_TAB);
        if (!(def.type & TYPE_TAB)) {
            AddValue({block, def.ID, 0, time_}, type, std::move(name));
            return;
        }
        Add(name, FbxTypes::compound, {});
        const int count = FbxAsk(0, [&] { return block.Count(def.ID); });
        for (int i = 0; i < count; ++i)
            AddValue({block, def.ID, i, time_}, type, name + "|" + std::to_string(i));
    }

    void AddValue(const Place& place, ParamType2 type, std::string name) {
        switch (type) {
        case TYPE_FLOAT:
        case TYPE_ANGLE:
        case TYPE_PCNT_FRAC:
        case TYPE_WORLD:
        case TYPE_COLOR_CHANNEL:
            return Add(std::move(name), FbxTypes::anyFloat, ValueAt<float>(place));
        case TYPE_INT:
        case TYPE_INDEX:
        case TYPE_RADIOBTN_INDEX:
        case TYPE_TIMEVALUE:
        case TYPE_ENUM:
            return Add(std::move(name), FbxTypes::anyInteger, ValueAt<int>(place));
        case TYPE_BOOL:
            return Add(std::move(name), FbxTypes::anyBool, ValueAt<int>(place));
        case TYPE_RGBA:
        case TYPE_HSV:
            return Add(std::move(name), FbxTypes::anyColor, Vec(ValueAt<Point3>(place)));
        case TYPE_POINT3:
            return Add(std::move(name), FbxTypes::anyVector, Vec(ValueAt<Point3>(place)));
        case TYPE_FRGBA:
        case TYPE_POINT4:
            return Add(std::move(name), FbxTypes::anyColorAndAlpha, Vec(ValueAt<Point4>(place)));
        case TYPE_STRING:
            return Add(std::move(name), FbxTypes::anyText, FbxText(ValueAt<const MCHAR*>(place)));
        case TYPE_FILENAME:
            return Add(std::move(name), FbxTypes::url, FbxText(ValueAt<const MCHAR*>(place)));
        case TYPE_TEXMAP:
            if (Texmap* map = ValueAt<Texmap*>(place))
                out_.textures.push_back({name, map});
            return Add(std::move(name), FbxTypes::anyReference, {});
        case TYPE_MTL:
            if (Mtl* mtl = ValueAt<Mtl*>(place))
                out_.materials.push_back({name, mtl});
            return Add(std::move(name), FbxTypes::anyReference, {});
        case TYPE_INODE:
        case TYPE_REFTARG:
        case TYPE_BITMAP:
            return Add(std::move(name), FbxTypes::anyReference, {});
        default: // the format has no word for it
            return;
        }
    }

    FbxHostParams& out_;
    TimeValue time_;
    int blocks_ = 0;
};

char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// Whether the property is "3dsMax|<some block>|<name>".
bool IsNamed(std::string_view property, std::string_view name) {
    constexpr std::string_view host = "3dsMax|";
    const std::size_t before = property.size() - name.size();
    return property.size() > host.size() + name.size() && property[before - 1] == '|' &&
           property.find('|', host.size()) == before - 1 &&
           std::equal(name.begin(), name.end(),
                      property.begin() + static_cast<std::ptrdiff_t>(before),
                      [](char a, char b) { return Lower(a) == Lower(b); });
}

} // namespace

const FbxValue* FbxHostParams::Find(std::initializer_list<const char*> names) const {
    for (const char* name : names)
        for (const FbxProperty& property : properties)
            if (property.value.index() != 0 && IsNamed(property.name, name))
                return &property.value;
    return nullptr;
}

double FbxHostParams::Number(std::initializer_list<const char*> names, double fallback) const {
    const FbxValue* value = Find(names);
    if (!value)
        return fallback;
    if (const float* number = std::get_if<float>(value))
        return *number;
    if (const std::int32_t* number = std::get_if<std::int32_t>(value))
        return *number;
    return fallback;
}

FbxVec3 FbxHostParams::Colour(std::initializer_list<const char*> names,
                              const FbxVec3& fallback) const {
    const FbxValue* value = Find(names);
    if (!value)
        return fallback;
    if (const FbxVec3* colour = std::get_if<FbxVec3>(value))
        return *colour;
    if (const FbxVec4* colour = std::get_if<FbxVec4>(value))
        return {(*colour)[0], (*colour)[1], (*colour)[2]};
    return fallback;
}

std::string FbxHostParams::Text(std::initializer_list<const char*> names) const {
    const FbxValue* value = Find(names);
    const std::string* text = value ? std::get_if<std::string>(value) : nullptr;
    return text ? *text : std::string();
}

Texmap* FbxHostParams::Texture(std::initializer_list<const char*> names) const {
    for (const char* name : names)
        for (const FbxHostLink<Texmap>& link : textures)
            if (IsNamed(link.property, name))
                return link.target;
    return nullptr;
}

FbxHostParams CollectFbxHostParams(ReferenceMaker& thing, TimeValue t) {
    FbxHostParams params;
    Collector collector(params, t);
    collector.AddClass(thing);
    collector.AddBlocks(thing);
    collector.AddSubObjects(thing);
    return params;
}

std::string FbxText(const MCHAR* text) {
    return text ? utf8::FromWide(text) : std::string();
}

} // namespace simhost
