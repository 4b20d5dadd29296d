#pragma once
#include <functional>

class Mtl;
class Texmap;

namespace brimwave {

/// Calls `visit` with the material of every geometry node that has one: from the root, a node
/// before its children, children in the host's order. A material used by several nodes comes
/// once for each. Nodes whose evaluation fails are passed over.
void ForEachGeometryMaterial(const std::function<void(Mtl&)>& visit);

/// Calls `visit` once with every texture map that the materials of geometry nodes or the
/// environment reach: depth first, a map before the maps inside it, a material's maps before its
/// sub-materials. Costs time in proportion to the scene, whatever its materials share.
void ForEachSceneMap(const std::function<void(Texmap&)>& visit);

} // namespace brimwave
