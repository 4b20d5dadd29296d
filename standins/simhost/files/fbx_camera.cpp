#include "simhost/files/fbx_attributes.h"
#include "simhost/files/fbx_guard.h"
#include "simhost/files/fbx_host_params.h"

#include <cmath>
#include <numbers>

namespace simhost {

namespace {

constexpr double degrees = 180.0 / std::numbers::pi;
constexpr double millimetresInInch = 25.4;

// Clipping is off: wide enough for any scene.
constexpr double openNear = 0.1;
constexpr double openFar = 1e6;

CameraState StateOf(Object& object, TimeValue t) {
    return FbxAsk(CameraState{}, [&] {
        CameraState state;
        Interval valid = FOREVER;
        if (auto* camera = dynamic_cast<CameraObject*>(&object))
            camera->EvalCameraState(t, valid, &state);
        return state;
    });
}

/// A finite angle that a picture can be seen under.
double ViewAngle(float radians) {
    return radians > 0 && radians < std::numbers::pi ? radians : std::numbers::pi / 4;
}

} // namespace

FbxProperties FbxCameraProperties(Object& camera, TimeValue t) {
    const FbxHostParams params = CollectFbxHostParams(camera, t);
    const CameraState state = StateOf(camera, t);
    Interface* core = GetCOREInterface();
    const double width = core ? core->GetRendWidth() : 0;
    const double height = core ? core->GetRendHeight() : 0;
    const double aspect = width > 0 && height > 0 ? width / height : 4.0 / 3.0;

    const double angle = ViewAngle(state.fov);
    const double half = std::tan(angle / 2);
    const double film =
        params.Number({"film_width_mm", "film_width", "sensorWidth", "filmWidth"}, 36);
    FbxProperties properties{
        {"AspectWidth", FbxType::Double, width > 0 ? width : 4.0},
        {"AspectHeight", FbxType::Double, width > 0 && height > 0 ? height : 3.0},
        {"FilmWidth", FbxType::Double, film / millimetresInInch},
        {"FilmHeight", FbxType::Double, film / aspect / millimetresInInch},
        {"FilmAspectRatio", FbxType::Double, aspect},
        {"ApertureMode", FbxType::Enum, 1}, // the view angle is the horizontal one
        {"GateFit", FbxType::Enum, 2},
        {"FieldOfView", FbxType::FieldOfView, angle * degrees},
        {"FieldOfViewX", FbxType::FieldOfView, angle * degrees},
        {"FieldOfViewY", FbxType::FieldOfView, 2 * std::atan(half / aspect) * degrees},
        {"FocalLength", FbxType::Number, film / (2 * half)},
        {"NearPlane", FbxType::Double, state.manualClip ? double{state.hither} : openNear},
        {"FarPlane", FbxType::Double, state.manualClip ? double{state.yon} : openFar},
        {"CameraProjectionType", FbxType::Enum, state.isOrtho ? 1 : 0},
        {"FocusDistance", FbxType::Double, double{state.tdist}}};
    if (state.isOrtho) // the width of the picture
        properties.push_back({"OrthoZoom", FbxType::Double, 2 * half * state.tdist});
    properties.insert(properties.end(), params.properties.begin(), params.properties.end());
    return properties;
}

} // namespace simhost
