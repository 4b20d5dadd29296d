#include "pipeline/mesh_elements.h"

#include <max.h>

#include <limits>

namespace brimwave {
namespace {

/// Sets of vertices that grow together. A root keeps the negative size of its set, every other
/// vertex its parent: one number a vertex.
class VertexSets {
  public:
    explicit VertexSets(size_t count) : links_(count, -1) {}

    std::int32_t RootOf(std::int32_t vertex) {
        while (Link(vertex) >= 0) {
            const std::int32_t parent = Link(vertex);
            if (Link(parent) >= 0)
                Link(vertex) = Link(parent); // halves the path for the next search
            vertex = parent;
        }
        return vertex;
    }

    void Join(std::int32_t a, std::int32_t b) {
        a = RootOf(a);
        b = RootOf(b);
        if (a == b)
            return;
        if (Link(a) > Link(b)) // b's set is the larger one
            std::swap(a, b);
        Link(a) += Link(b);
        Link(b) = a;
    }

  private:
    std::int32_t& Link(std::int32_t vertex) { return links_[static_cast<size_t>(vertex)]; }
    std::vector<std::int32_t> links_;
};

/// The first corner of the face that names a vertex; -1 when none does.
std::int32_t FirstVertex(const Face& face, DWORD vertexCount) {
    for (const DWORD vertex : face.v)
        if (vertex < vertexCount)
            return static_cast<std::int32_t>(vertex);
    return -1;
}

} // namespace

MeshElements CollectMeshElements(const Mesh& mesh) {
    const auto vertexCount = static_cast<DWORD>(mesh.getNumVerts());
    VertexSets sets(vertexCount);
    for (int f = 0; f < mesh.getNumFaces(); ++f) {
        const std::int32_t first = FirstVertex(mesh.faces[f], vertexCount);
        for (const DWORD vertex : mesh.faces[f].v)
            if (vertex < vertexCount)
                sets.Join(first, static_cast<std::int32_t>(vertex));
    }

    constexpr auto unnumbered = std::numeric_limits<std::uint32_t>::max();
    std::vector<std::uint32_t> ofRoot(vertexCount, unnumbered);
    MeshElements elements;
    elements.ofFace.reserve(static_cast<size_t>(mesh.getNumFaces()));
    for (int f = 0; f < mesh.getNumFaces(); ++f) {
        const std::int32_t first = FirstVertex(mesh.faces[f], vertexCount);
        if (first < 0) {
            elements.ofFace.push_back(elements.count++);
            continue;
        }
        std::uint32_t& number = ofRoot[static_cast<size_t>(sets.RootOf(first))];
        if (number == unnumbered)
            number = elements.count++;
        elements.ofFace.push_back(number);
    }
    return elements;
}

} // namespace brimwave
