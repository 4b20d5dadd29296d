#pragma once
#include "mesh.h"

#include <vector>

namespace simhost {

/// A Bezier spline. Handles are positions; a line has them at its points.
struct Spline {
    struct Knot {
        Point3 p, in, out;
    };
    std::vector<Knot> knots;
    bool closed = false;
    int steps = 6; // points between two knots of a curved piece

    /// Points along the spline; the first is not repeated at the end of a closed one.
    [[nodiscard]] std::vector<Point3> Points() const;
};

/// How a renderable spline is drawn: a tube of so many sides.
struct TubeShape {
    float thickness = 1; // diameter
    int sides = 12;
    float angle = 0; // radians, around the spline
    bool coordinates = false;
};

/// Adds a tube along the points to the mesh; open ones get caps.
void AddTube(Mesh& mesh, const std::vector<Point3>& points, bool closed, const TubeShape& shape);

/// Walls of a height along z over closed and open splines, caps on flat closed convex ones.
void AddExtrusion(Mesh& mesh, const std::vector<Point3>& points, bool closed, float height);

} // namespace simhost
