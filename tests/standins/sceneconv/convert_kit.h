// Conversions in folders of their own, and a view of the scene files that come of them.
#pragma once

#include "sceneconv/scene_json.h"
#include "sceneconv/warnings.h"
#include "tests/standins/temp_folder.h"

#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace sceneconv::testing {

using sceneconv::Json;
using standins::testing::TempFolder;

/// Axes and position, as rows.
using Rows = std::array<std::array<double, 3>, 4>;

/// A scene file as a reader of the format sees it.
class SceneView {
  public:
    explicit SceneView(Json scene);

    Json json;
    std::vector<std::string> warnings;

    /// The only node of that name; fails the test otherwise.
    [[nodiscard]] const Json& Node(const std::string& name) const;
    /// The object, material or map of that id, or behind a node of that name.
    [[nodiscard]] const Json& Object(const std::string& nodeName) const;
    [[nodiscard]] const Json& Material(const std::string& id) const;
    /// A parameter of a material, from its `params` or its `blocks`; null when it has none.
    [[nodiscard]] Json Param(const std::string& materialId, const std::string& name) const;
    [[nodiscard]] Rows World(const Json& node) const;
    [[nodiscard]] Rows WorldOf(const std::string& name) const { return World(Node(name)); }
    /// How many nodes have an object of that class.
    [[nodiscard]] int Count(const std::string& className) const;

  private:
    std::map<std::string, const Json*> byId_;
};

/// Converts and reads back. A conversion that fails fails the test.
[[nodiscard]] SceneView ConvertFile(const std::filesystem::path& input,
                                    const std::filesystem::path& output);
/// A file of that name with that text, alone in a folder.
[[nodiscard]] SceneView ConvertText(const std::string& name, const std::string& text);
/// The line that a conversion fails with; empty when it succeeds.
[[nodiscard]] std::string ErrorOf(const std::filesystem::path& input);

/// The folder of shared scenes, empty when this machine has none.
[[nodiscard]] std::filesystem::path SharedScenes();

/// Tests of them are skipped where there are none.
class SharedScenesFixture : public ::testing::Test {
  protected:
    void SetUp() override;
};

void ExpectNear(const std::array<double, 3>& got, const std::array<double, 3>& wanted,
                double tolerance, const std::string& what);

} // namespace sceneconv::testing
