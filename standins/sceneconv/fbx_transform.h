// Transforms of FBX models, as the format defines them.
#pragma once

#include "sceneconv/fbx_document.h"
#include "sceneconv/matrix.h"

namespace sceneconv {

/// The model's transform relative to its parent, with pivots, offsets, pre- and post-rotation.
[[nodiscard]] Matrix FbxLocalTransform(const FbxObject& model);
/// The transform of the model's object, which children do not inherit.
[[nodiscard]] Matrix FbxGeometricTransform(const FbxObject& model);
/// The file's axes to the host's: x right, y away from the viewer, z up.
[[nodiscard]] Matrix FbxAxesToHost(const FbxObject& settings);

} // namespace sceneconv
