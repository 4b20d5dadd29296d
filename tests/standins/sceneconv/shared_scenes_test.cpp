// Real scenes, where this machine has them.
#include "tests/standins/sceneconv/convert_kit.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <set>
#include <sstream>

namespace sceneconv::testing {

namespace {

using ::testing::Contains;
using ::testing::HasSubstr;

class SharedScenesTest : public SharedScenesFixture {
  protected:
    SceneView Convert(const std::string& file) {
        return ConvertFile(SharedScenes() / file, folder_.Path() / "out.json");
    }

    TempFolder folder_;
};

std::array<double, 3> ToHost(const std::array<double, 3>& v) {
    return {v[0], -v[2], v[1]};
}

/// Rotates by a quaternion x, y, z, w: v + 2w (q x v) + 2 q x (q x v).
std::array<double, 3> Turn(const std::array<double, 4>& q, const std::array<double, 3>& v) {
    const auto cross = [&](const std::array<double, 3>& a) {
        return std::array<double, 3>{q[1] * a[2] - q[2] * a[1], q[2] * a[0] - q[0] * a[2],
                                     q[0] * a[1] - q[1] * a[0]};
    };
    const auto once = cross(v);
    const auto twice = cross(once);
    return {v[0] + 2 * (q[3] * once[0] + twice[0]), v[1] + 2 * (q[3] * once[1] + twice[1]),
            v[2] + 2 * (q[3] * once[2] + twice[2])};
}

/// A glTF node in the world; the scales of these files are all 1 above cameras and lights.
struct SourceNode {
    Json json;
    int parent = -1;
};

std::vector<SourceNode> SourceNodes(const Json& file) {
    std::vector<SourceNode> nodes;
    for (const Json& node : file["nodes"])
        nodes.push_back({node, -1});
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        for (const Json& child : nodes[i].json.value("children", Json::array()))
            nodes[child.get<std::size_t>()].parent = static_cast<int>(i);
    }
    return nodes;
}

std::array<double, 3> ToWorld(const std::vector<SourceNode>& nodes, std::size_t index,
                              std::array<double, 3> v, bool point) {
    for (int at = static_cast<int>(index); at >= 0;
         at = nodes[static_cast<std::size_t>(at)].parent) {
        const Json& node = nodes[static_cast<std::size_t>(at)].json;
        v = Turn(node.value("rotation", std::array<double, 4>{0, 0, 0, 1}), v);
        const auto t = node.value("translation", std::array<double, 3>{0, 0, 0});
        for (std::size_t i = 0; point && i < 3; ++i)
            v[i] += t[i];
    }
    return ToHost(v);
}

/// Compares place, direction and up of every node that `wanted` picks from the source file.
template <typename Wanted>
int CompareFrames(const SceneView& scene, const Json& file, Wanted wanted) {
    const std::vector<SourceNode> nodes = SourceNodes(file);
    int count = 0;
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        if (!wanted(nodes[i].json))
            continue;
        ++count;
        const std::string name = nodes[i].json["name"];
        const Rows world = scene.WorldOf(name);
        ExpectNear(world[3], ToWorld(nodes, i, {0, 0, 0}, true), 1e-4, name + " position");
        ExpectNear(world[2], ToWorld(nodes, i, {0, 0, 1}, false), 1e-4, name + " back");
        ExpectNear(world[1], ToWorld(nodes, i, {0, 1, 0}, false), 1e-4, name + " up");
    }
    return count;
}

Json ReadJson(const std::filesystem::path& file) {
    std::ifstream stream(file);
    return Json::parse(stream);
}

TEST_F(SharedScenesTest, LightOrientation) {
    const std::string path = "light_orientation/LightOrientation.gltf";
    const SceneView scene = Convert(path);
    const Json file = ReadJson(SharedScenes() / path);
    EXPECT_EQ(CompareFrames(scene, file, [](const Json& n) { return n.contains("extensions"); }),
              4);
    EXPECT_EQ(scene.Count("CoronaLight"), 4);
    EXPECT_EQ(scene.json["nodes"].size(), 14U);
    EXPECT_EQ(scene.Object("spotLight_pi_div_4")["params"]["intensity"], 100000);
}

TEST_F(SharedScenesTest, CamerasAndLights) {
    const std::string path = "cameras_and_lights/AnimatedMeshCameraLight.gltf";
    const SceneView scene = Convert(path);
    const Json file = ReadJson(SharedScenes() / path);
    EXPECT_EQ(CompareFrames(scene, file, [](const Json& n) { return n.contains("camera"); }), 5);
    EXPECT_EQ(scene.Count("Free"), 5);
    EXPECT_EQ(scene.json["nodes"].size(), 48U);
    const double vertical = file["cameras"][0]["perspective"]["yfov"];
    const double width = scene.json["render"]["width"];
    const double height = scene.json["render"]["height"];
    EXPECT_NEAR(scene.Object("UserCamera")["camera"]["fov"],
                2 * std::atan(std::tan(vertical / 2) * width / height), 1e-4);
    EXPECT_TRUE(scene.json["materials"].empty()) << "the file has none";
}

