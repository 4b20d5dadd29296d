#include "simhost/scene/mesh_builder.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <tuple>

namespace simhost {

DWORD MeshBuilder::AddPoint(const Point3& p, const UVVert& uv) {
    points_.push_back(p);
    uvs_.push_back(uv);
    return static_cast<DWORD>(points_.size() - 1);
}

void MeshBuilder::AddTriangle(DWORD a, DWORD b, DWORD c, FaceStyle style, DWORD visibleEdges) {
    faces_.push_back({{a, b, c}, style, visibleEdges});
}

void MeshBuilder::AddQuad(DWORD a, DWORD b, DWORD c, DWORD d, FaceStyle style) {
    AddTriangle(a, b, c, style, EDGE_VIS1 | EDGE_VIS2);
    AddTriangle(c, d, a, style, EDGE_VIS1 | EDGE_VIS2);
}

void MeshBuilder::Fill(Mesh& mesh) const {
    // Points that meet within a millionth of the size are one vertex of the mesh.
    float size = 0;
    for (const Point3& p : points_)
        size = std::max({size, std::abs(p.x), std::abs(p.y), std::abs(p.z)});
    const float cell = size > 0 ? size * 1e-6f : 1;
    std::map<std::tuple<long, long, long>, DWORD> known;
    std::vector<DWORD> vertexOf(points_.size());
    std::vector<Point3> vertices;
    for (size_t i = 0; i < points_.size(); ++i) {
        const Point3& p = points_[i];
        const auto key =
            std::tuple(std::lround(p.x / cell), std::lround(p.y / cell), std::lround(p.z / cell));
        const auto [at, fresh] = known.emplace(key, static_cast<DWORD>(vertices.size()));
        if (fresh)
            vertices.push_back(p);
        vertexOf[i] = at->second;
    }
    std::vector<Triangle> kept;
    for (const Triangle& t : faces_) {
        const DWORD a = vertexOf[t.v[0]], b = vertexOf[t.v[1]], c = vertexOf[t.v[2]];
        if (a != b && b != c && c != a)
            kept.push_back(t);
    }

    const int firstVertex = mesh.getNumVerts(), firstFace = mesh.getNumFaces();
    const int firstCoordinate = mesh.getNumTVerts();
    mesh.setNumVerts(firstVertex + static_cast<int>(vertices.size()), TRUE);
    std::copy(vertices.begin(), vertices.end(), mesh.verts + firstVertex);
    mesh.setNumFaces(firstFace + static_cast<int>(kept.size()), TRUE);
    mesh.setNumTVerts(firstCoordinate + static_cast<int>(uvs_.size()), TRUE);
    std::copy(uvs_.begin(), uvs_.end(), mesh.tVerts + firstCoordinate);
    mesh.setNumTVFaces(firstFace + static_cast<int>(kept.size()), TRUE);
    for (size_t i = 0; i < kept.size(); ++i) {
        const Triangle& t = kept[i];
        Face& face = mesh.faces[static_cast<size_t>(firstFace) + i];
        const auto v = static_cast<DWORD>(firstVertex), c = static_cast<DWORD>(firstCoordinate);
        face.setVerts(v + vertexOf[t.v[0]], v + vertexOf[t.v[1]], v + vertexOf[t.v[2]]);
        face.setMatID(t.style.id);
        face.setSmGroup(t.style.smoothing);
        face.flags = t.edges;
        mesh.tvFace[static_cast<size_t>(firstFace) + i].setTVerts(c + t.v[0], c + t.v[1],
                                                                  c + t.v[2]);
    }
}

} // namespace simhost
