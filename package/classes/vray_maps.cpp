#include "package/bitmap.h"
#include "package/classes/class_lists.h"

namespace brimwave {

const ClassList& VRayMaps() {
    static const ClassList classes = {
        {.name = L"VRayBitmap, VRayHDRI",
         .classNames{L"vrayhdri", L"vraybitmap"},
         .writer = AppendBitmap,
         .rowsAfter{
             {L"gamma", L"bitmap_gamma"},
             {L"mapChannel", L"uvw_channel"},
             {L"multiplier", L"vray_multiplier"},
             {L"renderMultiplier", L"vray_render_multiplier"},
             {L"color_space", L"vray_color_space"},
             {L"maptype", L"vray_map_type"},
             {L"horizontalFlip", L"vray_flip_u"},
             {L"verticalFlip", L"vray_flip_v"},
         },
         .note = L"The file and its placement, and what every bitmap has. Then:"},
        {.name = L"VRayColor",
         .classNames{L"vraycolor"},
         .rows{
             {L"color", L"color"},
             {L"rgb_multiplier", L"multiplier"},
             {L"alpha", L"alpha"},
             {L"color_gamma", L"color_gamma"},
             {L"color_mode", L"color_mode"},
             {L"temperature", L"temperature"},
         }},
        {.name = L"VRayCompTex",
         .classNames{L"vraycomptex"},
         .rows{
             {L"operator", L"operator_raw"},
             {L"multiplier", L"multiplier"},
         }},
        {.name = L"VRayDirt",
         .classNames{L"vraydirt"},
         .rows{
             {L"radius", L"radius"},
             {L"occluded_color", L"occluded_color"},
             {L"unoccluded_color", L"unoccluded_color"},
             {L"distribution", L"distribution"},
             {L"falloff", L"falloff"},
             {L"mode", L"mode"},
             {L"thin_mode", L"thin_mode"},
             {L"ignore_self_occlusion", L"ignore_self_occlusion"},
             {L"double_sided", L"double_sided"},
             {L"subdivs", L"subdivs"},
             {L"texmap_radius_multiplier", L"amt_radius"},
         }},
        {.name = L"VRayEdgesTex",
         .classNames{L"vrayedgestex"},
         .rows{
             {L"thickness", L"thickness"},
             {L"pixelWidth", L"pixel_width"},
             {L"edgesColor", L"edges_color"},
             {L"widthType", L"width_type"},
             {L"HiddenEdges", L"hidden_edges"},
             {L"roundedCorners_mode", L"rounded_corners_mode"},
             {L"roundedCorners_radius", L"rounded_corners_radius"},
             {L"texmap_thickness_multiplier", L"amt_thickness"},
         }},
        {.name = L"VRayMultiSubTex",
         .classNames{L"vraymultisubtex"},
         .rows{
             {L"from_id", L"from_id"},
             {L"seed", L"seed"},
             {L"texmap_num", L"texmap_num"},
             {L"blend_color_and_tex", L"blend_color_and_tex"},
             {L"loop_texmaps", L"loop_texmaps"},
             {L"default_color", L"default_color"},
             {L"default_texmap_on", L"default_texmap_on"},
             {L"default_texmap_mult", L"default_texmap_mult"},
         }},
        {.name = L"VRayNormalMap",
         .classNames{L"vraynormalmap"},
         .rows{
             {L"normal_map_multiplier", L"normal_multiplier"},
             {L"bump_map_multiplier", L"bump_multiplier"},
             {L"flip_red", L"flip_red"},
             {L"flip_green", L"flip_green"},
             {L"swap_red_and_green", L"swap_rg"},
             {L"map_channel", L"uvw_channel"},
             {L"map_rotation", L"map_rotation"},
             {L"apply_gamma", L"apply_gamma"},
             {L"blue2Z_mapping_method", L"blue2z_method"},
         }},
    };
    return classes;
}

} // namespace brimwave
