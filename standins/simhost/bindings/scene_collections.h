#pragma once
#include <functional>
#include <vector>

#include "simhost/scene/scene.h"
#include "simhost/script/value.h"

namespace simhost::script {

/// A live set of nodes: what `list` answers, asked anew whenever the scene has changed. `ofTree`:
/// the answer depends on nothing but the tree and its objects.
[[nodiscard]] Value NodeSet(std::wstring text, std::function<std::vector<SceneNode*>()> list,
                            bool ofTree);
/// The children of a node, live, in order.
[[nodiscard]] Value ChildrenOf(SceneNode& node);
/// The nodes that `$pattern` means: one node, undefined, or a set when it holds wildcards. An
/// empty pattern is the selection.
[[nodiscard]] Value ResolveNodePath(const std::wstring& pattern);
/// The materials that nodes use, by index or name.
[[nodiscard]] Value SceneMaterialLibrary();

} // namespace simhost::script
