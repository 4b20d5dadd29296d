#include "simhost/files/fbx_transform.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace simhost {

namespace {

// Sine of the angle by which float axes may miss being square.
constexpr double squareTolerance = 2e-5;
FbxVec3 Times(const FbxVec3& a, double s) {
    return {a[0] * s, a[1] * s, a[2] * s};
}

double Determinant(const std::array<FbxVec3, 3>& m) {
    return Dot(Cross(m[0], m[1]), m[2]);
}

std::array<FbxVec3, 3> Axes(const FbxAffine& m) {
    return {m.row[0], m.row[1], m.row[2]};
}

FbxVec3 Unit(const FbxVec3& a) {
    return Times(a, 1 / Length(a));
}

bool IsZero(const FbxVec3& a) {
    return Length(a) == 0;
}

/// Some unit vector square to a, which may be zero.
FbxVec3 AnySquareTo(const FbxVec3& a) {
    if (IsZero(a))
        return {0, 0, 1};
    return Unit(Cross(a, std::abs(a[0]) < 0.7 * Length(a) ? FbxVec3{1, 0, 0} : FbxVec3{0, 1, 0}));
}

/// The proper rotation nearest to the axes of m: z as it is, y on its side of z. Axes of no
/// length are made up from the others.
std::array<FbxVec3, 3> RotationWithin(const FbxAffine& m) {
    FbxVec3 z = m.row[2];
    if (IsZero(z))
        z = Cross(m.row[0], m.row[1]);
    if (IsZero(z))
        z = AnySquareTo(IsZero(m.row[0]) ? m.row[1] : m.row[0]);
    z = Unit(z);
    const FbxVec3 given = IsZero(m.row[1]) ? Cross(z, m.row[0]) : m.row[1];
    FbxVec3 y = given;
    for (int i = 0; i < 3; ++i)
        y[i] -= Dot(given, z) * z[i];
    y = Length(y) <= 1e-9 * Length(given) ? AnySquareTo(z) : Unit(y);
    return {Cross(y, z), y, z};
}

/// Euler angles in degrees of a proper rotation given as rows.
FbxVec3 EulerOf(const std::array<FbxVec3, 3>& r) {
    const double sinY = std::clamp(-r[0][2], -1.0, 1.0);
    const double y = std::asin(sinY);
    if (std::abs(sinY) > 1 - 1e-12) // x and z turn about one axis: all of it goes to x
        return {std::atan2(-r[2][1], r[1][1]) * fbxDegrees, y * fbxDegrees, 0};
    return {std::atan2(r[1][2], r[2][2]) * fbxDegrees, y * fbxDegrees,
            std::atan2(r[0][1], r[0][0]) * fbxDegrees};
}

std::array<FbxVec3, 3> RotationOf(const FbxVec3& euler) {
    const double cx = std::cos(euler[0] / fbxDegrees), sx = std::sin(euler[0] / fbxDegrees);
    const double cy = std::cos(euler[1] / fbxDegrees), sy = std::sin(euler[1] / fbxDegrees);
    const double cz = std::cos(euler[2] / fbxDegrees), sz = std::sin(euler[2] / fbxDegrees);
    return {FbxVec3{cy * cz, cy * sz, -sy},
            FbxVec3{sx * sy * cz - cx * sz, sx * sy * sz + cx * cz, sx * cy},
            FbxVec3{cx * sy * cz + sx * sz, cx * sy * sz - sx * cz, cx * cy}};
}

/// Turns the symmetric matrix s diagonal by Jacobi rotations; the columns of the result are the
/// axes.
std::array<FbxVec3, 3> Diagonalise(std::array<FbxVec3, 3>& s) {
    std::array<FbxVec3, 3> axes{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
    for (int sweep = 0; sweep < 32; ++sweep) {
        for (int p = 0; p < 2; ++p) {
            for (int q = p + 1; q < 3; ++q) {
                if (s[p][q] == 0)
                    continue;
                const double theta = (s[q][q] - s[p][p]) / (2 * s[p][q]);
                const double t =
                    (theta >= 0 ? 1.0 : -1.0) / (std::abs(theta) + std::sqrt(theta * theta + 1));
                const double c = 1 / std::sqrt(t * t + 1);
                for (int k = 0; k < 3; ++k) { // columns
                    const double a = s[k][p], b = s[k][q];
                    s[k][p] = c * a - c * t * b;
                    s[k][q] = c * t * a + c * b;
                }
                for (int k = 0; k < 3; ++k) { // rows
                    const double a = s[p][k], b = s[q][k];
                    s[p][k] = c * a - c * t * b;
                    s[q][k] = c * t * a + c * b;
                }
                for (int k = 0; k < 3; ++k) {
                    const double a = axes[k][p], b = axes[k][q];
                    axes[k][p] = c * a - c * t * b;
                    axes[k][q] = c * t * a + c * b;
                }
                s[p][q] = s[q][p] = 0;
            }
        }
    }
    return axes;
}

} // namespace

FbxAffine ToFbxAffine(const Matrix3& m) {
    FbxAffine out;
    for (int r = 0; r < 4; ++r) {
        const Point3 row = m.GetRow(r);
        for (int c = 0; c < 3; ++c)
            if (std::isfinite(row[c]))
                out.row[r][c] = row[c];
    }
    return out;
}

FbxAffine operator*(const FbxAffine& a, const FbxAffine& b) {
    FbxAffine out;
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 3; ++c)
            out.row[r][c] = a.row[r][0] * b.row[0][c] + a.row[r][1] * b.row[1][c] +
                            a.row[r][2] * b.row[2][c] + (r == 3 ? b.row[3][c] : 0);
    return out;
}

