#pragma once
#include "package/package_context.h"

namespace brimwave {

/// Whether a modifier of that class displaces when the scene is rendered: such a modifier leaves
/// the mesh as it is.
[[nodiscard]] bool IsDisplacementModifier(const std::wstring& className);

/// Appends the settings of the first displacement modifier of the node's stack as one JSON object;
/// "null" when the node has none.
void ProbeDisplacementJson(PackageContext& package, std::wstring& out, INode& node);

} // namespace brimwave
