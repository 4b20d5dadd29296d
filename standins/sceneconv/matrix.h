// Transforms in double precision. Points are columns here (m * p), as in the import library; the
// scene file's rows are the columns of these matrices.
#pragma once

#include <assimp/matrix4x4.h>
#include <assimp/types.h>
#include <assimp/vector3.h>

namespace sceneconv {

using Matrix = aiMatrix4x4t<double>;
using Vector = aiVector3t<double>;

[[nodiscard]] Matrix Translation(const Vector& v);
[[nodiscard]] Matrix Scaling(const Vector& v);
/// Rotation about one axis (0 x, 1 y, 2 z) by degrees; exact at multiples of 90.
[[nodiscard]] Matrix AxisRotation(unsigned axis, double degrees);
/// The inverse; the identity when there is none (a node scaled to nothing).
[[nodiscard]] Matrix InverseOrIdentity(const Matrix& m);
[[nodiscard]] bool IsFinite(const Matrix& m);
[[nodiscard]] Vector Position(const Matrix& m);

/// The frame in which the host's lights and cameras look along -z with +y up, for a light or
/// camera that looks along `direction` from `position`.
[[nodiscard]] Matrix LookFrame(const Vector& position, const Vector& direction, const Vector& up);

} // namespace sceneconv
