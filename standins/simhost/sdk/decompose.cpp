// Splitting a matrix into translation, rotation and scale: the polar decomposition, whose
// rotation is the one nearest to the matrix. A mirrored matrix is negated first, so that all three
// of its scales come out negative.
#include "matrix3.h"

#include <algorithm>
#include <array>

namespace {

using M3 = std::array<std::array<double, 3>, 3>;

M3 Transposed(const M3& a) {
    M3 out{};
    for (size_t i = 0; i < 3; ++i)
        for (size_t j = 0; j < 3; ++j)
            out[i][j] = a[j][i];
    return out;
}

M3 Times(const M3& a, const M3& b) {
    M3 out{};
    for (size_t i = 0; i < 3; ++i)
        for (size_t j = 0; j < 3; ++j)
            for (size_t k = 0; k < 3; ++k)
                out[i][j] += a[i][k] * b[k][j];
    return out;
}

std::array<double, 3> Cross(const std::array<double, 3>& a, const std::array<double, 3>& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

double Dot(const std::array<double, 3>& a, const std::array<double, 3>& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

double Determinant(const M3& a) {
    return Dot(Cross(a[0], a[1]), a[2]);
}

/// Eigenvalues and vectors (rows of `axes`) of a symmetric matrix, by Jacobi rotations. The axes
/// keep as near as possible to the coordinate axes they started from.
void Eigen(M3 s, std::array<double, 3>& values, M3& axes) {
    axes = {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
    for (int sweep = 0; sweep < 32; ++sweep) {
        const double off = std::abs(s[0][1]) + std::abs(s[0][2]) + std::abs(s[1][2]);
        if (off <= 1e-15 * (std::abs(s[0][0]) + std::abs(s[1][1]) + std::abs(s[2][2])))
            break;
        for (size_t p = 0; p < 2; ++p)
            for (size_t q = p + 1; q < 3; ++q) {
                if (s[p][q] == 0)
                    continue;
                const double theta = (s[q][q] - s[p][p]) / (2 * s[p][q]);
                const double t =
                    (theta >= 0 ? 1.0 : -1.0) / (std::abs(theta) + std::sqrt(theta * theta + 1));
                const double c = 1 / std::sqrt(t * t + 1), n = t * c;
                M3 r = {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
                r[p][p] = r[q][q] = c;
                r[p][q] = n;
                r[q][p] = -n;
                s = Times(Transposed(r), Times(s, r));
                axes = Times(Transposed(r), axes);
            }
    }
    values = {s[0][0], s[1][1], s[2][2]};
}

/// Completes the rotation whose rows belong to the axes of no extent.
void CompleteRows(M3& rows, const std::array<bool, 3>& known) {
    const auto count = std::count(known.begin(), known.end(), true);
    if (count == 0) {
        rows = {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
        return;
    }
    if (count == 1) {
        const size_t i =
            static_cast<size_t>(std::find(known.begin(), known.end(), true) - known.begin());
        size_t weakest = 0;
        for (size_t k = 1; k < 3; ++k)
            if (std::abs(rows[i][k]) < std::abs(rows[i][weakest]))
                weakest = k;
        std::array<double, 3> other{};
        other[weakest] = 1;
        auto side = Cross(rows[i], other);
        const double length = std::sqrt(Dot(side, side));
        for (double& v : side)
            v /= length;
        rows[(i + 1) % 3] = side;
        rows[(i + 2) % 3] = Cross(rows[i], side);
        return;
    }
    const size_t i =
        static_cast<size_t>(std::find(known.begin(), known.end(), false) - known.begin());
    rows[i] = Cross(rows[(i + 1) % 3], rows[(i + 2) % 3]);
}

} // namespace

void DecomposeMatrix(const Matrix3& m, Point3& translation, Quat& rotation, Point3& scale) {
    translation = m.GetTrans();
    M3 a{};
    for (size_t i = 0; i < 3; ++i)
        for (size_t j = 0; j < 3; ++j)
            a[i][j] = m[static_cast<int>(i)][static_cast<int>(j)];
    const double flip = Determinant(a) < 0 ? -1 : 1;
    for (auto& row : a)
        for (double& v : row)
            v *= flip;

    // a = stretch * rotation, where stretch * stretch = a * transposed(a).
    std::array<double, 3> squares{};
    M3 axes{};
    Eigen(Times(a, Transposed(a)), squares, axes);
    const double largest = *std::max_element(squares.begin(), squares.end());
    std::array<bool, 3> known{};
    std::array<double, 3> k{};
    M3 turned = Times(axes, a); // the images of the stretch axes
    for (size_t i = 0; i < 3; ++i) {
        known[i] = squares[i] > 1e-14 * largest && squares[i] > 0;
        k[i] = known[i] ? std::sqrt(squares[i]) : 0;
        for (double& v : turned[i])
            v = known[i] ? v / k[i] : 0;
    }
    if (!known[0] || !known[1] || !known[2]) {
        CompleteRows(turned, known);
        if (std::count(known.begin(), known.end(), true) == 0)
            axes = turned;
    }
    const M3 r = Times(Transposed(axes), turned);
    Matrix3 out;
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            out[i][j] = static_cast<float>(r[static_cast<size_t>(i)][static_cast<size_t>(j)]);
    rotation = Quat(out);
    for (int i = 0; i < 3; ++i)
        scale[i] = static_cast<float>(k[static_cast<size_t>(i)] * flip);
}
