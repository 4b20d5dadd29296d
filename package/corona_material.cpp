#include "package/corona_material.h"

#include "package/param_table.h"

#include <cmath>

namespace brimwave {
namespace {

// How strongly each map counts.
constexpr ParamRow amountRows[] = {
    {L"mapAmountDiffuse", L"amt_diffuse"},
    {L"mapamountReflect", L"amt_reflect"},
    {L"mapamountRefract", L"amt_refract"},
    {L"mapamountReflectGlossiness", L"amt_reflect_glossiness"},
    {L"mapamountRefractGlossiness", L"amt_refract_glossiness"},
    {L"mapamountOpacity", L"amt_opacity"},
    {L"mapamountBump", L"amt_bump"},
    {L"mapamountTranslucency", L"amt_translucency"},
    {L"mapamountAnisotropy", L"amt_anisotropy"},
    {L"mapamountAnisotropyRotation", L"amt_anisotropy_rotation"},
    {L"mapamountIor", L"amt_ior"},
    {L"mapamountFresnelIor", L"amt_fresnel_ior"},
    {L"mapamountSelfIllum", L"amt_self_illum"},
    {L"mapamountTranslucencyFraction", L"amt_translucency_fraction"},
    {L"mapamountAbsorption", L"amt_absorption"},
    {L"mapamountScatterColor", L"amt_scatter_color"},
    {L"mapamountSssAmount", L"amt_sss_amount"},
    {L"mapamountSssRadius", L"amt_sss_radius"},
    {L"mapamountSssScatterColor", L"amt_sss_scatter_color"},
    {L"baseMapAmount", L"amt_diffuse"},
    {L"baseRoughnessMapAmount", L"amt_reflect_glossiness"},
    {L"baseIorMapAmount", L"amt_fresnel_ior"},
    {L"baseAnisotropyMapAmount", L"amt_anisotropy"},
    {L"baseAnisoRotationMapAmount", L"amt_anisotropy_rotation"},
    {L"opacityMapAmount", L"amt_opacity"},
    {L"refractionAmountMapAmount", L"amt_refract"},
    {L"selfillumMapAmount", L"amt_self_illum"},
    {L"clearcoatAmountMapAmount", L"amt_clearcoat_amount"},
    {L"clearcoatIorMapAmount", L"amt_clearcoat_ior"},
    {L"clearcoatRoughnessMapAmount", L"amt_clearcoat_roughness"},
    {L"volumetricAbsorptionMapAmount", L"amt_absorption"},
    {L"volumetricScatteringMapAmount", L"amt_scatter_color"},
    {L"sssAmountMapAmount", L"amt_sss_amount"},
    {L"sssRadiusMapAmount", L"amt_sss_radius"},
    {L"sssScatterMapAmount", L"amt_sss_scatter_color"},
};

// The values of the physical class (base..), the legacy class and older spellings of both.
constexpr ParamRow valueRows[] = {
    {L"baseColor", L"diffuse_color"},
    {L"baseLevel", L"diffuse_level"},
    {L"edgeColor", L"reflect_color"},
    {L"refractionAmount", L"refract_level"},
    {L"useThinMode", L"thin_walled"},
    {L"selfIllumColor", L"emission_color"},
    {L"selfIllumLevel", L"emission_level"},
    {L"clearcoatAmount", L"clearcoat_amount"},
    {L"sheenAmount", L"sheen_amount"},
    {L"sheenColor", L"sheen_color"},
    {L"sssAmount", L"sss_amount"},
    {L"sssScatterColor", L"sss_color"},
    {L"sssRadius", L"sss_radius", RowUnit::Length},
    {L"colorDiffuse", L"diffuse_color"},
    {L"diffuseColor", L"diffuse_color"},
    {L"levelDiffuse", L"diffuse_level"},
    {L"diffuseLevel", L"diffuse_level"},
    {L"colorReflect", L"reflect_color"},
    {L"reflectColor", L"reflect_color"},
    {L"levelReflect", L"reflect_level"},
    {L"reflectGlossiness", L"reflect_glossiness"},
    {L"fresnelIor", L"fresnel_ior"},
    {L"reflectIOR", L"reflect_ior"},
    {L"metalness", L"metalness"},
    {L"baseMetalness", L"metalness"},
    {L"metalnessAmount", L"metalness"},
    {L"metalAmount", L"metalness"},
    {L"pbrMode", L"pbr_mode"},
    {L"colorRefract", L"refract_color"},
    {L"refractColor", L"refract_color"},
    {L"levelRefract", L"refract_level"},
    {L"refractGlossiness", L"refract_glossiness"},
    {L"ior", L"refraction_ior"},
    {L"refractionIOR", L"refraction_ior"},
    {L"thin", L"thin_walled"},
    {L"colorOpacity", L"opacity_color"},
    {L"levelOpacity", L"opacity_level"},
    {L"alphaMode", L"alpha_mode"},
    {L"colorSelfIllum", L"emission_color"},
    {L"selfIllumination", L"emission_color"},
    {L"levelSelfIllum", L"emission_level"},
    {L"selfIlluminationMultiplier", L"emission_multiplier"},
    {L"levelSss", L"sss_amount"},
    {L"useSss", L"use_sss"},
    {L"sssColor", L"sss_color"},
    {L"anisotropy", L"anisotropy"},
    {L"baseAnisotropy", L"anisotropy"},
    {L"anisotropyAmount", L"anisotropy"},
    {L"anisotropyRotation", L"anisotropy_rotation"},
    {L"baseAnisotropyRotation", L"anisotropy_rotation"},
    {L"levelTranslucency", L"translucency_level"},
    {L"colorTranslucency", L"translucency_color"},
    {L"translucencyFraction", L"translucency_level"},
    {L"translucencyColor", L"translucency_color"},
    {L"useThinMode", L"use_thin_mode"},
    {L"mapamountBump", L"bump_amount"},
    {L"baseBumpMapAmount", L"bump_amount"},
    {L"clearcoatBumpMapAmount", L"clearcoat_bump_amount"},
    {L"absorptionColor", L"absorption_color"},
    {L"volumetricAbsorptionColor", L"absorption_color"},
    {L"scatterColor", L"volume_scatter_color"},
    {L"volumetricScatteringColor", L"volume_scatter_color"},
    {L"scatterDirectionality", L"volume_scatter_directionality"},
    {L"scatterSingleBounce", L"volume_scatter_single_bounce"},
    {L"displacementMinimum", L"displacement_min", RowUnit::Length},
    {L"displacementMaximum", L"displacement_max", RowUnit::Length},
    {L"displacementWaterLevel", L"displacement_water_level"},
    {L"displacementWaterLevelOn", L"displacement_water_level_on"},
    {L"baseDisplacementMin", L"displacement_min", RowUnit::Length},
    {L"baseDisplacementMax", L"displacement_max", RowUnit::Length},
    {L"baseDisplacementWaterLevel", L"displacement_water_level"},
    {L"npEnable", L"np_enable"},
    {L"npReflectionLevel", L"np_reflection_level"},
    {L"npReflectionColor", L"np_reflection_color"},
    {L"npRefractionLevel", L"np_refraction_level"},
    {L"npRefractionColor", L"np_refraction_color"},
};

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

void AppendCoronaMaterial(PackageContext& package, JsonMembers& members, MtlBase& material) {
    package.params.AppendTable(members, &material, amountRows);
    const Sources sources = package.params.FindParamValues(&material, sourceRows);
    AppendRoughness(members, sources);
    AppendIor(members, sources);
    if (const auto metal = sources[MetalnessMode].Whole())
        members.AddInt(L"metalness", *metal);
    package.params.AppendTable(members, &material, valueRows, package.metresPerUnit);
}

} // namespace brimwave
