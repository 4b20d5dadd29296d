#include "tests/standins/simhost_fbx/round_trip.h"
#include "tests/standins/simhost_fbx/scene_compare.h"

#include <gmock/gmock.h>

#include <set>

namespace {

using namespace fbxtest;
using testing::ElementsAre;
using testing::IsEmpty;

const Record* ModelOf(const Record& file, std::string_view name) {
    for (const Record* model : file["Objects"].All("Model"))
        if (model->ObjectName() == name)
            return model;
    return nullptr;
}

std::vector<std::int64_t> SourcesOf(const Record& file, std::int64_t id) {
    std::vector<std::int64_t> sources;
    for (const Record* c : file["Connections"].All("C"))
        if (c->Text() == "OO" && c->Int(2) == id)
            sources.push_back(c->Int(1));
    return sources;
}

// Turned, mirrored, stretched and skewed through their parents, with offsets of the object.
TEST(FbxNodes, StandWhereTheyStood) {
    RoundTrip trip(R"(
        "units": {"type": "meters", "scale": 0.01},
        "objects": {"box": {"class": "Box", "params": {"length": 3, "width": 2, "height": 1}}},
        "nodes": [
          {"name": "plain", "object": "box", "children": [
            {"name": "turned", "object": "box",
             "transform": {"position": [10, 20, 30], "rotation": [30, -50, 110]}},
            {"name": "mirrored", "object": "box",
             "transform": {"rotation": [0, 90, 0], "scale": [-1, 1, 1]}, "children": [
              {"name": "below mirrored", "object": "box",
               "transform": {"position": [1, 2, 3], "rotation": [10, 20, 30]}}]}]},
          {"name": "stretched", "object": "box",
           "transform": {"scale": [1, 4, 0.5], "rotation": [5, 6, 7]}, "children": [
            {"name": "skewed", "object": "box",
             "transform": {"matrix": [[1, 0.5, 0], [0, 1, 0.2], [0, 0, 1], [5, 0, 0]]},
             "children": [
              {"name": "below skewed", "object": "box", "transform": {"rotation": [40, 0, 0]},
               "object_offset": {"position": [0, 0, 3], "rotation": [0, 0, 30],
                                 "scale": [2, 1, 1]}}]},
            {"name": "helper", "object": {"class": "Dummy"},
             "transform": {"rotation": [0, 30, 45]}, "children": [
              {"name": "below helper", "object": "box"}]}]},
          {"name": "offset", "object": "box",
           "object_offset": {"position": [1, 2, 3], "rotation": [0, 0, 90]}},
          {"name": "flat", "object": "box", "transform": {"scale": [1, 1, 0]}},
          {"name": "empty"}])");
    ExpectSameScene(trip.Read());
    const Record* units = trip.File()["GlobalSettings"].Property("UnitScaleFactor");
    EXPECT_NEAR(std::get<double>(units->values[4]), 1.0, 1e-6);
    // Only what the host's transform can't say is moved into the geometry.
    EXPECT_FALSE(ModelOf(trip.File(), "turned")->Property("GeometricRotation"));
    EXPECT_TRUE(ModelOf(trip.File(), "skewed")->Property("GeometricRotation"));
    EXPECT_TRUE(ModelOf(trip.File(), "offset")->Property("GeometricTranslation"));
}

TEST(FbxNodes, KeepNamesHandlesAndFlags) {
    RoundTrip trip(R"(
        "objects": {"box": {"class": "Box"}},
        "nodes": [
          {"name": "Стол \"один\" 木 \ud83e\ude91", "object": "box", "handle": 77,
           "user_props": "key = value"},
          {"name": "hidden", "object": "box", "hidden": true, "children": [
            {"name": "seen", "object": "box"}]},
          {"name": "same", "object": "box"}, {"name": "same", "object": "box"},
          {"name": "", "object": "box"}])");
    const Record& file = trip.File();
    std::vector<std::string> names;
    std::set<std::int64_t> ids;
    for (const Record* model : file["Objects"].All("Model")) {
        names.push_back(model->ObjectName());
        EXPECT_EQ(model->Text(1).substr(model->Text(1).find('\0')), std::string("\0\1Model", 7));
        ids.insert(model->Int(0));
    }
    EXPECT_THAT(names,
                ElementsAre("Стол \"один\" 木 \U0001FA91", "hidden", "seen", "same", "same", ""));
    EXPECT_EQ(ids.size(), names.size());
    const Record* first = ModelOf(file, names[0]);
    EXPECT_EQ(first->Property("MaxHandle")->Int(4), 77);
    EXPECT_EQ(first->Property("UDP3DSMAX")->Text(4), "key = value");
    EXPECT_FALSE(first->Property("Show"));
    EXPECT_EQ(ModelOf(file, "hidden")->Property("Show")->Int(4), 0);
    EXPECT_FALSE(ModelOf(file, "seen")->Property("Show"));
    EXPECT_EQ(ModelOf(file, "seen")->Property("Visibility Inheritance")->Int(4), 0);
    EXPECT_TRUE(trip.Read().mRootNode->FindNode(names[0].c_str()));
}

TEST(FbxNodes, InstancesShareTheirGeometry) {
    RoundTrip trip(R"(
        "materials": {"a": {"class": "Physical Material", "name": "a"},
                      "b": {"class": "Physical Material", "name": "b"},
                      "two": {"class": "Multi/Sub-Object", "sub_materials": ["a", "b"]},
                      "other two": {"class": "Multi/Sub-Object", "sub_materials": ["b", "a"]},
                      "half": {"class": "Multi/Sub-Object", "sub_materials": [null, "b"]}},
        "objects": {"pair": {"class": "Editable Mesh", "mesh": {
            "positions": [0,0,0, 1,0,0, 0,1,0, 1,1,0], "triangles": [0,1,2, 2,1,3],
            "material_ids": [0, 3]}}},
        "nodes": [{"name": "1", "object": "pair", "material": "two"},
                  {"name": "2", "object": "pair", "material": "two"},
                  {"name": "3", "object": "pair", "material": "other two"},
                  {"name": "4", "object": "pair", "material": "a"},
                  {"name": "5", "object": "pair"},
                  {"name": "6", "object": "pair", "material": "half"}])");
    const Record& file = trip.File();
    std::set<std::int64_t> geometries;
    for (const Record* geometry : file["Objects"].All("Geometry"))
        geometries.insert(geometry->Int(0));
    const auto geometryOf = [&](const char* node) {
        for (const std::int64_t id : SourcesOf(file, ModelOf(file, node)->Int(0)))
            if (geometries.contains(id))
                return id;
        return std::int64_t{0};
    };
    EXPECT_EQ(geometryOf("1"), geometryOf("2"));
    for (const char* node : {"1", "2", "3", "4", "5", "6"})
        EXPECT_NE(geometryOf(node), 0) << node;
    EXPECT_EQ(geometries.size(), 5u); // other materials, other geometry
    EXPECT_EQ(file["Objects"].All("Material").size(), 2u);
    ExpectSameScene(trip.Read());
}

TEST(FbxNodes, WhatIsNoMeshIsANull) {
    RoundTrip trip(R"(
        "objects": {
          "line": {"class": "Line", "splines": [{"points": [[0,0,0], [10,0,0], [10,10,0]]}],
                   "params": {"render_renderable": true}},
          "twin": {"class": "Editable Mesh", "mesh": {"positions": [0,0,0, 1,0,0, 0,1,0],
                                                      "triangles": [0,1,2]}}},
        "nodes": [
          {"name": "spline", "object": "line"}, {"name": "mesh twin", "object": "twin"},
          {"name": "group", "group_head": true, "children": [
            {"name": "member", "object": "twin", "group_member": true}]},
          {"name": "camera", "object": {"class": "Target"}, "target": "aim"},
          {"name": "aim"},
          {"name": "no faces", "object": {"class": "Editable Mesh", "mesh": {
              "positions": [0,0,0], "triangles": []}}},
          {"name": "stubborn", "object": {"class": "Box", "converts": false}}])");
    const Record& file = trip.File();
    for (const char* name : {"spline", "group", "aim", "no faces", "stubborn"})
        EXPECT_EQ(ModelOf(file, name)->Text(2), "Null") << name;
    EXPECT_EQ(ModelOf(file, "member")->Text(2), "Mesh");
    EXPECT_EQ(ModelOf(file, "camera")->Text(2), "Camera");
    ExpectSameScene(trip.Read());
}

// A chain of nodes is no reason to run out of stack.
TEST(FbxNodes, MayStandInALongChain) {
    std::string nodes;
    for (int i = 0; i < 20'000; ++i)
        nodes += (i ? "," : "") + std::string(R"({"name": "n)") + std::to_string(i) + '"' +
                 (i ? R"(, "parent": "n)" + std::to_string(i - 1) + '"' : "") +
                 R"(, "transform": {"position": [0, 0, 1]}})";
    RoundTrip trip("\"nodes\": [" + nodes + "]");
    const Record& file = trip.File();
    EXPECT_EQ(file["Objects"].All("Model").size(), 20'000u);
    const Record* last = ModelOf(file, "n19999");
    ASSERT_TRUE(last);
    EXPECT_EQ(std::get<double>(last->Property("Lcl Translation")->values[6]), 1.0);
}

TEST(FbxNodes, OneThatThrowsDoesNotStopTheOthers) {
    RoundTrip trip(R"(
        "materials": {"bad": {"class": "Physical Material", "throws": true},
                      "good": {"class": "Physical Material", "name": "good"}},
        "objects": {"box": {"class": "Box"},
                    "bad box": {"class": "Box", "throws": true, "throw_kind": "other"},
                    "bad light": {"class": "Omni", "throws": ["GetParamBlock"]}},
        "nodes": [{"name": "a", "object": "bad box"}, {"name": "b", "object": "bad light"},
                  {"name": "c", "object": "box", "material": "bad"},
                  {"name": "d", "object": "box", "throws": true},
                  {"name": "e", "object": "box", "material": "good"}])");
    EXPECT_EQ(trip.File()["Objects"].All("Model").size(), 5u);
    const aiScene& scene = trip.Read();
    const aiNode* node = scene.mRootNode->FindNode("e");
    ASSERT_TRUE(node);
    ASSERT_EQ(node->mNumMeshes, 1u);
    const aiMesh& mesh = *scene.mMeshes[node->mMeshes[0]];
    EXPECT_STREQ(scene.mMaterials[mesh.mMaterialIndex]->GetName().C_Str(), "good");
}

} // namespace
