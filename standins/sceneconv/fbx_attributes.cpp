#include "sceneconv/fbx_attributes.h"

#include "sceneconv/render_size.h"

#include <cmath>
#include <numbers>

namespace sceneconv {

namespace {

constexpr double radian = std::numbers::pi / 180;

// How a camera's angle is given.
enum ApertureMode : std::int64_t { BothAngles = 0, Horizontal = 1, Vertical = 2, Focal = 3 };

double FilmAspect(const FbxObject& camera) {
    const double width = camera.Number("FilmWidth", 0);
    const double height = camera.Number("FilmHeight", 0);
    return width > 0 && height > 0 ? width / height : renderAspect;
}

double HorizontalFov(const FbxObject& camera) {
    const double angle = camera.Number("FieldOfView", 40) * radian;
    const double focal = camera.Number("FocalLength", 0);
    const double film = camera.Number("FilmWidth", 0) * 25.4;
    switch (camera.Integer("ApertureMode", Horizontal)) {
    case BothAngles:
        return camera.Number("FieldOfViewX", 40) * radian;
    case Vertical:
        return 2 * std::atan(std::tan(angle / 2) * FilmAspect(camera));
    case Focal:
        return focal > 0 && film > 0 ? 2 * std::atan(film / 2 / focal) : angle;
    default:
        return angle;
    }
}

} // namespace

Camera FbxCamera(const FbxObject& attribute) {
    // An FBX camera looks along its +x axis.
    Camera camera;
    camera.frame = LookFrame({0, 0, 0}, {1, 0, 0}, {0, 1, 0});
    camera.fov = HorizontalFov(attribute);
    camera.ortho = attribute.Integer("CameraProjectionType", 0) == 1;
    // The format's picture of zoom 1 is 30 units wide.
    camera.orthoWidth = attribute.Number("OrthoZoom", 1) * 30;
    // Only what differs from the format's defaults was set by hand.
    const double nearClip = attribute.Number("NearPlane", 10);
    const double farClip = attribute.Number("FarPlane", 4000);
    if (nearClip != 10 || farClip != 4000) {
        camera.nearClip = nearClip;
        camera.farClip = farClip;
    }
    camera.source = attribute.id;
    camera.fbx = &attribute;
    return camera;
}

Light FbxLight(const FbxObject& attribute) {
    // An FBX light shines along its -y axis.
    Light light;
    light.frame = LookFrame({0, 0, 0}, {0, -1, 0}, {0, 0, -1});
    switch (attribute.Integer("LightType", 0)) {
    case 1:
        light.kind = LightKind::Directional;
        break;
    case 2:
        light.kind = LightKind::Spot;
        break;
    case 3:
    case 4:
        light.kind = LightKind::Area;
        break;
    default:
        break;
    }
    if (const FbxProperty* color = attribute.Find("Color"))
        light.color = {color->Number(0), color->Number(1), color->Number(2)};
    light.intensity = attribute.Number("Intensity", 100) / 100;
    light.outerCone = attribute.Number("OuterAngle", 45) / 2 * radian;
    light.on = attribute.Integer("CastLight", 1) != 0;
    light.source = attribute.id;
    light.fbx = &attribute;
    return light;
}

} // namespace sceneconv
