#include "matrix3.h"

namespace {

/// The vector without the translation.
Point3 Turned(const Matrix3& m, const Point3& v) {
    Point3 out;
    for (int j = 0; j < 3; ++j)
        out[j] = static_cast<float>(double(v.x) * m[0][j] + double(v.y) * m[1][j] +
                                    double(v.z) * m[2][j]);
    return out;
}

} // namespace

Matrix3 operator*(const Matrix3& a, const Matrix3& b) {
    Matrix3 out;
    for (int i = 0; i < 3; ++i)
        out[i] = Turned(b, a[i]);
    out[3] = a[3] * b;
    return out;
}

Point3 operator*(const Point3& p, const Matrix3& m) {
    Point3 out;
    for (int j = 0; j < 3; ++j)
        out[j] = static_cast<float>(double(p.x) * m[0][j] + double(p.y) * m[1][j] +
                                    double(p.z) * m[2][j] + m[3][j]);
    return out;
}

Matrix3 Inverse(const Matrix3& m) {
    double a[3][3];
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            a[i][j] = m[i][j];
    const auto cofactor = [&](int i, int j) {
        const int r0 = (i + 1) % 3, r1 = (i + 2) % 3, c0 = (j + 1) % 3, c1 = (j + 2) % 3;
        return a[r0][c0] * a[r1][c1] - a[r0][c1] * a[r1][c0];
    };
    const double det =
        a[0][0] * cofactor(0, 0) + a[0][1] * cofactor(0, 1) + a[0][2] * cofactor(0, 2);
    if (det == 0 || !std::isfinite(1 / det))
        return Matrix3();
    double inv[3][3];
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            inv[j][i] = cofactor(i, j) / det;
    Matrix3 out;
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            out[i][j] = static_cast<float>(inv[i][j]);
    for (int j = 0; j < 3; ++j) {
        double t = 0;
        for (int i = 0; i < 3; ++i)
            t -= double(m[3][i]) * inv[i][j];
        out[3][j] = static_cast<float>(t);
    }
    return out;
}

Quat::Quat(const Matrix3& m) {
    // The rows are those of the transposed rotation of the usual convention, so the vector part
    // has the opposite sign of the textbook's.
    const double trace = double(m[0][0]) + m[1][1] + m[2][2];
    double q[4]; // x, y, z, w
    if (trace > 0) {
        const double s = std::sqrt(trace + 1) * 2;
        q[3] = s / 4;
        q[0] = (m[2][1] - m[1][2]) / s;
        q[1] = (m[0][2] - m[2][0]) / s;
        q[2] = (m[1][0] - m[0][1]) / s;
    } else {
        const int i = m[1][1] > m[0][0] ? (m[2][2] > m[1][1] ? 2 : 1) : (m[2][2] > m[0][0] ? 2 : 0);
        const int j = (i + 1) % 3, k = (i + 2) % 3;
        const double s = std::sqrt(1.0 + m[i][i] - m[j][j] - m[k][k]) * 2;
        q[i] = s / 4;
        q[j] = (double(m[i][j]) + m[j][i]) / s;
        q[k] = (double(m[i][k]) + m[k][i]) / s;
        q[3] = (double(m[k][j]) - m[j][k]) / s;
    }
    x = static_cast<float>(q[0]);
    y = static_cast<float>(q[1]);
    z = static_cast<float>(q[2]);
    w = static_cast<float>(q[3]);
}

void Quat::MakeMatrix(Matrix3& m) const {
    m = Matrix3({1 - 2 * (y * y + z * z), 2 * (x * y - z * w), 2 * (x * z + y * w)},
                {2 * (x * y + z * w), 1 - 2 * (x * x + z * z), 2 * (y * z - x * w)},
                {2 * (x * z - y * w), 2 * (y * z + x * w), 1 - 2 * (x * x + y * y)}, {0, 0, 0});
}