FbxAffine Inverse(const FbxAffine& m) {
    const std::array<FbxVec3, 3> a = Axes(m);
    const double det = Determinant(a);
    if (std::abs(det) <= 1e-18 * Length(a[0]) * Length(a[1]) * Length(a[2]))
        return {};
    const std::array<FbxVec3, 3> columns{Times(Cross(a[1], a[2]), 1 / det),
                                         Times(Cross(a[2], a[0]), 1 / det),
                                         Times(Cross(a[0], a[1]), 1 / det)};
    FbxAffine out;
    for (int r = 0; r < 3; ++r)
        for (int c = 0; c < 3; ++c)
            out.row[r][c] = columns[c][r];
    for (int c = 0; c < 3; ++c)
        out.row[3][c] = -Dot(m.row[3], columns[c]);
    return out;
}

FbxAffine Compose(const FbxTrs& trs) {
    const std::array<FbxVec3, 3> rotation = RotationOf(trs.rotation);
    FbxAffine out;
    for (int r = 0; r < 3; ++r)
        out.row[r] = Times(rotation[r], trs.scale[r]);
    out.row[3] = trs.translation;
    return out;
}

bool IsSquare(const FbxAffine& m) {
    for (int i = 0; i < 3; ++i) {
        const FbxVec3& a = m.row[i];
        const FbxVec3& b = m.row[(i + 1) % 3];
        if (std::abs(Dot(a, b)) > squareTolerance * Length(a) * Length(b))
            return false;
    }
    return true;
}

FbxTrs Decompose(const FbxAffine& m) {
    const bool mirrored = Determinant(Axes(m)) < 0;
    FbxTrs trs;
    trs.translation = m.row[3];
    trs.rotation = EulerOf(RotationWithin(m));
    trs.scale = {Length(m.row[0]) * (mirrored ? -1 : 1), Length(m.row[1]), Length(m.row[2])};
    return trs;
}

FbxPlacement SplitSkewed(const FbxAffine& m) {
    // m = U S V with U and V rotations: U turns the geometry, S V is the node's own transform.
    const std::array<FbxVec3, 3> a = Axes(m);
    std::array<FbxVec3, 3> square;
    for (int r = 0; r < 3; ++r)
        for (int c = 0; c < 3; ++c)
            square[r][c] = Dot(a[r], a[c]);
    std::array<FbxVec3, 3> u = Diagonalise(square);
    if (Determinant(u) < 0)
        for (FbxVec3& row : u)
            row[0] = -row[0];
    FbxAffine own; // rows of U' m: S V
    for (int i = 0; i < 3; ++i)
        for (int c = 0; c < 3; ++c)
            own.row[i][c] = u[0][i] * a[0][c] + u[1][i] * a[1][c] + u[2][i] * a[2][c];
    own.row[3] = m.row[3];
    FbxPlacement placement;
    placement.local = Decompose(own);
    placement.geometric.rotation = EulerOf(u);
    return placement;
}

} // namespace simhost
