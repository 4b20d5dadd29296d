#pragma once
#include "package/package_context.h"

namespace brimwave {

/// Appends the settings of the first displacement modifier of the node's stack as one JSON object;
/// "null" when the node has none.
void ProbeDisplacementJson(PackageContext& package, std::wstring& out, INode& node);

} // namespace brimwave
