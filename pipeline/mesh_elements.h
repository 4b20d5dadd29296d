#pragma once
#include <cstdint>
#include <vector>

class Mesh;

namespace brimwave {

/// The connected parts of a mesh: two faces that share a vertex, directly or through others, lie
/// in one element.
struct MeshElements {
    std::vector<std::uint32_t> ofFace; ///< element of each face, numbered from 0 by first face
    std::uint32_t count = 0;
};

/// Costs time in proportion to faces and vertices. Corners that name no vertex connect nothing.
[[nodiscard]] MeshElements CollectMeshElements(const Mesh& mesh);

} // namespace brimwave
