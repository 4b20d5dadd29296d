#include "package/corona_material.h"

#include <cmath>

namespace brimwave {
namespace {

constexpr int glossinessMode = 1; // of roughnessMode: the stored numbers are glossiness
constexpr int specularMode = 1;   // of iorMode: the stored numbers are specular, 0..1

/// What the members depend on that no row gives as it is.
enum Source { RoughnessMode, BaseRoughness, CoatRoughness, IorMode, BaseIor, MetalnessMode };
constexpr ParamRow sourceRows[] = {{L"roughnessMode"}, {L"baseRoughness"}, {L"clearcoatRoughness"},
                                   {L"iorMode"},       {L"baseIor"},       {L"metalnessMode"}};
using Sources = std::array<ParamValue, std::size(sourceRows)>;

std::optional<float> FloatOf(const ParamValue& value) {
    return value.kind == ParamKind::Float ? std::optional(value.floatValue) : std::nullopt;
}

/// Glossiness and roughness each as its key says, whichever of them the material stores.
void AppendRoughness(JsonMembers& members, const Sources& sources) {
    const auto mode = sources[RoughnessMode].Whole();
    const bool storesGlossiness = mode == glossinessMode;
    if (mode)
        members.AddInt(L"roughness_mode", *mode);
    if (const auto base = FloatOf(sources[BaseRoughness]))
        members.AddFloat(L"reflect_glossiness", storesGlossiness ? *base : 1.0f - *base);
    if (const auto coat = FloatOf(sources[CoatRoughness]))
        members.AddFloat(L"coat_roughness", storesGlossiness ? 1.0f - *coat : *coat);
}

/// A specular value of 1 reflects 8 % at normal incidence.
float IndexOfRefraction(float specular) {
    const float root = std::sqrt(0.08f * specular);
    return (1.0f + root) / (1.0f - root);
}

/// The index of refraction of the base, whichever way the material stores it.
void AppendIor(JsonMembers& members, const Sources& sources) {
    const auto mode = sources[IorMode].Whole();
    if (mode)
        members.AddInt(L"ior_mode", *mode);
    if (const auto base = FloatOf(sources[BaseIor]))
        members.AddFloat(L"fresnel_ior", mode == specularMode ? IndexOfRefraction(*base) : *base);
}

} // namespace

void AppendCoronaModes(PackageContext& package, JsonMembers& members, MtlBase& material,
                       const ClassEntry&) {
    const Sources sources = package.params.FindParamValues(&material, sourceRows);
    AppendRoughness(members, sources);
    AppendIor(members, sources);
    if (const auto metal = sources[MetalnessMode].Whole())
        members.AddInt(L"metalness", *metal);
}

} // namespace brimwave
