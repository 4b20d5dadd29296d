#include "simhost/files/fbx_attributes.h"
#include "simhost/files/fbx_guard.h"
#include "simhost/files/fbx_host_params.h"

#include <cmath>
#include <numbers>

namespace simhost {

namespace {

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
        {"AspectWidth", FbxTypes::real, width > 0 ? width : 4.0},
        {"AspectHeight", FbxTypes::real, width > 0 && height > 0 ? height : 3.0},
        {"FilmWidth", FbxTypes::real, film / millimetresInInch},
        {"FilmHeight", FbxTypes::real, film / aspect / millimetresInInch},
        {"FilmAspectRatio", FbxTypes::real, aspect},
        {"ApertureMode", FbxTypes::enumeration, 1}, // the view angle is the horizontal one
        {"GateFit", FbxTypes::enumeration, 2},
        {"FieldOfView", FbxTypes::fieldOfView, angle * fbxDegrees},
        {"FieldOfViewX", FbxTypes::fieldOfView, angle * fbxDegrees},
        {"FieldOfViewY", FbxTypes::fieldOfView, 2 * std::atan(half / aspect) * fbxDegrees},
        {"FocalLength", FbxTypes::number, film / (2 * half)},
        {"NearPlane", FbxTypes::real, state.manualClip ? double{state.hither} : openNear},
        {"FarPlane", FbxTypes::real, state.manualClip ? double{state.yon} : openFar},
        {"CameraProjectionType", FbxTypes::enumeration, state.isOrtho ? 1 : 0},
        {"FocusDistance", FbxTypes::real, double{state.tdist}}};
    if (state.isOrtho) // the width of the picture
        properties.push_back({"OrthoZoom", FbxTypes::real, 2 * half * state.tdist});
    properties.insert(properties.end(), params.properties.begin(), params.properties.end());
    return properties;
}

} // namespace simhost
