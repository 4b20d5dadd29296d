#pragma once
// What makes an FBX node a light or a camera.
#include "simhost/files/fbx_property.h"

#include <max.h>

namespace simhost {

/// Kind, colour, intensity (FBX counts in percent of the light's own number), cone and shadows,
/// then the class and parameters of the host.
[[nodiscard]] FbxProperties FbxLightProperties(Object& light, TimeValue t);

/// View angle, clipping, projection and picture, then the class and parameters of the host.
[[nodiscard]] FbxProperties FbxCameraProperties(Object& camera, TimeValue t);

/// The record of one: "Light", "Camera" or "Null".
void WriteFbxAttribute(FbxRecordWriter& writer, std::int64_t id, std::string_view kind,
                       const FbxProperties& properties);

} // namespace simhost
