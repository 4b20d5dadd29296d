#include "tests/standins/sceneconv/convert_kit.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

namespace sceneconv::testing {

namespace {

using ::testing::Contains;
using ::testing::HasSubstr;

/// One triangle with two sets of coordinates and colours, used by two primitives: the first with
/// material 0, the second without one.
constexpr const char* common = R"(
  "buffers": [{"byteLength": 140, "uri": "data:application/octet-stream;base64,)"
                               "AAAAAAAAAAAAAAAAAACAPwAAAAAAAAAAAAAAAAAAgD8AAAAAAAAAAAAAAAAAAIA/"
                               "AAAAAAAAAAAAAIA/AAAAAAAAAAAAAIA/AAAAAAAAAAAAAIA/AACAPwAAAAAAAAAA"
                               "AACAPwAAAAAAAIA/AAAAAAAAgD8AAAAAAAAAAAAAgD8AAAA/AAABAAIAAAA="
                               R"("}],
  "bufferViews": [{"buffer": 0, "byteOffset": 0, "byteLength": 36},
                  {"buffer": 0, "byteOffset": 36, "byteLength": 24},
                  {"buffer": 0, "byteOffset": 60, "byteLength": 24},
                  {"buffer": 0, "byteOffset": 84, "byteLength": 48},
                  {"buffer": 0, "byteOffset": 132, "byteLength": 6}],
  "accessors": [
    {"bufferView": 0, "componentType": 5126, "count": 3, "type": "VEC3", "min": [0, 0, 0],
     "max": [1, 1, 0]},
    {"bufferView": 1, "componentType": 5126, "count": 3, "type": "VEC2"},
    {"bufferView": 2, "componentType": 5126, "count": 3, "type": "VEC2"},
    {"bufferView": 3, "componentType": 5126, "count": 3, "type": "VEC4"},
    {"bufferView": 4, "componentType": 5123, "count": 3, "type": "SCALAR"}],
  "meshes": [{"primitives": [
    {"attributes": {"POSITION": 0, "TEXCOORD_0": 1, "TEXCOORD_1": 2, "COLOR_0": 3}, "indices": 4,
     "material": 0},
    {"attributes": {"POSITION": 0}, "indices": 4}]}])";

/// A file of those meshes with the given further members.
std::string Gltf(const std::string& members) {
    const bool ownMaterials = members.find("\"materials\"") != std::string::npos;
    return R"({"asset": {"version": "2.0"}, "scene": 0,)" + members + "," +
           (ownMaterials ? "" : R"("materials": [{"name": "M"}],)") + common + "}";
}

TEST(GltfNodes, OneRootIsTheFilesAndSeveralNeedNone) {
    const SceneView one = ConvertText("a.gltf", Gltf(R"("scenes": [{"nodes": [0]}], "nodes": [
        {"name": "Wurzel", "children": [1], "translation": [1, 2, 3]}, {"name": "日本", "mesh": 0,
         "rotation": [0, 0, 0.70710678, 0.70710678], "scale": [2, 3, 4],
         "extras": {"a": 1, "b": "x", "c": [1]}}])"));
    ASSERT_EQ(one.json["nodes"].size(), 2U);
    EXPECT_EQ(one.json["units"], Json::parse(R"({"type": "meters", "scale": 1.0})"));
    ExpectNear(one.WorldOf("Wurzel")[3], {1, -3, 2}, 1e-6, "root");
    const Rows world = one.WorldOf("日本");
    ExpectNear(world[0], {0, 0, 2}, 1e-6, "x axis: turned to the file's y, which is up");
    ExpectNear(world[1], {-3, 0, 0}, 1e-6, "y axis");
    ExpectNear(world[2], {0, -4, 0}, 1e-6, "z axis");
    EXPECT_EQ(one.Node("日本")["user_props"], "a = 1\r\nb = x");

    const SceneView two = ConvertText("a.gltf", Gltf(R"("scenes": [{"nodes": [1, 0]}], "nodes": [
        {"name": "A", "mesh": 0}, {"name": "B", "matrix": [1,0,0,0, 0,1,0,0, 0,0,1,0, 5,6,7,1]}])"));
    ASSERT_EQ(two.json["nodes"].size(), 2U);
    EXPECT_EQ(two.json["nodes"][0]["name"], "B");
    ExpectNear(two.WorldOf("B")[3], {5, -7, 6}, 1e-6, "B");
}

TEST(GltfMeshes, ColoursSeveralCoordinatesAndNoMaterial) {
    const SceneView scene = ConvertText("a.gltf", Gltf(R"("scenes": [{"nodes": [0, 1]}],
        "nodes": [{"name": "A", "mesh": 0}, {"name": "B", "mesh": 0}],
        "materials": [{"name": "M", "alphaMode": "OPAQUE"}])"));
    const Json& mesh = scene.Object("A")["mesh"];
    EXPECT_EQ(mesh["positions"].size(), 9U);
    EXPECT_EQ(mesh["material_ids"], Json({0, 1}));
    EXPECT_EQ(mesh["uvs"].size(), 2U);
    // white where the second primitive has no colour; v counts upwards
    EXPECT_EQ(mesh["colors"]["values"],
              Json({1.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0, 1.0, 1.0, 1.0, 1.0}));
    EXPECT_EQ(mesh["colors"]["triangles"], Json({0, 1, 2, 3, 3, 3}));
    EXPECT_EQ(mesh["alpha"]["values"], Json({1.0, 1.0, 1.0, 0.5, 0.5, 0.5}));
    EXPECT_EQ(mesh["uvs"]["1"]["values"], Json({0.0, 1.0, 1.0, 1.0, 0.0, 0.0}));
    EXPECT_EQ(scene.Node("A")["object"], scene.Node("B")["object"]);
    EXPECT_EQ(scene.Material(scene.Node("A")["material"])["sub_materials"], Json({"M", nullptr}));
}

TEST(GltfCameras, SeveralNodesShareOneAndAnglesBecomeHorizontal) {
    const SceneView scene = ConvertText("a.gltf", Gltf(R"("scenes": [{"nodes": [0, 1, 2, 3]}],
        "nodes": [{"name": "Cam", "camera": 0, "translation": [1, 2, 3]},
                  {"name": "Cam", "camera": 0, "rotation": [0, 0.70710678, 0, 0.70710678]},
                  {"name": "Plan", "camera": 1}, {"name": "Auge", "camera": 2, "mesh": 0}],
        "cameras": [
          {"type": "perspective", "perspective": {"yfov": 0.5, "aspectRatio": 2, "znear": 0.1}},
          {"type": "orthographic",
           "orthographic": {"xmag": 3, "ymag": 2, "znear": 0.5, "zfar": 10}},
          {"type": "perspective", "perspective": {"yfov": 0.6024157, "znear": 1, "zfar": 9}}])"));
    EXPECT_EQ(scene.Count("Free"), 4);
    const Json& first = scene.json["nodes"][0];
    const Json& second = scene.json["nodes"][1];
    EXPECT_EQ(first["object"], second["object"]) << "one camera of the file: instances";
    const Json& lens = scene.json["objects"][first["object"].get<std::string>()]["camera"];
    EXPECT_NEAR(lens["fov"], 2 * std::atan(2 * std::tan(0.25)), 1e-6);
    EXPECT_FALSE(lens.contains("manual_clip")) << "no far plane is given";
    ExpectNear(scene.World(first)[3], {1, -3, 2}, 1e-6, "first");
    ExpectNear(scene.World(first)[2], {0, -1, 0}, 1e-6, "first looks along the file's -z");
    ExpectNear(scene.World(second)[2], {1, 0, 0}, 1e-6, "second looks along -x");

    const Json& plan = scene.Object("Plan")["camera"];
    EXPECT_EQ(plan["ortho"], true);
    const double width =
        std::tan(plan["fov"].get<double>() / 2) * plan["target_distance"].get<double>() * 2;
    EXPECT_NEAR(width, 6, 1e-6);
    EXPECT_EQ(plan["near"], 0.5);

    // Without an aspect the picture's counts: 4:3 makes this one 45 degrees.
    const Json& beside = scene.Node("Auge camera");
    EXPECT_EQ(beside["parent"], "Auge") << "a node has one object; the mesh keeps its node";
    EXPECT_NEAR(scene.Object("Auge camera")["camera"]["fov"], 0.785398, 1e-5);
    EXPECT_EQ(scene.Object("Auge")["class"], "Editable Mesh");
}

TEST(GltfLights, KeepStrengthColourAndInstances) {
    const SceneView scene = ConvertText("a.gltf", Gltf(R"("scenes": [{"nodes": [0, 1, 2]}],
        "extensionsUsed": ["KHR_lights_punctual"],
        "extensions": {"KHR_lights_punctual": {"lights": [
          {"type": "spot", "intensity": 20, "color": [1, 0.5, 0.25],
           "spot": {"outerConeAngle": 0.78539816}}, {"type": "directional", "intensity": 1000}]}},
        "nodes": [{"name": "A", "extensions": {"KHR_lights_punctual": {"light": 0}}},
                  {"name": "B", "extensions": {"KHR_lights_punctual": {"light": 0}}},
                  {"name": "C", "extensions": {"KHR_lights_punctual": {"light": 1}}}])"));
    EXPECT_EQ(scene.Count("CoronaLight"), 2);
    EXPECT_EQ(scene.Node("A")["object"], scene.Node("B")["object"]);
    const Json& spot = scene.Object("A")["params"];
    EXPECT_EQ(spot["intensity"], 20);
    EXPECT_EQ(spot["intensityUnits"], 2) << "candela";
    EXPECT_EQ(spot["color"], Json({1.0, 0.5, 0.25}));
    EXPECT_NEAR(spot["directionality"], 0.5, 1e-6);
    ExpectNear(scene.WorldOf("A")[2], {0, -1, 0}, 1e-6, "shines along the file's -z");
    EXPECT_EQ(scene.Object("C")["class"], "CoronaSun");
}

TEST(GltfMaterials, BecomeTheHostsOwn) {
    const TempFolder folder;
    const std::string file =
        Gltf(R"("scenes": [{"nodes": [0]}], "nodes": [{"name": "A", "mesh": 0}],
        "extensionsUsed": ["KHR_texture_transform", "KHR_materials_clearcoat"],
        "materials": [{"name": "M", "alphaMode": "MASK", "alphaCutoff": 0.3, "doubleSided": true,
          "pbrMetallicRoughness": {"baseColorFactor": [0.1, 0.2, 0.3, 0.4], "metallicFactor": 0.7,
            "baseColorTexture": {"index": 0, "texCoord": 1, "extensions": {
              "KHR_texture_transform": {"offset": [0.25, 0.5], "scale": [2, 4]}}},
            "metallicRoughnessTexture": {"index": 1}},
          "normalTexture": {"index": 1, "scale": 0.7},
          "occlusionTexture": {"index": 1, "strength": 0.6}, "emissiveFactor": [0.1, 0, 0],
          "extensions": {"KHR_materials_clearcoat": {"clearcoatFactor": 0.5}}}],
        "textures": [{"source": 0}, {"source": 1}],
        "images": [{"uri": "mein%20Holz.png"}, {"uri": "data:image/png;base64,AQIDBA=="}])");
    const auto input = folder.Write("in/a.gltf", file);
    folder.Write("in/mein Holz.png", "x");
    const SceneView scene = ConvertFile(input, folder.Path() / "out.json");
    EXPECT_EQ(scene.Material("M")["class"], "glTF Material");
    const std::pair<const char*, Json> wanted[] = {{"baseColor", {0.1, 0.2, 0.3, 0.4}},
                                                   {"metalness", 0.7},
                                                   {"roughness", 1.0},
                                                   {"emissionColor", {0.1, 0.0, 0.0}},
                                                   {"alphaMode", 2},
                                                   {"alphaCutoff", 0.3},
                                                   {"DoubleSided", true},
                                                   {"unlit", false},
                                                   {"normal", 0.7},
                                                   {"ambientOcclusion", 0.6},
                                                   {"enableClearCoat", true},
                                                   {"clearcoat", 0.5}};
    for (const auto& [name, value] : wanted)
        EXPECT_EQ(scene.Param("M", name), value) << name;
    const std::string packed = scene.Param("M", "metalnessMap");
    for (const char* slot : {"roughnessMap", "normalMap", "ambientOcclusionMap"})
        EXPECT_EQ(scene.Param("M", slot), packed) << slot << ": one picture is one map";
    // the embedded picture stands beside the output, byte for byte
    EXPECT_EQ(scene.json["maps"][packed]["file"], "out_textures/texture_1.png");
    EXPECT_EQ(std::filesystem::file_size(folder.Path() / "out_textures/texture_1.png"), 4U);
    EXPECT_EQ(scene.json["map_paths"], Json({"in", "out_textures"}));

    const Json& base = scene.json["maps"][scene.Param("M", "baseColorMap").get<std::string>()];
    EXPECT_EQ(base["file"], "mein Holz.png");
    const Json& uv = base["sub_objects"]["uvgen"]["params"];
    EXPECT_EQ(uv["mapChannel"], 2);
    // The file maps u to 2u + 0.25; the host maps it to 2 (u - offset - 0.5) + 0.5 (v alike,
    // upwards)
    EXPECT_NEAR(2 * (0 + uv["U_Offset"].get<double>() * -1 - 0.5) + 0.5, 0.25, 1e-6);
    EXPECT_NEAR(4 * (0 - uv["V_Offset"].get<double>() - 0.5) + 0.5, 1 - 4 - 0.5, 1e-6);
    EXPECT_TRUE(scene.warnings.empty());
}

} // namespace

} // namespace sceneconv::testing
