#include "sceneconv/matrix.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace sceneconv {

Matrix Translation(const Vector& v) {
    Matrix m;
    return Matrix::Translation(v, m);
}

Matrix Scaling(const Vector& v) {
    Matrix m;
    return Matrix::Scaling(v, m);
}

Matrix AxisRotation(unsigned axis, double degrees) {
    const double quarters = degrees / 90;
    double s = std::sin(degrees * std::numbers::pi / 180);
    double c = std::cos(degrees * std::numbers::pi / 180);
    if (quarters == std::round(quarters)) {
        s = std::round(s);
        c = std::round(c);
    }
    const unsigned next = (axis + 1) % 3;
    const unsigned last = (axis + 2) % 3;
    Matrix m;
    m[next][next] = m[last][last] = c;
    m[last][next] = s;
    m[next][last] = -s;
    return m;
}

Matrix InverseOrIdentity(const Matrix& m) {
    Matrix inverse = m;
    inverse.Inverse();
    return IsFinite(inverse) ? inverse : Matrix();
}

bool IsFinite(const Matrix& m) {
    const auto finite = [](double value) { return std::isfinite(value); };
    return std::all_of(m[0], m[0] + 4, finite) && std::all_of(m[1], m[1] + 4, finite) &&
           std::all_of(m[2], m[2] + 4, finite) && std::all_of(m[3], m[3] + 4, finite);
}

Vector Position(const Matrix& m) {
    return {m.a4, m.b4, m.c4};
}

Matrix LookFrame(const Vector& position, const Vector& direction, const Vector& up) {
    constexpr double tiny = 1e-9;
    Vector z = direction * -1.0;
    if (!(z.Length() > tiny))
        z = {0, 0, 1};
    z.Normalize();
    Vector x = up ^ z;
    if (!(x.Length() > tiny))
        x = (std::abs(z.y) < 0.9 ? Vector{0, 1, 0} : Vector{0, 0, 1}) ^ z;
    x.Normalize();
    const Vector y = z ^ x;
    return {x.x, y.x, z.x, position.x, x.y, y.y, z.y, position.y,
            x.z, y.z, z.z, position.z, 0,   0,   0,   1};
}

} // namespace sceneconv
