#pragma once
#include "point3.h"

class Matrix3;

/// A rotation, scalar part last. As everywhere in the host, rotations are left-handed in sign:
/// Quat::MakeMatrix gives the matrix for row vectors.
class Quat {
  public:
    float x = 0, y = 0, z = 0, w = 1;
    Quat() = default;
    Quat(float qx, float qy, float qz, float qw) : x(qx), y(qy), z(qz), w(qw) {}
    explicit Quat(const Matrix3& m);
    void MakeMatrix(Matrix3& m) const;
    friend bool operator==(const Quat&, const Quat&) = default;
};

class ScaleValue {
  public:
    Point3 s{1, 1, 1};
    Quat q;
};
