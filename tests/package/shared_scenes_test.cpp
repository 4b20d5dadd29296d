// Packages of real scenes, against what their source files say.
#include "host/text.h"
#include "package/class_dispatch.h"
#include "package/classes/class_entry.h"
#include "sceneconv/warnings.h"
#include "sceneconv/write_scene.h"
#include "simhost/files/scene_file.h"
#include "tests/package/package_kit.h"
#include "tests/support/temp_folder.h"

#include <assimp/Importer.hpp>
#include <assimp/scene.h>
#include <gtest/gtest.h>
#include <max.h>

#include <array>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <map>

namespace brimwave::testing {
namespace {

class SharedScenes : public ::testing::Test {
  protected:
    void SetUp() override {
        const char* const shared = std::getenv("BRIMWAVE_SHARED");
        if (!shared) {
            GTEST_SKIP() << "BRIMWAVE_SHARED is not set: no shared scenes";
        }
        scenes_ = std::filesystem::path(shared) / "scenes";
    }

    [[nodiscard]] std::filesystem::path Path(const std::string& name) const {
        return scenes_ / name;
    }

    /// The package of a scene in a foreign format.
    [[nodiscard]] Written PackageOf(const std::string& name) {
        const std::filesystem::path scene = folder_.NativePath() / "scene.json";
        sceneconv::Warnings warnings;
        sceneconv::Convert(Path(name), scene, warnings);
        const auto loaded = simhost::LoadSceneFile(Wide(scene.string()));
        EXPECT_TRUE(loaded) << loaded.error;
        return WriteOpenScene();
    }

