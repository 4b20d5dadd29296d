#include "simhost/files/fbx_normals.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using namespace simhost;

/// Two triangles that meet at the y axis in a right angle: one in the plane z = 0 (normal +z),
/// one in the plane x = 0 (normal +x).
Mesh Corner(DWORD firstGroups, DWORD secondGroups) {
    Mesh mesh;
    mesh.setNumVerts(4);
    mesh.setVert(0, Point3(0, 0, 0));
    mesh.setVert(1, Point3(1, 0, 0));
    mesh.setVert(2, Point3(0, 1, 0));
    mesh.setVert(3, Point3(0, 0, 1));
    mesh.setNumFaces(2);
    mesh.faces[0].setVerts(0, 1, 2);
    mesh.faces[0].setSmGroup(firstGroups);
    mesh.faces[1].setVerts(0, 2, 3);
    mesh.faces[1].setSmGroup(secondGroups);
    return mesh;
}

Point3 NormalOf(const std::vector<double>& normals, int face, int corner) {
    const std::size_t at = (static_cast<std::size_t>(face) * 3 + corner) * 3;
    return {static_cast<float>(normals[at]), static_cast<float>(normals[at + 1]),
            static_cast<float>(normals[at + 2])};
}

void ExpectNear(const Point3& a, const Point3& b) {
    EXPECT_LT(Length(a - b), 1e-5) << a.x << ' ' << a.y << ' ' << a.z;
}

TEST(FbxNormals, FollowSmoothingGroups) {
    const struct {
        DWORD first, second;
        bool smooth;
    } rows[] = {{0, 0, false}, {1, 1, true},  {1, 2, false},
                {3, 2, true},  {0, 1, false}, {0x80000000u, 0x80000001u, true}};
    const float half = std::sqrt(0.5f);
    for (const auto& row : rows) {
        Mesh mesh = Corner(row.first, row.second);
        const std::vector<double> normals = FbxCornerNormals(mesh);
        ASSERT_EQ(normals.size(), 18u);
        // Vertex 0 has a right angle in both faces, so both count the same.
        const Point3 shared(half, 0, half);
        ExpectNear(NormalOf(normals, 0, 0), row.smooth ? shared : Point3(0, 0, 1));
        ExpectNear(NormalOf(normals, 1, 0), row.smooth ? shared : Point3(1, 0, 0));
        ExpectNear(NormalOf(normals, 0, 1), Point3(0, 0, 1)); // a vertex of one face alone
    }
}

TEST(FbxNormals, GroupsMeetThroughAThirdFace) {
    Mesh mesh = Corner(1, 2);
    mesh.setNumFaces(3, TRUE);
    mesh.faces[2].setVerts(0, 3, 1); // the plane y = 0
    mesh.faces[2].setSmGroup(3);
    const std::vector<double> normals = FbxCornerNormals(mesh);
    const float third = std::sqrt(1.0f / 3);
    for (int face = 0; face < 3; ++face)
        ExpectNear(NormalOf(normals, face, 0), Point3(third, third, third));
}

TEST(FbxNormals, ExplicitOnesWinAndBrokenFacesDoNotSpread) {
    Mesh mesh = Corner(1, 1);
    mesh.setNumFaces(4, TRUE);
    mesh.faces[2].setVerts(0, 1, 1); // no area
    mesh.faces[2].setSmGroup(1);
    mesh.faces[3].setVerts(0, 1, 99); // no such vertex
    mesh.faces[3].setSmGroup(1);
    const float half = std::sqrt(0.5f);
    ExpectNear(NormalOf(FbxCornerNormals(mesh), 0, 0), Point3(half, 0, half));

    mesh.SpecifyNormals();
    MeshNormalSpec& specified = *mesh.GetSpecifiedNormals();
    specified.SetNumNormals(1);
    specified.Normal(0) = Point3(0, -2, 0);
    specified.SetNumFaces(4);
    for (int face = 0; face < 4; ++face)
        for (int corner = 0; corner < 3; ++corner)
            specified.Face(face).SetNormalID(corner, face == 1 ? 5 : 0); // face 1: no such normal
    const std::vector<double> normals = FbxCornerNormals(mesh);
    ExpectNear(NormalOf(normals, 0, 0), Point3(0, -1, 0));
    ExpectNear(NormalOf(normals, 1, 0), Point3(half, 0, half));
}

} // namespace
