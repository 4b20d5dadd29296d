#pragma once
#include "package/object_list.h"
#include "package/package_context.h"

namespace brimwave {

/// The "cameras" member of the package, beginning with its comma; empty when the scene has none.
[[nodiscard]] std::wstring CollectCamerasJson(PackageContext& package,
                                              const std::vector<SceneNode>& nodes);

} // namespace brimwave
