#pragma once
#include "quat.h"

/// Three axes and a translation as four rows; points are rows: `p * tm`. Starts as identity.
class Matrix3 {
  public:
    Matrix3() = default;
    Matrix3(const Point3& u, const Point3& v, const Point3& n, const Point3& t)
        : rows_{u, v, n, t} {}
    [[nodiscard]] Point3 GetRow(int i) const { return rows_[i]; }
    void SetRow(int i, const Point3& p) { rows_[i] = p; }
    [[nodiscard]] Point3 GetTrans() const { return rows_[3]; }
    void SetTrans(const Point3& p) { rows_[3] = p; }
    Point3& operator[](int i) { return rows_[i]; }
    const Point3& operator[](int i) const { return rows_[i]; }
    [[nodiscard]] int Parity() const {
        return DotProd(CrossProd(rows_[0], rows_[1]), rows_[2]) < 0;
    }
    friend bool operator==(const Matrix3& a, const Matrix3& b) = default;

  private:
    Point3 rows_[4] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {0, 0, 0}};
};

Matrix3 operator*(const Matrix3& a, const Matrix3& b);
Point3 operator*(const Point3& p, const Matrix3& m);
/// A matrix without an inverse gives identity.
Matrix3 Inverse(const Matrix3& m);

/// Splits into translation, rotation and scale along the axes of the matrix; a mirrored matrix
/// gives negative scales.
void DecomposeMatrix(const Matrix3& m, Point3& translation, Quat& rotation, Point3& scale);
