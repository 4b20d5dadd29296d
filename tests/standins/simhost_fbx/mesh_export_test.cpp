#include "tests/standins/simhost_fbx/round_trip.h"
#include "tests/standins/simhost_fbx/scene_compare.h"

#include <gmock/gmock.h>

namespace {

using namespace fbxtest;
using testing::ElementsAre;
using testing::IsEmpty;

// Four corners, two faces of different materials, channels with faces of their own.
constexpr const char* quad = R"(
    "materials": {"red": {"class": "Physical Material", "name": "red"},
                  "blue": {"class": "Physical Material", "name": "blue"},
                  "inner": {"class": "Multi/Sub-Object", "sub_materials": ["blue", "red"]},
                  "outer": {"class": "Multi/Sub-Object",
                            "sub_materials": ["red", "inner", null]}},
    "objects": {"quad": {"class": "Editable Mesh", "mesh": {
        "positions": [0,0,0, 1,0,0, 0,1,0, 1,1,0, 2,2,2],
        "triangles": [0,1,2, 2,1,3, 3,1,4, 4,1,0, 0,2,4],
        "material_ids": [0, 1, 2, 4, 3],
        "uvs": {"1": {"values": [[0,0], [1,0], [0.25,2]], "triangles": [0,1,2, 2,1,0, 0,0,0,
                      1,1,1, 2,2,2]},
                "3": {"values": [[9,8,7]], "triangles": [0,0,0, 0,0,0, 0,0,0, 0,0,0, 0,0,0]}},
        "colors": {"values": [[1,0,0], [0,0.5,0.25]],
                   "triangles": [0,0,1, 1,1,0, 1,1,1, 0,0,0, 1,0,1]}ALPHA}}},
    "nodes": [{"name": "quad", "object": "quad", "material": "outer"}])";

std::string Quad(const std::string& more) {
    std::string text = quad;
    return text.replace(text.find("ALPHA"), 5, more);
}

TEST(FbxMesh, KeepsChannelsColoursAndMaterials) {
    RoundTrip trip(Quad(""));
    ExpectSameScene(trip.Read());
    const Record& geometry = trip.File()["Objects"]["Geometry"];
    std::vector<std::string> sets;
    for (const Record* set : geometry.All("LayerElementUV"))
        sets.push_back((*set)["Name"].Text());
    EXPECT_THAT(sets, ElementsAre("UVChannel_1", "UVChannel_3"));
    EXPECT_EQ(geometry.All("Layer").size(), 2u);
    // Ids 0 and 3 (wrapped): red; 1 and 4 (wrapped): through the inner one, which counts them
    // anew, red and blue; 2: none.
    EXPECT_THAT(geometry["LayerElementMaterial"]["Materials"].Ints(), ElementsAre(0, 0, -1, 1, 0));
    EXPECT_THAT(geometry["PolygonVertexIndex"].Ints(),
                ElementsAre(0, 1, ~2, 2, 1, ~3, 3, 1, ~4, 4, 1, ~0, 0, 2, ~4));
}

TEST(FbxMesh, KeepsAlphaThatHasFacesOfItsOwn) {
    RoundTrip trip(Quad(R"(, "alpha": {"values": [[1,1,1], [0.5,0.5,0.5]],
        "triangles": [1,1,1, 0,1,0, 0,0,0, 1,1,1, 0,0,1]})"));
    ExpectSameScene(trip.Read());
}

TEST(FbxMesh, KeepsExplicitNormals) {
    RoundTrip trip(R"(
        "objects": {"face": {"class": "Editable Mesh", "mesh": {
            "positions": [0,0,0, 1,0,0, 0,1,0], "triangles": [0,1,2],
            "normals": {"values": [0,0,1, 0.6,0,0.8, 0,1,0], "triangles": [0,1,2]}}}},
        "nodes": [{"name": "face", "object": "face"}])");
    EXPECT_THAT(trip.File()["Objects"]["Geometry"]["LayerElementNormal"]["Normals"].Doubles(),
                testing::Pointwise(testing::DoubleNear(1e-6),
                                   std::vector<double>{0, 0, 1, 0.6, 0, 0.8, 0, 1, 0}));
    const aiScene& scene = trip.Read();
    ASSERT_EQ(scene.mNumMeshes, 1u);
    EXPECT_NEAR(scene.mMeshes[0]->mNormals[1].x, 0.6f, 1e-6f);
}

TEST(FbxMesh, PrimitivesAndStacksBecomeMeshes) {
    RoundTrip trip(R"(
        "modifiers": {"raise": {"class": "XForm", "matrix": [[1,0,0],[0,1,0],[0,0,1],[0,0,9]]}},
        "objects": {
          "ball": {"class": "Sphere", "params": {"radius": 4, "segs": 12}},
          "raised": {"base": "ball", "modifiers": ["raise"]},
          "poly": {"class": "Editable Poly", "mesh": {"positions": [0,0,0, 1,0,0, 0,1,0],
                                                      "triangles": [0,1,2]}},
          "outline": {"class": "Rectangle", "params": {"length": 2, "width": 3},
                      "modifiers": [{"class": "Extrude", "params": {"amount": 5}}]}},
        "nodes": [{"name": "ball", "object": "ball"}, {"name": "raised", "object": "raised"},
                  {"name": "poly", "object": "poly"}, {"name": "extruded", "object": "outline"}])");
    ExpectSameScene(trip.Read());
    EXPECT_EQ(trip.File()["Objects"].All("Geometry").size(), 4u);
}

} // namespace
