#include "package/material_tables.h"

namespace brimwave {
namespace {

// Corona's material classes, except those of corona_material. Rows are written in their order, and
// every spelling that the object has is written.

// CoronaSkinMtl
constexpr ParamRow coronaSkinMtlRows[] = {
    {L"skinColor", L"skin_color"},
    {L"skinLevel", L"skin_level"},
    {L"sssAmount", L"sss_amount"},
    {L"sssRadiusScale", L"sss_radius_scale"},
    {L"sssMode", L"sss_mode"},
    {L"sss1Color", L"sss1_color"},
    {L"sss1Radius", L"sss1_radius"},
    {L"sss1Weight", L"sss1_weight"},
    {L"sss2Color", L"sss2_color"},
    {L"sss2Radius", L"sss2_radius"},
    {L"sss2Weight", L"sss2_weight"},
    {L"sss3Color", L"sss3_color"},
    {L"sss3Radius", L"sss3_radius"},
    {L"sss3Weight", L"sss3_weight"},
    {L"reflection1Color", L"reflect1_color"},
    {L"reflection1Level", L"reflect1_level"},
    {L"reflection1Glossiness", L"reflect1_glossiness"},
    {L"reflection1Ior", L"reflect1_ior"},
    {L"reflection2Color", L"reflect2_color"},
    {L"reflection2Level", L"reflect2_level"},
    {L"reflection2Glossiness", L"reflect2_glossiness"},
    {L"reflection2Ior", L"reflect2_ior"},
    {L"opacityColor", L"opacity_color"},
    {L"opacityLevel", L"opacity_level"},
    {L"mapamountBump", L"bump_amount"},
    {L"displaceMinimum", L"displacement_min"},
    {L"displaceMaximum", L"displacement_max"},
    {L"displaceWaterLevel", L"displacement_water_level"},
    {L"displaceWaterLevelOn", L"displacement_water_level_on"},
};

// CoronaLightMtl
constexpr ParamRow coronaLightMtlRows[] = {
    {L"color", L"color"},
    {L"intensity", L"intensity"},
    {L"emitOnBothSides", L"emit_both_sides"},
};

// CoronaRaySwitchMtl
constexpr ParamRow coronaRaySwitchMtlRows[] = {
    {L"directMtlOn", L"direct_on"},          {L"giMtlOn", L"gi_on"},
    {L"reflectMtlOn", L"reflect_on"},        {L"refractMtlOn", L"refract_on"},
    {L"viewportSource", L"viewport_source"}, {L"displacementSource", L"displacement_source"},
};

// CoronaBlendMtl
constexpr ParamRow coronaBlendMtlRows[] = {
    {L"mixAmount", L"mix_amount"},
    {L"additive", L"additive"},
};

// CoronaSelectMtl
constexpr ParamRow coronaSelectMtlRows[] = {
    {L"selected", L"selected"},
    {L"mtlCount", L"mtl_count"},
};

} // namespace

const ParamTable coronaSkinMtlTable = coronaSkinMtlRows;
const ParamTable coronaLightMtlTable = coronaLightMtlRows;
const ParamTable coronaRaySwitchMtlTable = coronaRaySwitchMtlRows;
const ParamTable coronaBlendMtlTable = coronaBlendMtlRows;
const ParamTable coronaSelectMtlTable = coronaSelectMtlRows;

} // namespace brimwave
