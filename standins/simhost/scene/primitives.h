#pragma once
#include "simhost/scene/entity.h"
#include "simhost/scene/spline.h"

namespace simhost {

/// Whether a class makes its mesh from its parameters.
[[nodiscard]] bool IsPrimitive(const ClassInfo& info);
/// The mesh of a primitive, centred as the host's are, with texture coordinates in channel 1.
void BuildPrimitive(const Entity& object, Mesh& mesh);
/// The splines of a shape that has parameters instead (Circle, Rectangle).
[[nodiscard]] std::vector<Spline> PrimitiveSplines(const Entity& shape);

} // namespace simhost
