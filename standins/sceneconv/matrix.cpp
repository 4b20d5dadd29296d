#include "sceneconv/matrix.h"

#include <cmath>
#include <numbers>

namespace sceneconv {

Matrix ToMatrix(const aiMatrix4x4t<float>& m) {
    return {m.a1, m.a2, m.a3, m.a4, m.b1, m.b2, m.b3, m.b4,
            m.c1, m.c2, m.c3, m.c4, m.d1, m.d2, m.d3, m.d4};
}

Vector ToVector(const aiVector3t<float>& v) {
    return {v.x, v.y, v.z};
}

Matrix FromAxes(const Vector& x, const Vector& y, const Vector& z, const Vector& position) {
    return {x.x, y.x, z.x, position.x, x.y, y.y, z.y, position.y,
            x.z, y.z, z.z, position.z, 0,   0,   0,   1};
}

Matrix Translation(const Vector& v) {
    return FromAxes({1, 0, 0}, {0, 1, 0}, {0, 0, 1}, v);
}

Matrix Scaling(const Vector& v) {
    return FromAxes({v.x, 0, 0}, {0, v.y, 0}, {0, 0, v.z}, {0, 0, 0});
}

Matrix AxisRotation(int axis, double degrees) {
    const double quarters = degrees / 90;
    double s = std::sin(degrees * std::numbers::pi / 180);
    double c = std::cos(degrees * std::numbers::pi / 180);
    if (quarters == std::round(quarters)) {
        s = std::round(s);
        c = std::round(c);
    }
    switch (axis) {
    case 0:
        return FromAxes({1, 0, 0}, {0, c, s}, {0, -s, c}, {0, 0, 0});
    case 1:
        return FromAxes({c, 0, -s}, {0, 1, 0}, {s, 0, c}, {0, 0, 0});
    default:
        return FromAxes({c, s, 0}, {-s, c, 0}, {0, 0, 1}, {0, 0, 0});
    }
}

Matrix FromQuaternion(double x, double y, double z, double w) {
    const double length = std::sqrt(x * x + y * y + z * z + w * w);
    if (!(length > 0))
        return {};
    x /= length;
    y /= length;
    z /= length;
    w /= length;
    return FromAxes({1 - 2 * (y * y + z * z), 2 * (x * y + z * w), 2 * (x * z - y * w)},
                    {2 * (x * y - z * w), 1 - 2 * (x * x + z * z), 2 * (y * z + x * w)},
                    {2 * (x * z + y * w), 2 * (y * z - x * w), 1 - 2 * (x * x + y * y)}, {0, 0, 0});
}

Matrix InverseOrIdentity(const Matrix& m) {
    Matrix inverse = m;
    inverse.Inverse();
    return IsFinite(inverse) ? inverse : Matrix();
}

bool IsFinite(const Matrix& m) {
    for (unsigned row = 0; row < 4; ++row) {
        for (unsigned column = 0; column < 4; ++column) {
            if (!std::isfinite(m[row][column]))
                return false;
        }
    }
    return true;
}

bool IsIdentity(const Matrix& m) {
    for (unsigned row = 0; row < 4; ++row) {
        for (unsigned column = 0; column < 4; ++column) {
            if (std::abs(m[row][column] - (row == column ? 1 : 0)) > 1e-12)
                return false;
        }
    }
    return true;
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
    return FromAxes(x, z ^ x, z, position);
}

} // namespace sceneconv
