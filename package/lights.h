#pragma once
#include "package/package_context.h"
#include "package/scene_nodes.h"
#include "package/utf8_store.h"

namespace brimwave {

/// The "lights" member of the package, beginning with its comma; empty when the scene has no
/// light of a known class.
[[nodiscard]] Utf8Store CollectLightsJson(PackageContext& package,
                                          const std::vector<SceneNode>& nodes);

} // namespace brimwave
