#pragma once
// Transforms as FBX holds them: a translation, three Euler angles and three scales. What the
// host can have beyond that (axes that are not square to each other) is split so that geometry
// still lands in its place.
#include "simhost/files/fbx_property.h"

#include <max.h>

namespace simhost {

/// Three axes and a position as rows, in double precision; points are rows: `p * m`.
struct FbxAffine {
    std::array<FbxVec3, 4> row{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {0, 0, 0}}};
    friend bool operator==(const FbxAffine&, const FbxAffine&) = default;
};

/// Numbers that are not finite become those of the identity.
[[nodiscard]] FbxAffine ToFbxAffine(const Matrix3& m);
/// First a, then b.
[[nodiscard]] FbxAffine operator*(const FbxAffine& a, const FbxAffine& b);
/// Identity for a matrix that has no inverse.
[[nodiscard]] FbxAffine Inverse(const FbxAffine& m);

/// Scale first, then the rotation about x, y and z (degrees), then the translation.
struct FbxTrs {
    FbxVec3 translation{0, 0, 0};
    FbxVec3 rotation{0, 0, 0};
    FbxVec3 scale{1, 1, 1};
    friend bool operator==(const FbxTrs&, const FbxTrs&) = default;
};

[[nodiscard]] FbxAffine Compose(const FbxTrs& trs);
/// Axes are square to each other (zero axes included), so that an FbxTrs can hold the matrix.
[[nodiscard]] bool IsSquare(const FbxAffine& m);
/// Exact for a square matrix; a mirrored one gets a negative x scale. Else the z axis keeps its
/// direction and the y axis its side of it: cameras and lights still look the same way.
[[nodiscard]] FbxTrs Decompose(const FbxAffine& m);

/// A node's own transform and the one of its geometry within it (not inherited by children).
struct FbxPlacement {
    FbxTrs local;
    FbxTrs geometric;
};

/// Splits any matrix of an object in its parent: p * geometric * local is p * m.
[[nodiscard]] FbxPlacement SplitSkewed(const FbxAffine& m);

} // namespace simhost
