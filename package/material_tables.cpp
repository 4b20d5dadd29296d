#include "package/material_tables.h"

namespace brimwave {
namespace {

// The host's own material classes. Rows are written in their order, and every spelling that the
// object has is written.

// Physical Material
constexpr ParamRow physicalMaterialRows[] = {
    {L"base_weight", L"base_weight"},
    {L"base_color", L"base_color"},
    {L"reflectivity", L"reflectivity"},
    {L"refl_color", L"refl_color"},
    {L"roughness", L"roughness"},
    {L"roughness_inv", L"roughness_inv"},
    {L"metalness", L"metalness"},
    {L"diff_roughness", L"diff_roughness"},
    {L"anisotropy", L"anisotropy"},
    {L"anisoangle", L"aniso_angle"},
    {L"transparency", L"transparency"},
    {L"trans_color", L"trans_color"},
    {L"trans_depth", L"trans_depth"},
    {L"trans_roughness", L"trans_roughness"},
    {L"trans_roughness_inv", L"trans_roughness_inv"},
    {L"trans_ior", L"trans_ior"},
    {L"thin_walled", L"thin_walled"},
    {L"scattering", L"scattering"},
    {L"sss_color", L"sss_color"},
    {L"sss_depth", L"sss_depth"},
    {L"sss_scale", L"sss_scale"},
    {L"sss_scatter_color", L"sss_scatter_color"},
    {L"emission", L"emission"},
    {L"emit_color", L"emit_color"},
    {L"emit_luminance", L"emit_luminance"},
    {L"coating", L"coating"},
    {L"coat_color", L"coat_color"},
    {L"coat_roughness", L"coat_roughness"},
    {L"coat_roughness_inv", L"coat_roughness_inv"},
    {L"coat_ior", L"coat_ior"},
    {L"sheen", L"sheen"},
    {L"sheen_color", L"sheen_color"},
    {L"sheen_roughness", L"sheen_roughness"},
    {L"thin_film", L"thin_film"},
    {L"thin_film_thickness", L"thin_film_thickness"},
    {L"thin_film_ior", L"thin_film_ior"},
    {L"material_mode", L"material_mode"},
};

// PBR Material, both workflows
constexpr ParamRow pbrMaterialRows[] = {
    {L"baseColor", L"base_color"},
    {L"metalness", L"metalness"},
    {L"roughness", L"roughness"},
    {L"useGlossiness", L"use_glossiness"},
    {L"specular", L"specular_color"},
    {L"glossiness", L"glossiness"},
    {L"emit_color", L"emit_color"},
    {L"bump_map_amt", L"bump_amount"},
    {L"displacement_amt", L"displacement_amount"},
    {L"normal_flip_red", L"normal_flip_red"},
    {L"normal_flip_green", L"normal_flip_green"},
    {L"ao_affects_diffuse", L"ao_affects_diffuse"},
};

// glTF Material
constexpr ParamRow gltfMaterialRows[] = {
    {L"baseColor", L"base_color"},
    {L"metalness", L"metalness"},
    {L"roughness", L"roughness"},
    {L"emissionColor", L"emit_color"},
    {L"alphaMode", L"alpha_mode"},
    {L"alphaCutoff", L"alpha_cutoff"},
    {L"normal", L"normal_amount"},
    {L"ambientOcclusion", L"ao_amount"},
    {L"DoubleSided", L"two_sided"},
    {L"unlit", L"unlit"},
    {L"enableClearCoat", L"coat_enabled"},
    {L"clearcoat", L"coat_amount"},
    {L"clearcoatRoughness", L"coat_roughness"},
    {L"enableSheen", L"sheen_enabled"},
};

// Standard
constexpr ParamRow standardMaterialRows[] = {
    {L"shaderByName", L"shader_name"},
};

// Blend
constexpr ParamRow blendRows[] = {
    {L"mixAmount", L"mix_amount"},
    {L"useCurve", L"use_curve"},
    {L"upper", L"curve_upper"},
    {L"lower", L"curve_lower"},
};

// Double Sided
constexpr ParamRow doubleSidedRows[] = {
    {L"translucency", L"translucency"},
    {L"map1Enabled", L"map1_enabled"},
    {L"map2Enabled", L"map2_enabled"},
};

// Top/Bottom
constexpr ParamRow topBottomRows[] = {
    {L"position", L"position"},        {L"Blend", L"blend"},
    {L"Coordinates", L"coordinates"},  {L"map1Enabled", L"map1_enabled"},
    {L"map2Enabled", L"map2_enabled"},
};

// Shellac
constexpr ParamRow shellacRows[] = {
    {L"shellacColorBlend", L"shellac_color_blend"},
};

// Shell Material
constexpr ParamRow shellMaterialRows[] = {
    {L"renderMtlIndex", L"render_mtl_index"},
    {L"viewportMtlIndex", L"viewport_mtl_index"},
};

// Material Switcher
constexpr ParamRow materialSwitcherRows[] = {
    {L"selection", L"selection"},
    {L"nummats", L"num_mats"},
};

// Material Output Selector
constexpr ParamRow materialOutputSelectorRows[] = {
    {L"outputChannelIndex", L"output_channel_index"},
    {L"numInputs", L"num_inputs"},
};

// Morpher
constexpr ParamRow morpherRows[] = {
    {L"baseMtlIndex", L"base_mtl_index"},
};

// XRef Material
constexpr ParamRow xrefMaterialRows[] = {
    {L"enableOverride", L"enable_override"},
    {L"unresolved", L"unresolved"},
    {L"srcFileName", L"src_file_name"},
    {L"srcItemName", L"src_item_name"},
};

} // namespace

const ParamTable physicalMaterialTable = physicalMaterialRows;
const ParamTable pbrMaterialTable = pbrMaterialRows;
const ParamTable gltfMaterialTable = gltfMaterialRows;
const ParamTable standardMaterialTable = standardMaterialRows;
const ParamTable blendTable = blendRows;
const ParamTable doubleSidedTable = doubleSidedRows;
const ParamTable topBottomTable = topBottomRows;
const ParamTable shellacTable = shellacRows;
const ParamTable shellMaterialTable = shellMaterialRows;
const ParamTable materialSwitcherTable = materialSwitcherRows;
const ParamTable materialOutputSelectorTable = materialOutputSelectorRows;
const ParamTable morpherTable = morpherRows;
const ParamTable xrefMaterialTable = xrefMaterialRows;

} // namespace brimwave
