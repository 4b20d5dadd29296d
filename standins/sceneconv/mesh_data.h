// A node's mesh, put together again from the pieces into which the library split it.
#pragma once

#include "sceneconv/scene_json.h"
#include "sceneconv/source_scene.h"

namespace sceneconv {

/// The `mesh` member of a scene file object; null when the node has no faces.
[[nodiscard]] Json MeshJson(const SourceNode& node, const aiScene& library, Warnings& warnings);

} // namespace sceneconv
