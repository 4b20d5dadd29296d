#pragma once
#include "mesh.h"

#include <vector>

namespace simhost {

/// Material id (0-based) and smoothing groups of new faces.
struct FaceStyle {
    MtlID id = 0;
    DWORD smoothing = 1;
};

/// Gathers vertices and faces with texture coordinates, joins equal points and drops faces without
/// area, then fills a mesh.
class MeshBuilder {
  public:
    /// A grid of quads over 0..1 x 0..1. Faces look along the cross product of the u and v ways.
    template <class PointAt>
    void AddGrid(int usegs, int vsegs, FaceStyle style, PointAt pointAt) {
        const auto base = static_cast<DWORD>(points_.size());
        const auto row = static_cast<DWORD>(usegs + 1);
        for (int j = 0; j <= vsegs; ++j)
            for (int i = 0; i <= usegs; ++i) {
                const float u = static_cast<float>(i) / static_cast<float>(usegs);
                const float v = static_cast<float>(j) / static_cast<float>(vsegs);
                points_.push_back(pointAt(u, v));
                uvs_.emplace_back(u, v, 0.0f);
            }
        for (DWORD j = 0; j < static_cast<DWORD>(vsegs); ++j)
            for (DWORD i = 0; i < static_cast<DWORD>(usegs); ++i) {
                const DWORD a = base + j * row + i;
                AddQuad(a, a + 1, a + row + 1, a + row, style);
            }
    }
    DWORD AddPoint(const Point3& p, const UVVert& uv);
    void AddTriangle(DWORD a, DWORD b, DWORD c, FaceStyle style, DWORD visibleEdges = 7);
    void AddQuad(DWORD a, DWORD b, DWORD c, DWORD d, FaceStyle style);
    /// Appends to what the mesh holds.
    void Fill(Mesh& mesh) const;

  private:
    struct Triangle {
        DWORD v[3];
        FaceStyle style;
        DWORD edges;
    };
    std::vector<Point3> points_;
    std::vector<UVVert> uvs_;
    std::vector<Triangle> faces_;
};

} // namespace simhost
