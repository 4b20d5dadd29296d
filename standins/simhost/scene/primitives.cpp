#include "simhost/scene/primitives.h"

#include "simhost/scene/mesh_builder.h"

#include <algorithm>
#include <numbers>

namespace simhost {

namespace {

constexpr float pi = std::numbers::pi_v<float>;

int Segments(const Entity& object, std::wstring_view param, int fallback, int least = 1) {
    return std::max(object.Int(param, fallback), least);
}

/// One side of a box: a grid from `origin` along u and v.
struct Side {
    Point3 origin, u, v;
    int usegs, vsegs;
    MtlID id;
};

void AddSide(MeshBuilder& builder, const Side& side) {
    builder.AddGrid(side.usegs, side.vsegs, {side.id, DWORD{1} << side.id},
                    [&](float u, float v) { return side.origin + side.u * u + side.v * v; });
}

void BuildBox(const Entity& object, MeshBuilder& builder) {
    const float x = object.Float(L"width", 10) / 2, y = object.Float(L"length", 10) / 2;
    const float z = object.Float(L"height", 10);
    const int wx = Segments(object, L"widthsegs", 1), ly = Segments(object, L"lengthsegs", 1);
    const int hz = Segments(object, L"heightsegs", 1);
    // As in the host: top 1, bottom 2, then the sides.
    AddSide(builder, {{-x, -y, z}, {2 * x, 0, 0}, {0, 2 * y, 0}, wx, ly, 0});
    AddSide(builder, {{x, -y, 0}, {-2 * x, 0, 0}, {0, 2 * y, 0}, wx, ly, 1});
    AddSide(builder, {{-x, y, 0}, {0, -2 * y, 0}, {0, 0, z}, ly, hz, 2});
    AddSide(builder, {{x, -y, 0}, {0, 2 * y, 0}, {0, 0, z}, ly, hz, 3});
    AddSide(builder, {{-x, -y, 0}, {2 * x, 0, 0}, {0, 0, z}, wx, hz, 4});
    AddSide(builder, {{x, y, 0}, {-2 * x, 0, 0}, {0, 0, z}, wx, hz, 5});
}

void BuildPlane(const Entity& object, MeshBuilder& builder) {
    const float x = object.Float(L"width", 10) / 2, y = object.Float(L"length", 10) / 2;
    builder.AddGrid(Segments(object, L"widthsegs", 4), Segments(object, L"lengthsegs", 4), {0, 1},
                    [&](float u, float v) { return Point3(x * (2 * u - 1), y * (2 * v - 1), 0); });
}

void BuildSphere(const Entity& object, MeshBuilder& builder) {
    const float r = object.Float(L"radius", 10);
    const int segs = Segments(object, L"segs", 32, 4);
    builder.AddGrid(segs, segs / 2, {1, 1}, [&](float u, float v) {
        const float around = 2 * pi * u, up = pi * (v - 0.5f);
        return Point3(r * std::cos(up) * std::cos(around), r * std::cos(up) * std::sin(around),
                      r * std::sin(up));
    });
}

void BuildCone(MeshBuilder& builder, float bottom, float top, float height, int sides, int rings) {
    const auto around = [](float radius, float u, float z) {
        return Point3(radius * std::cos(2 * pi * u), radius * std::sin(2 * pi * u), z);
    };
    builder.AddGrid(sides, 1, {0, 1},
                    [&](float u, float v) { return around(top * (1 - v), u, height); });
    builder.AddGrid(sides, 1, {1, 1}, [&](float u, float v) { return around(bottom * v, u, 0); });
    builder.AddGrid(sides, rings, {2, 8}, [&](float u, float v) {
        return around(bottom + (top - bottom) * v, u, height * v);
    });
}

void BuildTorus(const Entity& object, MeshBuilder& builder) {
    const float r1 = object.Float(L"radius1", 10), r2 = object.Float(L"radius2", 3);
    builder.AddGrid(Segments(object, L"segs", 24, 3), Segments(object, L"sides", 12, 3), {0, 1},
                    [&](float u, float v) {
                        const float a = 2 * pi * u, b = 2 * pi * v;
                        const float r = r1 + r2 * std::cos(b);
                        return Point3(r * std::cos(a), r * std::sin(a), r2 * std::sin(b));
                    });
}

/// A turned body of the size of the host's teapot.
void BuildPot(const Entity& object, MeshBuilder& builder) {
    const float r = object.Float(L"radius", 10);
    builder.AddGrid(32, 16, {0, 1}, [&](float u, float v) {
        const float radius = r * std::sin(pi * v) * (1 - 0.3f * v);
        return Point3(radius * std::cos(2 * pi * u), radius * std::sin(2 * pi * u), r * v);
    });
}

} // namespace

bool IsPrimitive(const ClassInfo& info) {
    constexpr std::wstring_view known[] = {L"box",  L"plane", L"sphere", L"cylinder",
                                           L"cone", L"torus", L"teapot"};
    return std::find(std::begin(known), std::end(known), info.behaviour) != std::end(known);
}

void BuildPrimitive(const Entity& object, Mesh& mesh) {
    MeshBuilder builder;
    const std::wstring& what = object.Class().behaviour;
    if (what == L"box") {
        BuildBox(object, builder);
    } else if (what == L"plane") {
        BuildPlane(object, builder);
    } else if (what == L"sphere") {
        BuildSphere(object, builder);
    } else if (what == L"cylinder") {
        const float r = object.Float(L"radius", 10);
        BuildCone(builder, r, r, object.Float(L"height", 10), Segments(object, L"sides", 18, 3),
                  Segments(object, L"heightsegs", 5));
    } else if (what == L"cone") {
        BuildCone(builder, object.Float(L"radius1", 15), object.Float(L"radius2"),
                  object.Float(L"height", 10), Segments(object, L"sides", 24, 3),
                  Segments(object, L"heightsegs", 5));
    } else if (what == L"torus") {
        BuildTorus(object, builder);
    } else if (what == L"teapot") {
        BuildPot(object, builder);
    }
    builder.Fill(mesh);
}

std::vector<Spline> PrimitiveSplines(const Entity& shape) {
    Spline spline;
    spline.closed = true;
    if (shape.Class().behaviour == L"circle") {
        const float r = shape.Float(L"radius", 10), k = 0.5522847f * r;
        const Point3 at[4] = {{r, 0, 0}, {0, r, 0}, {-r, 0, 0}, {0, -r, 0}};
        const Point3 along[4] = {{0, k, 0}, {-k, 0, 0}, {0, -k, 0}, {k, 0, 0}};
        for (int i = 0; i < 4; ++i)
            spline.knots.push_back({at[i], at[i] - along[i], at[i] + along[i]});
    } else if (shape.Class().behaviour == L"rectangle") {
        const float x = shape.Float(L"width", 10) / 2, y = shape.Float(L"length", 10) / 2;
        for (const Point3& p :
             {Point3(x, y, 0), Point3(-x, y, 0), Point3(-x, -y, 0), Point3(x, -y, 0)})
            spline.knots.push_back({p, p, p});
    }
    return spline.knots.empty() ? std::vector<Spline>() : std::vector<Spline>{spline};
}

} // namespace simhost
