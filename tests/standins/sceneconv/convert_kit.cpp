#include "tests/standins/sceneconv/convert_kit.h"

#include "sceneconv/write_scene.h"

#include <cstdlib>
#include <fstream>

namespace sceneconv::testing {

namespace fs = std::filesystem;

namespace {

const Json& None() {
    static const Json none;
    return none;
}

Rows RowsOf(const Json& transform) {
    Rows rows{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {0, 0, 0}}};
    if (transform.contains("matrix"))
        rows = transform["matrix"].get<Rows>();
    return rows;
}

/// Row vectors: a point goes through `inner` first.
Rows Multiply(const Rows& inner, const Rows& outer) {
    Rows product{};
    for (std::size_t r = 0; r < 4; ++r) {
        for (std::size_t c = 0; c < 3; ++c) {
            product[r][c] = r == 3 ? outer[3][c] : 0;
            for (std::size_t k = 0; k < 3; ++k)
                product[r][c] += inner[r][k] * outer[k][c];
        }
    }
    return product;
}

} // namespace

SceneView::SceneView(Json scene) : json(std::move(scene)) {
    for (const Json& node : json["nodes"])
        byId_[node.contains("id") ? node["id"] : node["name"]] = &node;
}

const Json& SceneView::Node(const std::string& name) const {
    const Json* found = nullptr;
    for (const Json& node : json["nodes"]) {
        if (node["name"] == name) {
            EXPECT_EQ(found, nullptr) << "two nodes are called " << name;
            found = &node;
        }
    }
    EXPECT_NE(found, nullptr) << "no node is called " << name;
    return found ? *found : None();
}

const Json& SceneView::Object(const std::string& nodeName) const {
    const Json& node = Node(nodeName);
    const Json& object = node.contains("object") ? node["object"] : None();
    return object.is_string() ? json["objects"][object.get<std::string>()] : object;
}

const Json& SceneView::Material(const std::string& id) const {
    const bool known = json["materials"].contains(id);
    EXPECT_TRUE(known) << "no material " << id;
    return known ? json["materials"][id] : None();
}

Json SceneView::Param(const std::string& materialId, const std::string& name) const {
    const Json& material = Material(materialId);
    if (material.contains("params") && material["params"].contains(name))
        return material["params"][name];
    if (material.contains("blocks")) {
        for (const Json& block : material["blocks"]) {
            for (const Json& param : block["params"]) {
                if (param["name"] == name)
                    return param["value"];
            }
        }
    }
    return None();
}

Rows SceneView::World(const Json& node) const {
    Rows rows = RowsOf(node["transform"]);
    const Json* at = &node;
    while (at->contains("parent")) {
        at = byId_.at((*at)["parent"].get<std::string>());
        rows = Multiply(rows, RowsOf((*at)["transform"]));
    }
    return rows;
}

int SceneView::Count(const std::string& className) const {
    int count = 0;
    for (const Json& node : json["nodes"]) {
        const Json& object = node.contains("object") ? node["object"] : None();
        const Json& held = object.is_string() ? json["objects"][object.get<std::string>()] : object;
        count += held.is_object() && held["class"] == className ? 1 : 0;
    }
    return count;
}

SceneView ConvertFile(const fs::path& input, const fs::path& output) {
    sceneconv::Warnings warnings;
    try {
        sceneconv::Convert(input, output, warnings);
    } catch (const std::exception& error) {
        ADD_FAILURE() << error.what();
        return SceneView(Json{{"nodes", Json::array()}, {"materials", Json::object()}});
    }
    std::ifstream file(output);
    SceneView view(Json::parse(file));
    view.warnings = warnings.Lines();
    return view;
}

SceneView ConvertText(const std::string& name, const std::string& text) {
    const TempFolder folder;
    return ConvertFile(folder.Write(name, text), folder.Path() / "out.json");
}

std::string ErrorOf(const fs::path& input) {
    const TempFolder folder;
    sceneconv::Warnings warnings;
    try {
        sceneconv::Convert(input, folder.Path() / "out.json", warnings);
    } catch (const std::exception& error) {
        EXPECT_TRUE(fs::is_empty(folder.Path())) << "a failed conversion left a file";
        return error.what();
    }
    return {};
}

fs::path SharedScenes() {
    const char* shared = std::getenv("BRIMWAVE_SHARED");
    return shared ? fs::path(shared) / "scenes" : fs::path();
}

void SharedScenesFixture::SetUp() {
    if (SharedScenes().empty())
        GTEST_SKIP() << "BRIMWAVE_SHARED is not set: no shared scenes";
}

void ExpectNear(const std::array<double, 3>& got, const std::array<double, 3>& wanted,
                double tolerance, const std::string& what) {
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_NEAR(got[i], wanted[i], tolerance) << what << ", component " << i;
}

} // namespace sceneconv::testing
