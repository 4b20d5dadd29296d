#pragma once
#include "package/package_context.h"

namespace brimwave {

/// The material entry of an object: type, name and node tree, or the sub-materials of a
/// multi-material; "null" for no material. What the host throws is caught: it adds
/// "buildMaterialJson exception" to `errors`, the entry is "null" and none of its nodes counts
/// as written.
[[nodiscard]] std::wstring buildMaterialJson(PackageContext& package, Mtl* material,
                                             std::vector<std::wstring>& errors);

} // namespace brimwave
