#pragma once
// What is plugged into a node.
#include "package/package_context.h"

namespace brimwave {

/// Gathers the maps of a MultiTexture's list ("textures"), the names of the slots whose map is
/// switched off ("disabled_slots"), the maps in the other slots and the sub-materials of layered
/// materials ("children"). `indent` is the node's.
void CollectChildren(PackageContext& package, NodeChildren& out, MtlBase& object,
                     std::wstring_view className, std::wstring_view indent);

} // namespace brimwave
