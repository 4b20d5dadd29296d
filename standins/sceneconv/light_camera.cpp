#include "sceneconv/light_camera.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace sceneconv {

namespace {

// CoronaLight's own numbers.
enum Shape { Sphere = 0, Rectangle = 1, Disk = 2 };
enum IntensityUnit { Candela = 2, Lux = 3 };

// What the host gives a new photometric light; other formats' strength 1 is taken for it.
constexpr double usualCandela = 1500;
// A sun of strength 1 gives about this much.
constexpr double sunLux = 100000;
// Lights without a size get a small one.
constexpr double bulbMetres = 0.05;

/// Unknown classes cannot stand beside ours, so they are known by the host's blocks alone.
std::optional<Json> HostObject(const FbxObject* from, const Reference& reference) {
    const std::optional<HostClass> hostClass = from ? HostClassOf(*from) : std::nullopt;
    if (!hostClass)
        return std::nullopt;
    Json object = HostEntry(*from, *hostClass, "", reference);
    // The file holds all of them; a second set of other names would only hide them.
    object["replace_blocks"] = true;
    return object;
}

Json SunObject(const Light& light) {
    return {{"class", "CoronaSun"},
            {"params",
             {{"on", light.on},
              {"intensity",
               Tidy(light.unit == LightUnit::Lux ? light.intensity / sunLux : light.intensity)},
              {"colorDirect", ColorJson(light.color[0], light.color[1], light.color[2])}}}};
}

Json BulbObject(const Light& light, const Unit& unit, double targetDistance) {
    const double bulb = bulbMetres / unit.Metres();
    const bool area = light.kind == LightKind::Area;
    const bool spot = light.kind == LightKind::Spot;
    Json params;
    params["on"] = light.on;
    params["shape"] = area ? Rectangle : spot ? Disk : Sphere;
    params["width"] = Tidy(area && light.width > 0 ? light.width : bulb);
    params["height"] = Tidy(area && light.height > 0 ? light.height : bulb);
    params["intensity"] =
        Tidy(light.unit == LightUnit::Factor ? light.intensity * usualCandela : light.intensity);
    params["intensityUnits"] = Candela;
    params["color"] = ColorJson(light.color[0], light.color[1], light.color[2]);
    if (spot) {
        // Full directionality is a beam, none the light of a plain disk.
        const double cone = std::clamp(light.outerCone / (std::numbers::pi / 2), 0.0, 1.0);
        params["directionality"] = Tidy(1 - cone);
    }
    if (targetDistance > 0) {
        params["targeted"] = true;
        params["targetDistance"] = Tidy(targetDistance);
    }
    return {{"class", "CoronaLight"}, {"params", std::move(params)}};
}

/// An orthographic view has no angle: the host makes its width from angle and target distance.
void SetOrtho(Json& lens, double width, double targetDistance) {
    constexpr double angle = std::numbers::pi / 4;
    const double distance = targetDistance > 0 ? targetDistance : width / 2 / std::tan(angle / 2);
    lens["fov"] = Tidy(2 * std::atan(width / 2 / distance));
    lens["ortho"] = true;
    lens["target_distance"] = Tidy(distance);
}

} // namespace

Json LightObject(const Light& light, const Unit& unit, double targetDistance,
                 const Reference& reference) {
    if (std::optional<Json> object = HostObject(light.fbx, reference)) {
        if (!light.on)
            (*object)["use_light"] = false;
        return *object;
    }
    switch (light.kind) {
    case LightKind::Directional:
        return SunObject(light);
    case LightKind::Ambient:
        return {{"class", "Skylight"}};
    default:
        return BulbObject(light, unit, targetDistance);
    }
}

Json CameraObject(const Camera& camera, double targetDistance, const Reference& reference) {
    std::optional<Json> host = HostObject(camera.fbx, reference);
    Json object = host ? std::move(*host) : Json{{"class", targetDistance > 0 ? "Target" : "Free"}};
    Json lens;
    const bool angleGiven = camera.fov > 0 && camera.fov < std::numbers::pi;
    lens["fov"] = Tidy(angleGiven ? camera.fov : std::numbers::pi / 4);
    if (targetDistance > 0)
        lens["target_distance"] = Tidy(targetDistance);
    if (camera.ortho && camera.orthoWidth > 0 && std::isfinite(camera.orthoWidth))
        SetOrtho(lens, camera.orthoWidth, targetDistance);
    if (camera.farClip > camera.nearClip) {
        lens["manual_clip"] = true;
        lens["near"] = Tidy(camera.nearClip);
        lens["far"] = Tidy(camera.farClip);
    }
    object["camera"] = std::move(lens);
    return object;
}

} // namespace sceneconv
