// Cameras and lights of an FBX file.
#pragma once

#include "sceneconv/source_scene.h"

namespace sceneconv {

[[nodiscard]] Camera FbxCamera(const FbxObject& attribute);
[[nodiscard]] Light FbxLight(const FbxObject& attribute);

} // namespace sceneconv
