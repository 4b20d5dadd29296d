#pragma once
// What is plugged into a node.
#include "package/package_context.h"

namespace brimwave {

/// Text that leads up to a child node, and the child; null is written as such.
struct ChildPiece {
    std::wstring before;
    MtlBase* object = nullptr;
};

/// Everything that follows a node's own members up to its closing brace: the pieces in the order
/// of writing, and the text after the last one.
struct NodeChildren {
    std::vector<ChildPiece> pieces;
    std::wstring after;
};

/// Gathers the maps of a MultiTexture's list ("textures"), the names of the slots whose map is
/// switched off ("disabled_slots"), the maps in the other slots and the sub-materials of layered
/// materials ("children"). `indent` is the node's.
[[nodiscard]] NodeChildren CollectChildren(PackageContext& package, MtlBase& object,
                                           std::wstring_view className, const std::wstring& indent);

} // namespace brimwave
