#pragma once
#include <array>
#include <cmath>
#include <numbers>

namespace simhost {

using FbxVec3 = std::array<double, 3>;

/// Degrees of one radian.
inline constexpr double fbxDegrees = 180.0 / std::numbers::pi;

inline double Dot(const FbxVec3& a, const FbxVec3& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}
inline FbxVec3 Cross(const FbxVec3& a, const FbxVec3& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}
inline double Length(const FbxVec3& a) {
    return std::sqrt(Dot(a, a));
}

} // namespace simhost
