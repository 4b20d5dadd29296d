#pragma once
#include "package/package_context.h"
#include "package/scene_nodes.h"

namespace brimwave {

/// The "cameras" member of the package, beginning with its comma; empty when the scene has none.
[[nodiscard]] std::wstring CollectCamerasJson(PackageContext& package,
                                              const std::vector<SceneNode>& nodes);

} // namespace brimwave
