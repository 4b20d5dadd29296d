#include "sceneconv/fbx_transform.h"

#include <cmath>

namespace sceneconv {

namespace {

Vector Triple(const FbxObject& model, std::string_view name, double fallback) {
    const FbxProperty* p = model.Find(name);
    return p ? Vector{p->Number(0), p->Number(1), p->Number(2)}
             : Vector{fallback, fallback, fallback};
}

/// Angles in degrees; the first axis of the order turns first.
Matrix Euler(const Vector& angles, std::int64_t order) {
    static constexpr int axes[6][3] = {{0, 1, 2}, {0, 2, 1}, {1, 2, 0},
                                       {1, 0, 2}, {2, 0, 1}, {2, 1, 0}};
    const auto& sequence = axes[order >= 0 && order < 6 ? order : 0];
    const double values[3] = {angles.x, angles.y, angles.z};
    Matrix m;
    for (const int axis : sequence)
        m = AxisRotation(axis, values[axis]) * m;
    return m;
}

Vector Axis(const FbxObject& settings, const std::string& name, std::int64_t fallbackAxis) {
    const std::int64_t axis = settings.Integer(name, fallbackAxis);
    const double sign = settings.Integer(name + "Sign", 1) < 0 ? -1 : 1;
    return {axis == 0 ? sign : 0, axis == 1 ? sign : 0, axis == 2 ? sign : 0};
}

} // namespace

Matrix FbxLocalTransform(const FbxObject& model) {
    const Matrix rotationPivot = Translation(Triple(model, "RotationPivot", 0));
    const Matrix scalingPivot = Translation(Triple(model, "ScalingPivot", 0));
    const Matrix rotation =
        Euler(Triple(model, "PreRotation", 0), 0) *
        Euler(Triple(model, "Lcl Rotation", 0), model.Integer("RotationOrder", 0)) *
        InverseOrIdentity(Euler(Triple(model, "PostRotation", 0), 0));
    return Translation(Triple(model, "Lcl Translation", 0)) *
           Translation(Triple(model, "RotationOffset", 0)) * rotationPivot * rotation *
           InverseOrIdentity(rotationPivot) * Translation(Triple(model, "ScalingOffset", 0)) *
           scalingPivot * Scaling(Triple(model, "Lcl Scaling", 1)) *
           InverseOrIdentity(scalingPivot);
}

Matrix FbxGeometricTransform(const FbxObject& model) {
    return Translation(Triple(model, "GeometricTranslation", 0)) *
           Euler(Triple(model, "GeometricRotation", 0), 0) *
           Scaling(Triple(model, "GeometricScaling", 1));
}

Matrix FbxAxesToHost(const FbxObject& settings) {
    const Vector right = Axis(settings, "CoordAxis", 0);
    const Vector up = Axis(settings, "UpAxis", 1);
    const Vector front = Axis(settings, "FrontAxis", 2);
    const Matrix m{right.x, right.y, right.z, 0, -front.x, -front.y, -front.z, 0,
                   up.x,    up.y,    up.z,    0, 0,        0,        0,        1};
    return std::abs(m.Determinant()) == 1 ? m : AxisRotation(0, 90);
}

} // namespace sceneconv
