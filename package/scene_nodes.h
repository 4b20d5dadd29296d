#pragma once
// Which nodes of the scene a package describes.
#include "package/package_log.h"

#include <max.h>

#include <vector>

namespace brimwave {

/// A node and the super class of the object that it shows at the time of the export; 0 when it
/// shows none.
struct SceneNode {
    INode* node = nullptr;
    SClass_ID superClass = 0;
};

/// All nodes below the root, children before their parent, in the order of the host's children.
/// A node whose object cannot be evaluated stays in the list without a super class, and a line
/// in the log says so when the host failed over it.
[[nodiscard]] std::vector<SceneNode> CollectSceneNodes(Interface& host, TimeValue time,
                                                       PackageLog& log);

/// The geometry nodes that have a material, in the list's order.
[[nodiscard]] std::vector<INode*> CollectObjects(const std::vector<SceneNode>& nodes,
                                                 PackageLog& log);

} // namespace brimwave
