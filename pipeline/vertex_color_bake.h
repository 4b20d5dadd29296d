#pragma once

namespace brimwave {

/// Bakes the random choice of MultiTexture and CoronaMultiMap maps into the vertex colours of the
/// meshes that show them, as docs/vertex-colours.md describes. Nothing else of a mesh changes,
/// and objects that show no such map are left alone.
///
/// An Editable Mesh that all of its nodes bake alike is written in place. Every other object gives
/// way to an Editable Mesh of its result, one for all nodes that bake alike; displacement
/// modifiers go on standing on it. What could not be done is said in the host's log, on lines
/// that begin "[Brimwave VC]". Nothing is thrown.
void BakeMultiTextureVC();

} // namespace brimwave