  private:
    std::filesystem::path scenes_;
    TempFolder folder_;
};

/// What a glTF file says of one node, in a world with z up: x, -z, y.
struct Placed {
    std::array<double, 3> position, direction, up;
    double verticalFov = 0; // of a camera, radians
};

using Matrix = std::array<std::array<double, 4>, 4>; // columns are axes, points are columns

Matrix Multiply(const Matrix& a, const Matrix& b) {
    Matrix product{};
    for (size_t i = 0; i < 4; ++i)
        for (size_t j = 0; j < 4; ++j)
            for (size_t k = 0; k < 4; ++k)
                product[i][j] += a[i][k] * b[k][j];
    return product;
}

Matrix LocalMatrix(const json& node) {
    if (node.contains("matrix")) {
        Matrix m{};
        for (size_t i = 0; i < 16; ++i)
            m[i % 4][i / 4] = node["matrix"][i];
        return m;
    }
    const json t = node.value("translation", json({0, 0, 0}));
    const json s = node.value("scale", json({1, 1, 1}));
    const json q = node.value("rotation", json({0, 0, 0, 1}));
    const double x = q[0], y = q[1], z = q[2], w = q[3];
    const double r[3][3] = {{1 - 2 * (y * y + z * z), 2 * (x * y - z * w), 2 * (x * z + y * w)},
                            {2 * (x * y + z * w), 1 - 2 * (x * x + z * z), 2 * (y * z - x * w)},
                            {2 * (x * z - y * w), 2 * (y * z + x * w), 1 - 2 * (x * x + y * y)}};
    Matrix m{};
    for (size_t i = 0; i < 3; ++i) {
        for (size_t j = 0; j < 3; ++j)
            m[i][j] = r[i][j] * s[j].get<double>();
        m[i][3] = t[i];
    }
    m[3][3] = 1;
    return m;
}

std::array<double, 3> ZUp(double x, double y, double z) {
    return {x, -z, y};
}

std::array<double, 3> Axis(const Matrix& m, size_t column, double sign) {
    const double length = std::hypot(m[0][column], m[1][column], m[2][column]);
    return ZUp(sign * m[0][column] / length, sign * m[1][column] / length,
               sign * m[2][column] / length);
}

/// Every node of the file by name, placed in the world.
std::map<std::string, Placed> ReadGltf(const std::filesystem::path& path) {
    std::ifstream file(path);
    const json gltf = json::parse(file);
    std::map<std::string, Placed> placed;
    const auto walk = [&](const auto& self, size_t index, const Matrix& parent) -> void {
        const json& node = gltf["nodes"][index];
        const Matrix m = Multiply(parent, LocalMatrix(node));
        Placed& entry = placed[node.value("name", "")];
        entry = {ZUp(m[0][3], m[1][3], m[2][3]), Axis(m, 2, -1), Axis(m, 1, 1)};
        if (node.contains("camera"))
            entry.verticalFov =
                gltf["cameras"][node["camera"].get<size_t>()]["perspective"]["yfov"];
        for (const json& child : node.value("children", json::array()))
            self(self, child, m);
    };
    Matrix identity{};
    for (size_t i = 0; i < 4; ++i)
        identity[i][i] = 1;
    for (const json& root : gltf["scenes"][gltf.value("scene", 0)]["nodes"])
        walk(walk, root, identity);
    return placed;
}

void ExpectNear(const json& found, const std::array<double, 3>& expected, const std::string& what) {
    for (size_t i = 0; i < 3; ++i)
        EXPECT_NEAR(found.at(i), expected[i], 1e-4) << what << " " << i;
}

TEST_F(SharedScenes, LightsStandWhereTheSourceSays) {
    const auto placed = ReadGltf(Path("light_orientation/LightOrientation.gltf"));
    const json document = PackageOf("light_orientation/LightOrientation.gltf").document;
    ASSERT_EQ(document.at("lights").size(), 4u);
    for (const json& light : document.at("lights")) {
        const std::string name = light.at("light_name");
        ASSERT_TRUE(placed.contains(name)) << name;
        const json& transform = light.at("transform");
        ExpectNear(transform.at("position"), placed.at(name).position, name);
        const json axis = transform.at("basis").at(2); // a light shines along its -z
        const double length =
            std::hypot(axis[0].get<double>(), axis[1].get<double>(), axis[2].get<double>());
        for (size_t i = 0; i < 3; ++i)
            EXPECT_NEAR(-axis[i].get<double>() / length, placed.at(name).direction[i], 1e-4)
                << name;
    }
}

TEST_F(SharedScenes, CamerasLookWhereTheSourceSays) {
    const auto placed = ReadGltf(Path("cameras_and_lights/AnimatedMeshCameraLight.gltf"));
    const json document = PackageOf("cameras_and_lights/AnimatedMeshCameraLight.gltf").document;
    ASSERT_EQ(document.at("cameras").size(), 5u);
    const double aspect = GetCOREInterface()->GetRendImageAspect();
    for (const json& camera : document.at("cameras")) {
        const std::string name = camera.at("camera_name");
        ASSERT_TRUE(placed.contains(name)) << name;
        ExpectNear(camera.at("position"), placed.at(name).position, name);
        ExpectNear(camera.at("direction"), placed.at(name).direction, name);
        ExpectNear(camera.at("up"), placed.at(name).up, name);
        const double tangent = std::tan(placed.at(name).verticalFov / 2);
        EXPECT_GT(tangent, 0) << name;
        EXPECT_NEAR(camera.at("fov_horizontal"), 2 * std::atan(tangent * aspect), 1e-4);
    }
}

/// Parameters of the materials as the file has them, by material and internal name.
std::map<std::string, std::map<std::string, std::vector<float>>>
MaterialParams(const std::filesystem::path& path) {
    Assimp::Importer importer;
    const aiScene* const scene = importer.ReadFile(path.string(), 0);
    std::map<std::string, std::map<std::string, std::vector<float>>> materials;
    const std::string prefix = "$raw.3dsMax|Parameters|";
    for (unsigned m = 0; scene && m < scene->mNumMaterials; ++m) {
        const aiMaterial& material = *scene->mMaterials[m];
        for (unsigned p = 0; p < material.mNumProperties; ++p) {
            const aiMaterialProperty& property = *material.mProperties[p];
            const std::string key = property.mKey.C_Str();
            if (key.rfind(prefix, 0) != 0)
                continue;
            std::vector<float> values(4);
            unsigned count = 4;
            if (material.Get(property.mKey.C_Str(), 0, 0, values.data(), &count) !=
                aiReturn_SUCCESS)
                continue;
            values.resize(count);
            materials[material.GetName().C_Str()][key.substr(prefix.size())] = values;
        }
    }
    return materials;
}

TEST_F(SharedScenes, PhysicalMaterialsCarryTheirParameters) {
    const std::string file = "pbr_textures/PBR_Textures.FBX";
    const auto source = MaterialParams(Path(file));
    const std::vector<ParamRow>& rows = FindClass(L"Physical Material")->rows;
    std::map<std::string, json> nodes; // by material name, each in full once
    const json document = PackageOf(file).document;
    for (const json& object : document.at("objects"))
        if (object.at("material").at("node_tree").contains("node_id"))
            nodes[object.at("material").at("name")] = object.at("material").at("node_tree");
    ASSERT_EQ(rows.size(), 37u);
    EXPECT_EQ(nodes.size(), 6u);
    for (const auto& [name, node] : nodes) {
        ASSERT_TRUE(source.contains(name)) << name;
        EXPECT_EQ(node.at("type"), "Physical Material");
        int compared = 0;
        for (const ParamRow& row : rows) {
            const std::string key = WideToUtf8(row.key);
            ASSERT_TRUE(node.contains(key)) << name << " " << key;
            const auto param = source.at(name).find(WideToUtf8(row.param));
            if (param == source.at(name).end())
                continue; // the file's host was older than this parameter
            const json& value = node.at(key);
            ++compared;
            if (value.is_array()) {
                for (size_t i = 0; i < 3; ++i)
                    EXPECT_NEAR(value.at(i), param->second.at(i), 1e-5) << key;
            } else {
                const double number = value.is_boolean() ? value.get<bool>() : value.get<double>();
                EXPECT_NEAR(number, param->second.at(0), 1e-5 + 1e-6 * std::abs(number)) << key;
            }
        }
        EXPECT_GE(compared, 31) << name; // sheen and thin film came later
    }
}

TEST_F(SharedScenes, TheOthersHaveTheirObjects) {
    const struct {
        const char* file;
        int atLeast;
    } rows[] = {{"engine/2CylinderEngine.FBX", 30},
                {"instances/Instances.FBX", 0},
                {"missing_texture/RGBMultiplyMap.gltf", 1}};
    for (const auto& row : rows) {
        const Written written = PackageOf(row.file);
        EXPECT_GE(written.result.objectCount, row.atLeast) << row.file;
        for (const json& object : written.document.at("objects"))
            EXPECT_EQ(object.at("errors"), json::array()) << row.file;
    }
}

} // namespace
} // namespace brimwave::testing
