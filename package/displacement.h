#pragma once
#include "package/package_context.h"

namespace brimwave {

/// The settings of the first displacement modifier of the node's stack as one JSON object;
/// "null" when the node has none.
[[nodiscard]] std::wstring ProbeDisplacementJson(PackageContext& package, INode& node);

} // namespace brimwave