TEST_F(SharedScenesTest, MissingTexture) {
    const SceneView scene = Convert("missing_texture/RGBMultiplyMap.gltf");
    EXPECT_EQ(scene.json["materials"].size(), 4U);
    ASSERT_EQ(scene.json["maps"].size(), 1U);
    EXPECT_EQ(scene.json["maps"].front()["file"], "./20140615_192225.png");
    EXPECT_THAT(scene.warnings, Contains(HasSubstr("texture not found")));
    for (const Json& material : scene.json["materials"]) {
        EXPECT_EQ(material["class"], "glTF Material");
        EXPECT_EQ(material["params"]["baseColorMap"], scene.json["maps"].items().begin().key());
    }
}

TEST_F(SharedScenesTest, Engine) {
    const SceneView scene = Convert("engine/2CylinderEngine.FBX");
    EXPECT_EQ(scene.json["nodes"].size(), 84U);
    EXPECT_EQ(scene.Count("Free Direct"), 2);
    EXPECT_EQ(scene.Object("Head_Stud_123-006_0_Parts"),
              scene.Object("Head_Stud_123-006_0_Parts_1"));
    EXPECT_EQ(scene.Node("Piston_123-844_0_Parts")["parent"], "Piston_Sub__0_Parts");
    // The host points such a light along its -z; in the file it is turned to -y and back. Its
    const Rows sun = scene.WorldOf("Sunlight__Front-Upper-Left");
    ExpectNear(sun[2], {-57.735, -57.735, 57.735}, 1e-2, "it comes from front upper left");
}

TEST_F(SharedScenesTest, Instances) {
    const SceneView scene = Convert("instances/Instances.FBX");
    std::set<std::string> objects;
    for (const Json& node : scene.json["nodes"]) {
        objects.insert(node["object"].get<std::string>());
        EXPECT_EQ(node["wire_color"], Json({6, 135, 6}));
    }
    EXPECT_EQ(scene.json["nodes"].size(), 3U);
    EXPECT_EQ(objects.size(), 1U);
    EXPECT_EQ(scene.json["objects"].size(), 1U);
    ExpectNear(scene.WorldOf("InstanceBox2")[3], {4, 0, 0}, 1e-9, "InstanceBox2");
    ExpectNear(scene.WorldOf("InstanceBox2")[2], {0, 0, 1}, 1e-9, "upright, as in the host");
}

TEST_F(SharedScenesTest, PbrTextures) {
    const SceneView scene = Convert("pbr_textures/PBR_Textures.FBX");
    EXPECT_EQ(scene.json["materials"].size(), 6U);
    EXPECT_EQ(scene.json["units"]["type"], "meters");
    // What the file holds of the material's own table, sheen and thin film not being known then.
    const std::string table =
        "base_weight base_color reflectivity refl_color roughness roughness_inv metalness "
        "diff_roughness anisotropy anisoangle transparency trans_color trans_depth "
        "trans_roughness trans_roughness_inv trans_ior thin_walled scattering sss_color "
        "sss_depth sss_scale sss_scatter_color emission emit_color emit_luminance coating "
        "coat_color coat_roughness coat_roughness_inv coat_ior material_mode";
    for (const auto& [name, material] : scene.json["materials"].items()) {
        EXPECT_EQ(material["class"], "Physical Material");
        std::istringstream params(table);
        for (std::string param; params >> param;)
            EXPECT_FALSE(scene.Param(name, param).is_null()) << name << " " << param;
    }
    EXPECT_EQ(scene.Param("BumpMat", "base_color"), Json({0.0, 0.0, 1.0, 1.0}));
    EXPECT_EQ(scene.Param("BumpMat", "metalness"), 0.5);
    EXPECT_EQ(scene.Param("BumpMat", "material_mode"), 1);
    EXPECT_EQ(scene.Param("BaseColorAlphaMat", "sss_scatter_color"), Json({1.0, 0.5, 0.25, 1.0}));
    const std::tuple<const char*, const char*, const char*> slots[] = {
        {"BumpMat", "bump_map", "bump.jpg"},
        {"BaseColorAlphaMat", "transparency_map", "gradation_horizontal.jpg"},
        {"MetallicRoughnessMat", "metalness_map", "gradation_horizontal.jpg"},
        {"EmissiveMat", "emit_color_map", "sun.jpg"},
        {"BaseColorAOMat", "diff_rough_map", "AmbientOcclusion.jpg"}};
    for (const auto& [material, slot, file] : slots) {
        const std::string map = scene.Param(material, slot);
        EXPECT_THAT(scene.json["maps"][map]["file"].get<std::string>(), ::testing::EndsWith(file));
    }
    // Lying beside the scene or embedded: every picture is found.
    EXPECT_EQ(scene.warnings, std::vector<std::string>());
    EXPECT_TRUE(std::filesystem::exists(folder_.Path() / "out_textures" / "wood.jpg"));
    EXPECT_EQ(scene.json["map_paths"].size(), 2U);
}

} // namespace

} // namespace sceneconv::testing
