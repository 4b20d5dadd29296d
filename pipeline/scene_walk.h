#pragma once
#include <functional>

#include <max.h>

namespace brimwave {

/// Calls `visit` with every node below the root: a node before its children, children in the
/// host's order.
void ForEachNode(const std::function<void(INode&)>& visit);

/// The node's material when the node shows geometry at `now`, else null. What the host throws
/// passes through.
[[nodiscard]] Mtl* GeometryMaterial(INode& node, TimeValue now);

/// Calls `visit` with the material of every geometry node that has one, in the order of
/// ForEachNode. A material used by several nodes comes once for each. Nodes whose evaluation
/// fails are passed over.
void ForEachGeometryMaterial(const std::function<void(Mtl&)>& visit);

/// Calls `visit` once with every texture map that the materials of geometry nodes or the
/// environment reach: depth first, a map before the maps inside it, a material's maps before its
/// sub-materials. Costs time in proportion to the scene, whatever its materials share.
void ForEachSceneMap(const std::function<void(Texmap&)>& visit);

} // namespace brimwave
