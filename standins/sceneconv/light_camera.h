// Lights and cameras as objects of the scene file.
#pragma once

#include "sceneconv/host_params.h"
#include "sceneconv/source_scene.h"

namespace sceneconv {

/// `targetDistance` in source units, 0 when the node has no target.
[[nodiscard]] Json LightObject(const Light& light, const Unit& unit, double targetDistance,
                               const Reference& reference);
[[nodiscard]] Json CameraObject(const Camera& camera, double targetDistance,
                                const Reference& reference);

} // namespace sceneconv
