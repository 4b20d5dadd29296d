#include "package/standard_material.h"

#include "host/map_slots.h"

namespace brimwave {
namespace {

// The colours and levels, under each name that a shader may have for them.
struct ShaderRow {
    std::wstring_view key;
    std::wstring_view names[3];
};

constexpr ShaderRow shaderRows[] = {
    {L"diffuse_color", {L"diffuse", L"diffuseColor", {}}},
    {L"specular_color", {L"specular", L"specularColor", {}}},
    {L"filter_color", {L"filterColor", L"filter", {}}},
    {L"glossiness", {L"glossiness", L"glossiness0", {}}},
    {L"specular_level", {L"specularLevel", L"specularLevel0", {}}},
    {L"opacity", {L"opacity", {}, {}}},
    {L"two_sided", {L"twoSided", {}, {}}},
    {L"wire", {L"wire", {}, {}}},
};

/// The material's parameters and those of its shader, which is a sub-object of it.
class StandardParams {
  public:
    StandardParams(ParamReader& params, Mtl& material) : params_(params), sources_{&material} {
        const int count = material.NumRefs();
        for (int i = 0; i < count; ++i) {
            ReferenceTarget* const reference = material.GetReference(i);
            if (reference && IsShader(*reference))
                sources_.push_back(reference);
        }
    }

    ParamValue Find(std::wstring_view name) {
        for (Animatable* const source : sources_)
            if (ParamValue value = params_.FindParamValue(source, name))
                return value;
        return {};
    }

  private:
    static bool IsShader(ReferenceTarget& reference) {
        const SClass_ID superClass = reference.SuperClassID();
        return superClass != PARAMETER_BLOCK2_CLASS_ID && superClass != MATERIAL_CLASS_ID &&
               superClass != TEXMAP_CLASS_ID;
    }
    ParamReader& params_;
    std::vector<Animatable*> sources_;
};

void AppendFirst(StandardParams& params, JsonMembers& members, const ShaderRow& row) {
    for (const std::wstring_view name : row.names) {
        const ParamValue value = params.Find(name);
        AppendParamValue(members, row.key, value);
        if (value)
            return;
    }
}

/// A colour when the material glows in one, else the amount by which its diffuse colour glows.
void AppendSelfIllumination(StandardParams& params, JsonMembers& members) {
    const ParamValue useColor = params.Find(L"useSelfIllumColor");
    const bool color =
        useColor.kind == ParamKind::Bool ? useColor.boolValue : useColor.intValue != 0;
    ParamValue value = params.Find(color ? L"selfIllumColor" : L"selfIllumAmount");
    if (!value && !color)
        value = params.Find(L"selfIllum");
    AppendParamValue(members, L"self_illum", value);
}

void AppendMapSlots(PackageContext& package, JsonMembers& members, Mtl& material) {
    std::wstring list = L"[";
    for (const MapSlot& slot : ReadMapSlots(package.params, material)) {
        const auto amount = package.params.FindTabNumber(&material, L"mapAmounts", slot.index);
        list += list.size() > 1 ? L",{\"name\":" : L"{\"name\":";
        AppendJsonString(list, slot.name);
        list += L",\"amount\":";
        AppendJsonFloat(list, amount.value_or(1.0f));
        list += L",\"enabled\":";
        list += BoolToJson(slot.enabled);
        list += L'}';
    }
    list += L']';
    members.AddRaw(L"map_slots", list);
}

} // namespace

void AppendStandardMaterial(PackageContext& package, JsonMembers& members, MtlBase& object,
                            const ClassEntry&) {
    auto* const material = dynamic_cast<Mtl*>(&object);
    if (!material)
        return;
    package.params.AppendParamJson(members, material, L"shaderByName", L"shader_name");
    StandardParams params(package.params, *material);
    for (const ShaderRow& row : shaderRows) {
        if (row.key == L"two_sided")
            AppendSelfIllumination(params, members);
        AppendFirst(params, members, row);
    }
    AppendMapSlots(package, members, *material);
}

} // namespace brimwave
