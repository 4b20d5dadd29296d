#include <max.h>

#include <gtest/gtest.h>

namespace {

Mesh Triangle() {
    Mesh mesh;
    mesh.setNumVerts(3);
    mesh.setVert(1, {1, 0, 0});
    mesh.setVert(2, {0, 1, 0});
    mesh.setNumFaces(1);
    mesh.faces[0].setVerts(0, 1, 2);
    return mesh;
}

TEST(MeshData, ShortCutsFollowTheChannels) {
    Mesh mesh = Triangle();
    mesh.setMapSupport(1);
    ASSERT_TRUE(mesh.mapSupport(1));
    EXPECT_EQ(mesh.getNumTVerts(), 3);
    EXPECT_EQ(mesh.tvFace[0].t[2], 2u);
    mesh.Map(1).setNumVerts(5);
    EXPECT_EQ(mesh.getNumTVerts(), 5);
    EXPECT_EQ(mesh.tVerts, mesh.Map(1).tv);

    ASSERT_TRUE(mesh.setNumVertCol(1));
    ASSERT_TRUE(mesh.setNumVCFaces(mesh.getNumFaces()));
    mesh.vertCol[0] = {1, 0.5f, 0};
    EXPECT_EQ(mesh.Map(0).tv[0], Point3(1, 0.5f, 0));
    mesh.setMapSupport(0, FALSE);
    EXPECT_EQ(mesh.vertCol, nullptr);
}

TEST(MeshData, CopiesStandOnTheirOwn) {
    Mesh mesh = Triangle();
    mesh.setMapSupport(1);
    mesh.SpecifyNormals();
    mesh.GetSpecifiedNormals()->SetNumNormals(1);
    Mesh copy = mesh;
    copy.tVerts[0] = {9, 9, 9};
    copy.Map(1).setNumVerts(7);
    copy.setVert(0, {5, 5, 5});
    EXPECT_EQ(mesh.tVerts[0], Point3(0, 0, 0));
    EXPECT_EQ(mesh.getNumTVerts(), 3);
    EXPECT_EQ(mesh.getVert(0), Point3(0, 0, 0));
    EXPECT_EQ(copy.getNumTVerts(), 7);
    EXPECT_NE(copy.GetSpecifiedNormals(), mesh.GetSpecifiedNormals());
}

TEST(MeshData, ChannelsKeepOneFaceForEachFace) {
    Mesh mesh = Triangle();
    mesh.setMapSupport(1);
    mesh.setMapSupport(MAP_ALPHA);
    mesh.setNumFaces(4, TRUE);
    EXPECT_EQ(mesh.Map(1).getNumFaces(), 4);
    EXPECT_EQ(mesh.Map(MAP_ALPHA).getNumFaces(), 4);
    EXPECT_EQ(mesh.tvFace[0].t[1], 1u); // kept
    EXPECT_FALSE(mesh.setNumFaces(-1));
}

} // namespace
