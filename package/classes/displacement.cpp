#include "package/classes/class_lists.h"

namespace brimwave {

const ClassEntry& CoronaDisplacement() {
    static const ClassEntry entry = {
        .name = L"Displacement modifier of Corona",
        .rows{
            {L"maxDisplace", L"displacement_max"},
            {L"amount", L"displacement_max"},
            {L"displacementMax", L"displacement_max"},
            {L"minDisplace", L"displacement_min"},
            {L"displacementMin", L"displacement_min"},
            {L"waterLevel", L"displacement_water_level"},
            {L"screenSize", L"displacement_screen_px"},
            {L"pixelSize", L"displacement_screen_px"},
            {L"displacementType", L"displacement_type"},
            {L"enabled", L"displacement_enabled"},
        },
    };
    return entry;
}

const ClassEntry& VRayDisplacement() {
    static const ClassEntry entry = {
        .name = L"Displacement modifier of V-Ray",
        .rows{
            {L"amount", L"vray_disp_amount"},
            {L"shift", L"vray_disp_shift"},
            {L"relativeToBBox", L"vray_disp_relative_bbox"},
            {L"waterLevelOn", L"vray_disp_water_level_on"},
            {L"waterLevelValue", L"vray_disp_water_level"},
            {L"texmap_min", L"vray_disp_texmap_min"},
            {L"texmap_max", L"vray_disp_texmap_max"},
        },
    };
    return entry;
}

} // namespace brimwave
