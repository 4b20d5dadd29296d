#include "package/light_tables.h"

namespace brimwave {
namespace {

// CoronaLight: its size in metres
constexpr ParamRow coronaLightRows[] = {
    {L"on", L"on"},
    {L"shape", L"shape"},
    {L"width", L"width", RowUnit::Length},
    {L"height", L"height", RowUnit::Length},
    {L"intensity", L"intensity"},
    {L"intensityUnits", L"intensity_units"},
    {L"color", L"color"},
    {L"colorMode", L"color_mode"},
    {L"blackbodyTemp", L"temperature"},
    {L"directionality", L"directionality"},
    {L"targeted", L"targeted"},
    {L"twosidedEmission", L"twosided_emission"},
    {L"visibleDirectly", L"visible_directly"},
    {L"visibleRefl", L"visible_refl"},
    {L"visibleRefr", L"visible_refr"},
    {L"iesOn", L"ies_on"},
    {L"shadowcatcherIlluminator", L"shadowcatcher_illuminator"},
    {L"occludeOtherLights", L"occlude_other_lights"},
};

// CoronaSun
constexpr ParamRow coronaSunRows[] = {
    {L"on", L"on"},
    {L"intensity", L"intensity"},
    {L"colorDirect", L"color"},
    {L"colorMode", L"color_mode"},
    {L"blackbodyTemperature", L"temperature"},
    {L"sizeMultiplier", L"size_multiplier"},
    {L"targeted", L"targeted"},
    {L"targetDistance", L"target_distance"},
    {L"visibleDirectly", L"visible_directly"},
    {L"visibleRefl", L"visible_refl"},
    {L"visibleRefr", L"visible_refr"},
    {L"shadowsFromClouds", L"shadows_from_clouds"},
};

// VRayLight: its half sizes as stored
constexpr ParamRow vrayLightRows[] = {
    {L"on", L"on"},
    {L"type", L"vray_light_type"},
    {L"targeted", L"targeted"},
    {L"target_distance", L"target_distance"},
    {L"color", L"color"},
    {L"color_mode", L"color_mode"},
    {L"color_temperature", L"temperature"},
    {L"multiplier", L"intensity"},
    {L"normalizeColor", L"intensity_units"},
    {L"size0", L"half_width"},
    {L"size1", L"half_height"},
    {L"size2", L"half_depth"},
    {L"sizeWidth", L"width"},
    {L"sizeLength", L"height"},
    {L"DoubleSided", L"twosided_emission"},
    {L"invisible", L"invisible"},
    {L"castShadows", L"cast_shadows"},
    {L"noDecay", L"no_decay"},
    {L"skylightPortal", L"portal"},
    {L"dome_spherical", L"dome_spherical"},
};

// VRaySun
constexpr ParamRow vraySunRows[] = {
    {L"enabled", L"on"},
    {L"intensity_multiplier", L"intensity"},
    {L"size_multiplier", L"size_multiplier"},
    {L"filter_Color", L"color"},
    {L"color_mode", L"color_mode"},
    {L"turbidity", L"turbidity"},
    {L"invisible", L"invisible"},
};

// VRayIES
constexpr ParamRow vrayIesRows[] = {
    {L"enabled", L"on"},
    {L"power", L"power"},
    {L"override_intensity", L"override_intensity"},
    {L"intensity_value", L"intensity_value"},
    {L"intensity_type", L"intensity_type"},
    {L"color", L"color"},
    {L"color_mode", L"color_mode"},
    {L"color_temperature", L"temperature"},
    {L"filter_color", L"filter_color"},
    {L"use_light_shape", L"use_light_shape"},
    {L"shape", L"shape"},
    {L"shape_actual", L"shape_actual"},
    {L"override_shape", L"override_shape"},
    {L"cast_shadows", L"cast_shadows"},
    {L"targeted", L"targeted"},
};

// The host's photometric lights
constexpr ParamRow photometricLightRows[] = {
    {L"on", L"on"},
    {L"intensity", L"intensity"},
    {L"intensityType", L"intensity_type"},
    {L"intensityAt", L"intensity_at"},
    {L"Distribution", L"distribution"},
    {L"rgbFilter", L"color"},
    {L"useKelvin", L"use_kelvin"},
    {L"kelvin", L"temperature"},
    {L"targeted", L"targeted"},
};

} // namespace

const ParamTable coronaLightTable = coronaLightRows;
const ParamTable coronaSunTable = coronaSunRows;
const ParamTable vrayLightTable = vrayLightRows;
const ParamTable vraySunTable = vraySunRows;
const ParamTable vrayIesTable = vrayIesRows;
const ParamTable photometricLightTable = photometricLightRows;

} // namespace brimwave
