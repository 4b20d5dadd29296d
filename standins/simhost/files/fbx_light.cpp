#include "simhost/files/fbx_attributes.h"
#include "simhost/files/fbx_guard.h"
#include "simhost/files/fbx_host_params.h"

#include <algorithm>

namespace simhost {

namespace {

// The format's numbers.
enum LightType { Point = 0, Directional = 1, Spot = 2, Area = 3 };
enum Decay { NoDecay = 0, Quadratic = 2 };

struct LightClass {
    std::string_view name;
    LightType type;
    Decay decay;
    double coneUnit; // of the cone's angles, in degrees
};

constexpr LightClass lightClasses[] = {
    {"Omni", Point, NoDecay, 1},
    {"Free Spot", Spot, NoDecay, 1},
    {"Target Spot", Spot, NoDecay, 1},
    {"Free Direct", Directional, NoDecay, 1},
    {"Target Direct", Directional, NoDecay, 1},
    {"CoronaSun", Directional, NoDecay, fbxDegrees},
    {"VRaySun", Directional, NoDecay, fbxDegrees},
    {"CoronaLight", Area, Quadratic, fbxDegrees},
    {"VRayLight", Area, Quadratic, fbxDegrees},
};

/// A class that is not listed is photometric or nearly so: a point, or a spot when its
/// distribution says so.
LightClass ClassOf(Object& light, const FbxHostParams& params) {
    const std::string name =
        FbxAsk(std::string(), [&] { return FbxText(light.ClassName(false).data()); });
    const auto* found = std::find_if(std::begin(lightClasses), std::end(lightClasses),
                                     [&](const LightClass& c) { return c.name == name; });
    if (found != std::end(lightClasses))
        return *found;
    return {{}, params.Number({"Distribution"}, 0) == 1 ? Spot : Point, Quadratic, fbxDegrees};
}

} // namespace

FbxProperties FbxLightProperties(Object& light, TimeValue t) {
    const FbxHostParams params = CollectFbxHostParams(light, t);
    const LightClass kind = ClassOf(light, params);
    auto* lightObject = dynamic_cast<LightObject*>(&light);
    const BOOL on = FbxAsk(TRUE, [&] { return lightObject ? lightObject->GetUseLight() : TRUE; });
    const double intensity = params.Number(
        {"intensity", "intensity_multiplier", "intensity_value", "power", "multiplier"}, 1);
    const double falloff = params.Number({"falloff"}, 45 / kind.coneUnit) * kind.coneUnit;
    const double hotspot = params.Number({"hotspot"}, 43 / kind.coneUnit) * kind.coneUnit;
    FbxProperties properties{
        {"Color", FbxTypes::anyColor,
         params.Colour({"color", "rgb", "colorDirect", "rgbFilter", "filter_color"}, {1, 1, 1})},
        {"LightType", FbxTypes::enumeration, std::int32_t{kind.type}},
        {"CastLightOnObject", FbxTypes::boolean, on ? 1 : 0},
        {"Intensity", FbxTypes::number, intensity * 100},
        {"InnerAngle", FbxTypes::number, std::min(hotspot, falloff)},
        {"OuterAngle", FbxTypes::number, falloff},
        {"DecayType", FbxTypes::enumeration,
         static_cast<std::int32_t>(params.Number({"attenDecay"}, kind.decay))},
        {"CastShadows", FbxTypes::boolean,
         params.Number({"castShadows", "cast_shadows"}, 1) != 0 ? 1 : 0}};
    properties.insert(properties.end(), params.properties.begin(), params.properties.end());
    return properties;
}

} // namespace simhost
