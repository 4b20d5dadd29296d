#include "simhost/scene/spline.h"

#include "simhost/scene/mesh_builder.h"

#include <algorithm>
#include <numbers>

namespace simhost {

namespace {

Point3 Bezier(const Point3& a, const Point3& b, const Point3& c, const Point3& d, float t) {
    const float s = 1 - t;
    return a * (s * s * s) + b * (3 * s * s * t) + c * (3 * s * t * t) + d * (t * t * t);
}

/// Any direction at a right angle.
Point3 Perpendicular(const Point3& v) {
    const bool mostlyZ = std::abs(v.z) > 0.9f * Length(v);
    return Normalize(CrossProd(v, mostlyZ ? Point3(1, 0, 0) : Point3(0, 0, 1)));
}

std::vector<Point3> WithoutRepeats(const std::vector<Point3>& points, bool closed) {
    std::vector<Point3> kept;
    for (const Point3& p : points)
        if (kept.empty() || !(kept.back() == p))
            kept.push_back(p);
    while (closed && kept.size() > 1 && kept.front() == kept.back())
        kept.pop_back();
    return kept;
}

} // namespace

std::vector<Point3> Spline::Points() const {
    std::vector<Point3> points;
    const size_t pieces = knots.size() < 2 ? 0 : closed ? knots.size() : knots.size() - 1;
    for (size_t i = 0; i < knots.size(); ++i) {
        points.push_back(knots[i].p);
        if (i >= pieces)
            break;
        const Knot &a = knots[i], &b = knots[(i + 1) % knots.size()];
        if (a.out == a.p && b.in == b.p)
            continue; // straight
        for (int k = 1; k <= steps; ++k)
            points.push_back(Bezier(a.p, a.out, b.in, b.p,
                                    static_cast<float>(k) / static_cast<float>(steps + 1)));
    }
    return points;
}

void AddTube(Mesh& mesh, const std::vector<Point3>& path, bool closed, const TubeShape& shape) {
    const std::vector<Point3> points = WithoutRepeats(path, closed);
    if (points.size() < 2 || shape.thickness <= 0)
        return;
    if (points.size() < 3)
        closed = false;
    MeshBuilder builder;
    const int sides = std::max(shape.sides, 3);
    const size_t rings = points.size() + (closed ? 1 : 0);
    const auto along = [&](size_t i) {
        const size_t n = points.size();
        const Point3& before = points[closed ? (i + n - 1) % n : (i ? i - 1 : 0)];
        const Point3& after = points[closed ? (i + 1) % n : std::min(i + 1, n - 1)];
        const Point3 d = after - before;
        return Length(d) > 0 ? Normalize(d) : Normalize(points[(i + 1) % n] - points[i % n]);
    };
    // The frame is carried along without turning around the path.
    Point3 side = Perpendicular(along(0));
    for (size_t ring = 0; ring < rings; ++ring) {
        const size_t i = ring % points.size();
        const Point3 axis = along(i);
        side = side - axis * DotProd(side, axis);
        side = Length(side) > 1e-6f ? Normalize(side) : Perpendicular(axis);
        const Point3 up = CrossProd(axis, side);
        for (int k = 0; k <= sides; ++k) {
            const float u = static_cast<float>(k) / static_cast<float>(sides);
            const float a = 2 * std::numbers::pi_v<float> * u + shape.angle;
            const Point3 offset = side * std::cos(a) + up * std::sin(a);
            builder.AddPoint(points[i] + offset * (shape.thickness / 2),
                             {u, static_cast<float>(ring) / static_cast<float>(rings - 1), 0});
        }
    }
    const auto row = static_cast<DWORD>(sides + 1);
    for (DWORD ring = 0; ring + 1 < static_cast<DWORD>(rings); ++ring)
        for (DWORD k = 0; k + 1 < row; ++k) {
            const DWORD a = ring * row + k;
            builder.AddQuad(a, a + 1, a + row + 1, a + row, {0, 1});
        }
    if (!closed)
        for (DWORD k = 1; k + 1 < static_cast<DWORD>(sides); ++k) {
            const DWORD last = static_cast<DWORD>(rings - 1) * row;
            builder.AddTriangle(0, k + 1, k, {0, 2});
            builder.AddTriangle(last, last + k, last + k + 1, {0, 4});
        }
    builder.Fill(mesh);
}

void AddExtrusion(Mesh& mesh, const std::vector<Point3>& path, bool closed, float height) {
    const std::vector<Point3> points = WithoutRepeats(path, closed);
    if (points.size() < 2)
        return;
    MeshBuilder builder;
    const Point3 up(0, 0, height);
    const size_t rings = points.size() + (closed ? 1 : 0);
    for (size_t i = 0; i < rings; ++i) {
        const float u = static_cast<float>(i) / static_cast<float>(rings - 1);
        builder.AddPoint(points[i % points.size()], {u, 0, 0});
        builder.AddPoint(points[i % points.size()] + up, {u, 1, 0});
    }
    for (DWORD i = 0; i + 1 < static_cast<DWORD>(rings); ++i)
        builder.AddQuad(2 * i, 2 * i + 2, 2 * i + 3, 2 * i + 1, {2, 1});
    if (closed)
        for (DWORD i = 1; i + 1 < static_cast<DWORD>(points.size()); ++i) {
            builder.AddTriangle(0, 2 * i + 2, 2 * i, {0, 2});
            builder.AddTriangle(1, 2 * i + 1, 2 * i + 3, {1, 4});
        }
    builder.Fill(mesh);
}

} // namespace simhost
