#include "package/texmap_tables.h"

namespace brimwave {
namespace {

// Corona's texture-map classes. Rows are written in their order, and every spelling that the object
// has is written.

// CoronaAO
constexpr ParamRow coronaAoRows[] = {
    {L"colorOccluded", L"occluded_color"},
    {L"colorUnoccluded", L"unoccluded_color"},
    {L"maxDistance", L"max_distance"},
    {L"quality", L"samples"},
};

// CoronaBumpConverter
constexpr ParamRow coronaBumpConverterRows[] = {
    {L"strength", L"strength"},
    {L"blur", L"blur"},
};

// CoronaBumpTex
constexpr ParamRow coronaBumpTexRows[] = {
    {L"strength", L"strength"},
    {L"bumpType", L"bump_type"},
};

// CoronaColorCorrect
constexpr ParamRow coronaColorCorrectRows[] = {
    {L"brightness", L"brightness"},
    {L"contrast", L"contrast"},
    {L"saturation", L"saturation"},
    {L"hue", L"hue"},
    {L"gamma", L"gamma"},
    {L"temperature", L"temperature"},
    {L"greenMagentaTint", L"green_magenta_tint"},
    {L"invert", L"invert_colors"},
    {L"exposure", L"exposure"},
    {L"tint", L"tint"},
    {L"lutEnable", L"lut_enabled"},
    {L"lutOpacity", L"lut_opacity"},
    {L"curveEnabled", L"curves_enabled"},
    {L"additionalOutputs", L"additional_outputs"},
};

// CoronaColor
constexpr ParamRow coronaColorRows[] = {
    {L"color", L"color"},
    {L"multiplier", L"multiplier"},
};

// CoronaCurvature
constexpr ParamRow coronaCurvatureRows[] = {
    {L"samplesCount", L"samples"},
    {L"rayDirectionality", L"ray_directionality"},
    {L"distanceMultiplier", L"distance_multiplier"},
    {L"baseColor", L"base_color"},
    {L"convexColor", L"convex_color"},
    {L"concaveColor", L"concave_color"},
    {L"colorSpread", L"color_spread"},
    {L"affectedBump", L"affected_bump"},
    {L"baseTexmapOn", L"base_map_on"},
    {L"convexTexmapOn", L"convex_map_on"},
    {L"concaveTexmapOn", L"concave_map_on"},
    {L"distanceTexmapOn", L"distance_map_on"},
};

// CoronaFrontBack
constexpr ParamRow coronaFrontBackRows[] = {
    {L"frontColor", L"frontColor"},
    {L"backColor", L"backColor"},
    {L"frontTexmapOn", L"front_on"},
    {L"backTexmapOn", L"back_on"},
};

// CoronaMappingRandomizer
constexpr ParamRow coronaMappingRandomizerRows[] = {
    {L"seed", L"seed"},
    {L"randomizeInstance", L"rnd_instance"},
    {L"randomizePrimitive", L"rnd_primitive"},
    {L"randomizeSubPrimitive", L"rnd_subprimitive"},
    {L"randomizePolygon", L"rnd_polygon"},
    {L"randomizeMeshElement", L"rnd_mesh_element"},
    {L"randomizeMaterialId", L"rnd_material_id"},
    {L"randomizeMaterialName", L"rnd_material_name"},
    {L"randomizeTileId", L"rnd_tile_id"},
};

// CoronaMix
constexpr ParamRow coronaMixRows[] = {
    {L"mixOperation", L"mix_operation"},
    {L"mixAmount", L"mix_amount"},
    {L"mixInSRgb", L"mix_in_srgb"},
    {L"colorTop", L"color_top"},
    {L"colorBottom", L"color_bottom"},
    {L"color1", L"color1"},
    {L"color2", L"color2"},
    {L"multiplierTop", L"mult_top"},
    {L"multiplierBottom", L"mult_bottom"},
    {L"offsetTop", L"offset_top"},
    {L"offsetBottom", L"offset_bottom"},
    {L"texmapTopOn", L"texmap_top_on"},
    {L"texmapBottomOn", L"texmap_bottom_on"},
    {L"texmapMixOn", L"texmap_mix_on"},
};

// CoronaMultiMap
constexpr ParamRow coronaMultiMapRows[] = {
    {L"mixAmount", L"mix_amount"},
    {L"seed", L"seed"},
    {L"hueRandom", L"hue_random"},
    {L"saturationRandom", L"saturation_random"},
    {L"gammaRandom", L"gamma_random"},
    {L"blurMultiplier", L"blur_multiplier"},
    {L"additionalOutputs", L"additional_outputs"},
};

// CoronaNormal
constexpr ParamRow coronaNormalRows[] = {
    {L"strength", L"strength"},
    {L"flipred", L"flip_red"},
    {L"flipgreen", L"flip_green"},
    {L"swapRedGreen", L"swap_rg"},
    {L"addGamma", L"add_gamma"},
    {L"additionalBumpOn", L"additional_bump_on"},
    {L"additionalBumpStrength", L"additional_bump_strength"},
};

// CoronaRoundEdges
constexpr ParamRow coronaRoundEdgesRows[] = {
    {L"radius", L"radius"},
    {L"mode", L"mode"},
    {L"samples", L"samples"},
};

// CoronaSelect
constexpr ParamRow coronaSelectRows[] = {
    {L"selected", L"selected"},
    {L"mapCount", L"map_count"},
};

// CoronaTileMap
constexpr ParamRow coronaTileMapRows[] = {
    {L"tilePattern", L"tile_pattern"},
    {L"tileColor", L"tile_color"},
    {L"gapColor", L"gap_color"},
    {L"tileWidth", L"tile_width"},
    {L"tileHeight", L"tile_height"},
    {L"tileWidthVariance", L"tile_width_variance"},
    {L"tileHeightVariance", L"tile_height_variance"},
    {L"gapThickness", L"gap_thickness"},
    {L"cornerRadius", L"corner_radius"},
    {L"tileTexmapOn", L"tile_texmap_on"},
    {L"gapTexmapOn", L"gap_texmap_on"},
};

// CoronaTonemapControl
constexpr ParamRow coronaTonemapControlRows[] = {
    {L"exposureAffected", L"exposure_affected"},
    {L"lutAffected", L"lut_affected"},
    {L"toneMappingAffected", L"tone_mapping_affected"},
};

// CoronaTriplanar
constexpr ParamRow coronaTriplanarRows[] = {
    {L"useMapXForAll", L"use_map_x_for_all"},
    {L"useXForAll", L"use_map_x_for_all"},
    {L"blendingAmount", L"blend_amount"},
    {L"blending", L"blend_amount"},
    {L"uvwOffsetX", L"offset_x"},
    {L"uvwOffsetY", L"offset_y"},
    {L"uvwOffsetZ", L"offset_z"},
    {L"uvwRotateX", L"rotate_x"},
    {L"uvwRotateY", L"rotate_y"},
    {L"uvwRotateZ", L"rotate_z"},
    {L"mappingSpace", L"mapping_space"},
};

// CoronaWire
constexpr ParamRow coronaWireRows[] = {
    {L"baseColor", L"base_color"},
    {L"edgeColor", L"edge_color"},
    {L"edgeWidthPixels", L"edge_width_pixels"},
    {L"edgeWidthWorld", L"edge_width_world"},
    {L"widthMode", L"width_mode"},
    {L"alledges", L"all_edges"},
    {L"edgesOn", L"edges_on"},
    {L"verticesOn", L"vertices_on"},
    {L"baseMapOn", L"base_map_on"},
};

} // namespace

const ParamTable coronaAoTable = coronaAoRows;
const ParamTable coronaBumpConverterTable = coronaBumpConverterRows;
const ParamTable coronaBumpTexTable = coronaBumpTexRows;
const ParamTable coronaColorCorrectTable = coronaColorCorrectRows;
const ParamTable coronaColorTable = coronaColorRows;
const ParamTable coronaCurvatureTable = coronaCurvatureRows;
const ParamTable coronaFrontBackTable = coronaFrontBackRows;
const ParamTable coronaMappingRandomizerTable = coronaMappingRandomizerRows;
const ParamTable coronaMixTable = coronaMixRows;
const ParamTable coronaMultiMapTable = coronaMultiMapRows;
const ParamTable coronaNormalTable = coronaNormalRows;
const ParamTable coronaRoundEdgesTable = coronaRoundEdgesRows;
const ParamTable coronaSelectTable = coronaSelectRows;
const ParamTable coronaTileMapTable = coronaTileMapRows;
const ParamTable coronaTonemapControlTable = coronaTonemapControlRows;
const ParamTable coronaTriplanarTable = coronaTriplanarRows;
const ParamTable coronaWireTable = coronaWireRows;

} // namespace brimwave
