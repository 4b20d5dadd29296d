#include "simhost/files/fbx_attributes.h"
#include "simhost/files/fbx_guard.h"
#include "simhost/files/fbx_host_params.h"

#include <algorithm>

namespace simhost {

namespace {

// The format's numbers.
enum LightType { Point = 0, Directional = 1, Spot = 2, Area = 3 };
enum Decay { NoDecay = 0, Quadratic = 2 };

constexpr double degrees = 57.295779513082320877;

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
    {"CoronaSun", Directional, NoDecay, degrees},
    {"VRaySun", Directional, NoDecay, degrees},
    {"CoronaLight", Area, Quadratic, degrees},
    {"VRayLight", Area, Quadratic, degrees},
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
    return {{}, params.Number({"Distribution"}, 0) == 1 ? Spot : Point, Quadratic, degrees};
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
        {"Color", FbxType::AnyColor,
         params.Colour({"color", "rgb", "colorDirect", "rgbFilter", "filter_color"}, {1, 1, 1})},
        {"LightType", FbxType::Enum, std::int32_t{kind.type}},
        {"CastLightOnObject", FbxType::Bool, on ? 1 : 0},
        {"Intensity", FbxType::Number, intensity * 100},
        {"InnerAngle", FbxType::Number, std::min(hotspot, falloff)},
        {"OuterAngle", FbxType::Number, falloff},
        {"DecayType", FbxType::Enum,
         static_cast<std::int32_t>(params.Number({"attenDecay"}, kind.decay))},
        {"CastShadows", FbxType::Bool,
         params.Number({"castShadows", "cast_shadows"}, 1) != 0 ? 1 : 0}};
    properties.insert(properties.end(), params.properties.begin(), params.properties.end());
    return properties;
}

} // namespace simhost
