#include "package/material_tables.h"

namespace brimwave {
namespace {

// V-Ray's material classes. Rows are written in their order, and every spelling that the object has
// is written.

// VRayMtl
constexpr ParamRow vrayMtlRows[] = {
    {L"Diffuse", L"diffuse"},
    {L"diffuse_roughness", L"diffuse_roughness"},
    {L"selfIllumination", L"self_illumination"},
    {L"selfIllumination_multiplier", L"self_illumination_multiplier"},
    {L"selfIllumination_gi", L"self_illumination_gi"},
    {L"Reflection", L"reflection"},
    {L"reflection_glossiness", L"reflection_glossiness"},
    {L"hilight_glossiness", L"hilight_glossiness"},
    {L"reflection_fresnel", L"reflection_fresnel"},
    {L"reflection_IOR", L"reflection_ior"},
    {L"reflection_metalness", L"reflection_metalness"},
    {L"reflection_lockGlossiness", L"reflection_lock_glossiness"},
    {L"reflection_lockIOR", L"reflection_lock_ior"},
    {L"Refraction", L"refraction"},
    {L"refraction_glossiness", L"refraction_glossiness"},
    {L"refraction_ior", L"ior"},
    {L"refraction_fogColor", L"refraction_fog_color"},
    {L"refraction_fogMult", L"refraction_fog_mult"},
    {L"refraction_fogDepth", L"refraction_fog_depth"},
    {L"refraction_fogBias", L"refraction_fog_bias"},
    {L"refraction_fogUnitsScale_on", L"refraction_fog_units_scale_on"},
    {L"refraction_thinWalled", L"refraction_thin_walled"},
    {L"refraction_dispersion", L"refraction_dispersion"},
    {L"refraction_dispersion_on", L"refraction_dispersion_on"},
    {L"refraction_affectShadows", L"refraction_affect_shadows"},
    {L"translucency_on", L"translucency_mode"},
    {L"translucency_amount", L"translucency_amount"},
    {L"translucency_thickness", L"translucency_thickness"},
    {L"translucency_scatterCoeff", L"translucency_scatter_coeff"},
    {L"translucency_fbCoeff", L"translucency_fb_coeff"},
    {L"translucency_multiplier", L"translucency_multiplier"},
    {L"translucency_color", L"translucency_color"},
    {L"translucency_surfaceLighting", L"translucency_surface_lighting"},
    {L"coat_color", L"coat_color"},
    {L"coat_amount", L"coat_amount"},
    {L"coat_glossiness", L"coat_glossiness"},
    {L"coat_ior", L"coat_ior"},
    {L"coat_bump_lock", L"coat_bump_lock"},
    {L"sheen_color", L"sheen_color"},
    {L"sheen_glossiness", L"sheen_glossiness"},
    {L"thinFilm_on", L"thin_film_on"},
    {L"thinFilm_thickness_min", L"thin_film_thickness_min"},
    {L"thinFilm_thickness_max", L"thin_film_thickness_max"},
    {L"thinFilm_ior", L"thin_film_ior"},
    {L"brdf_type", L"brdf_type"},
    {L"gtr_gamma", L"gtr_gamma"},
    {L"brdf_useRoughness", L"brdf_use_roughness"},
    {L"anisotropy", L"anisotropy"},
    {L"anisotropy_rotation", L"anisotropy_rotation"},
    {L"anisotropy_derivation", L"anisotropy_derivation"},
    {L"Soften", L"soften"},
    {L"option_opacityMode", L"opacity_mode"},
    {L"option_glossyFresnel", L"option_glossy_fresnel"},
    {L"option_doubleSided", L"option_double_sided"},
    {L"option_reflectOnBack", L"option_reflect_on_back"},
    {L"option_traceReflection", L"option_trace_reflection"},
    {L"option_traceRefraction", L"option_trace_refraction"},
    {L"texmap_diffuse_multiplier", L"amt_diffuse"},
    {L"texmap_reflection_multiplier", L"amt_reflect"},
    {L"texmap_refraction_multiplier", L"amt_refract"},
    {L"texmap_bump_multiplier", L"amt_bump"},
    {L"texmap_reflectionGlossiness_multiplier", L"amt_reflect_glossiness"},
    {L"texmap_refractionGlossiness_multiplier", L"amt_refract_glossiness"},
    {L"texmap_refractionIOR_multiplier", L"amt_ior"},
    {L"texmap_reflectionIOR_multiplier", L"amt_fresnel_ior"},
    {L"texmap_opacity_multiplier", L"amt_opacity"},
    {L"texmap_metalness_multiplier", L"amt_metalness"},
    {L"texmap_self_multiplier", L"amt_self_illum"},
    {L"texmap_translucent_multiplier", L"amt_translucency"},
    {L"texmap_anisotropy_multiplier", L"amt_anisotropy"},
    {L"texmap_displacement_multiplier", L"amt_displacement"},
    {L"texmap_coat_multiplier", L"amt_coat_amount"},
    {L"texmap_sheen_multiplier", L"amt_sheen_color"},
};

// VRayALSurfaceMtl
constexpr ParamRow vrayAlSurfaceMtlRows[] = {
    {L"diffuse_color", L"diffuse_color"},
    {L"diffuse_strength", L"diffuse_strength"},
    {L"opacity", L"opacity_color"},
    {L"reflect1_color", L"reflect1_color"},
    {L"reflect1_strength", L"reflect1_strength"},
    {L"reflect1_roughness", L"reflect1_roughness"},
    {L"reflect1_ior", L"reflect1_ior"},
    {L"reflect2_color", L"reflect2_color"},
    {L"reflect2_strength", L"reflect2_strength"},
    {L"reflect2_roughness", L"reflect2_roughness"},
    {L"reflect2_ior", L"reflect2_ior"},
    {L"sss_mix", L"sss_mix"},
    {L"sss_mode", L"sss_mode"},
    {L"sss_density_scale", L"sss_density_scale"},
    {L"sss1_color", L"sss1_color"},
    {L"sss1_weight", L"sss1_weight"},
    {L"sss1_radius", L"sss1_radius"},
    {L"sss2_color", L"sss2_color"},
    {L"sss2_weight", L"sss2_weight"},
    {L"sss2_radius", L"sss2_radius"},
    {L"sss3_color", L"sss3_color"},
    {L"sss3_weight", L"sss3_weight"},
    {L"sss3_radius", L"sss3_radius"},
    {L"bump_texture_multiplier", L"bump_amount"},
};

// VRayCarPaintMtl
constexpr ParamRow vrayCarPaintMtlRows[] = {
    {L"base_color", L"base_color"},
    {L"base_reflection", L"base_reflection"},
    {L"base_glossiness", L"base_glossiness"},
    {L"flake_color", L"flake_color"},
    {L"flake_glossiness", L"flake_glossiness"},
    {L"flake_orientation", L"flake_orientation"},
    {L"flake_density", L"flake_density"},
    {L"flake_scale", L"flake_scale"},
    {L"flake_size", L"flake_size"},
    {L"coat_color", L"coat_color"},
    {L"coat_strength", L"coat_strength"},
    {L"coat_glossiness", L"coat_glossiness"},
    {L"double_sided", L"double_sided"},
    {L"texmap_base_color_multiplier", L"amt_base_color"},
    {L"texmap_base_reflection_multiplier", L"amt_base_reflection"},
    {L"texmap_base_glossiness_multiplier", L"amt_base_glossiness"},
    {L"texmap_base_bump_multiplier", L"amt_bump"},
};

// VRayFastSSS2
constexpr ParamRow vrayFastSss2Rows[] = {
    {L"ior", L"ior"},
    {L"scale", L"scale"},
    {L"overall_color", L"overall_color"},
    {L"diffuse_color", L"diffuse_color"},
    {L"diffuse_amount", L"diffuse_amount"},
    {L"sub_surface_color", L"sss_color"},
    {L"scatter_color", L"scatter_color"},
    {L"scatter_radius", L"scatter_radius"},
    {L"phase_function", L"phase_function"},
    {L"specular_color", L"specular_color"},
    {L"specular_amount", L"specular_amount"},
    {L"specular_glossiness", L"specular_glossiness"},
    {L"color_mode", L"color_mode"},
    {L"single_scatter", L"single_scatter"},
    {L"multiple_scattering", L"multiple_scattering"},
    {L"front_lighting", L"front_lighting"},
    {L"back_lighting", L"back_lighting"},
    {L"max_distance", L"max_distance"},
};

// VRayStochasticFlakesMtl
constexpr ParamRow vrayStochasticFlakesMtlRows[] = {
    {L"enable_flakes", L"enable_flakes"},
    {L"num_flakes", L"num_flakes"},
    {L"hilight_glossiness", L"hilight_glossiness"},
    {L"reflection_filter", L"reflection_filter"},
    {L"flake_scale", L"flake_scale"},
    {L"brdf_type", L"brdf_type"},
    {L"colored_flakes", L"colored_flakes"},
    {L"saturation", L"saturation"},
    {L"lightness", L"lightness"},
    {L"blur_angle", L"blur_angle"},
    {L"white_average", L"white_average"},
};

// VRayBlendMtl
constexpr ParamRow vrayBlendMtlRows[] = {
    {L"additiveMode", L"additive_mode"},
    {L"additiveDispl", L"additive_displacement"},
};

// VRay2SidedMtl
constexpr ParamRow vray2SidedMtlRows[] = {
    {L"translucency", L"translucency"},
    {L"backMtlOn", L"back_mtl_on"},
    {L"force1SidedSubMtls", L"force_1sided"},
    {L"mult_by_front_diffuse", L"mult_by_front_diffuse"},
    {L"texmap_translucency_multiplier", L"amt_translucency"},
};

// VRayLightMtl
constexpr ParamRow vrayLightMtlRows[] = {
    {L"color", L"color"},
    {L"multiplier", L"multiplier"},
    {L"twoSided", L"two_sided"},
    {L"compensate_exposure", L"compensate_exposure"},
    {L"opacity_multiplyColor", L"opacity_multiply_color"},
    {L"displacement_multiplier", L"displacement_multiplier"},
};

} // namespace

const ParamTable vrayMtlTable = vrayMtlRows;
const ParamTable vrayAlSurfaceMtlTable = vrayAlSurfaceMtlRows;
const ParamTable vrayCarPaintMtlTable = vrayCarPaintMtlRows;
const ParamTable vrayFastSss2Table = vrayFastSss2Rows;
const ParamTable vrayStochasticFlakesMtlTable = vrayStochasticFlakesMtlRows;
const ParamTable vrayBlendMtlTable = vrayBlendMtlRows;
const ParamTable vray2SidedMtlTable = vray2SidedMtlRows;
const ParamTable vrayLightMtlTable = vrayLightMtlRows;

} // namespace brimwave
