#include "package/classes/class_lists.h"

namespace brimwave {

const ClassEntry& BitmapImage() {
    static const ClassEntry entry = {
        .name = L"Image of every bitmap",
        .rows{
            {L"colorSpace", L"color_space"},
            {L"gamma", L"gamma"},
            {L"outputAmount", L"output_amount"},
            {L"tilingU", L"tiling_mode_u"},
            {L"tilingV", L"tiling_mode_v"},
            {L"filterType", L"filter_type"},
            {L"clippingOn", L"crop_enabled"},
            {L"clippingMode", L"crop_mode"},
            {L"clippingU", L"crop_u"},
            {L"clippingV", L"crop_v"},
            {L"clippingWidth", L"crop_w"},
            {L"clippingHeight", L"crop_h"},
        },
    };
    return entry;
}

const ClassEntry& MapOutput() {
    static const ClassEntry entry = {
        .name = L"Output of a map",
        .rows{
            {L"outputAmount", L"output_amount"},
            {L"Output_Amount", L"output_amount"},
            {L"rgbLevel", L"output_rgb_level"},
            {L"RGB_Level", L"output_rgb_level"},
            {L"rgbOffset", L"output_rgb_offset"},
            {L"RGB_Offset", L"output_rgb_offset"},
            {L"bumpAmount", L"output_bump_amount"},
            {L"Bump_Amount", L"output_bump_amount"},
            {L"invert", L"output_invert"},
            {L"clamp", L"output_clamp"},
            {L"alphaFromRGB", L"output_alpha_from_rgb"},
            {L"enableColorMap", L"output_use_color_map"},
            {L"useRGBColorMap", L"output_use_rgb_color_map"},
        },
        .note = L"Of maps that have an output, after all their other members. Points of "
                L"colour-map curves are not written.",
    };
    return entry;
}

} // namespace brimwave
