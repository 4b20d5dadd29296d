#pragma once
// Scenes from scene-file text, the package that they give, and ways to look into it.
#include "package/scene_package.h"

#include <nlohmann/json.hpp>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace brimwave::testing {

using nlohmann::json;

/// A scene file without nodes, in metres, so that lengths stay as they are.
[[nodiscard]] json EmptyScene();
/// A node with a box; `material` is an id, an inline entry or null.
[[nodiscard]] json Box(const std::string& name, const json& material);
/// A scene of one box with that material.
[[nodiscard]] json SceneOf(const json& material);

/// An entry of a class that no catalogue knows, or whose own blocks are dropped: one block with
/// these parameters (each {"name", "type", "value"}).
[[nodiscard]] json ClassWith(const std::string& className, const std::vector<json>& params);
[[nodiscard]] json Param(const json& name, const std::string& type, const json& value);

/// What one export left.
struct Written {
    PackageResult result;
    std::string text; // of the package
    json document;    // the same, parsed; of keys that occur twice the last counts
    std::vector<std::string> log;

    [[nodiscard]] const json& Object(const std::string& name) const;
    /// The material's node of the only object.
    [[nodiscard]] const json& Node() const;
    [[nodiscard]] bool Logged(std::string_view line) const;
};

/// Opens the scene and writes its package. Fails the test when the scene is refused or the
/// package is no valid JSON.
[[nodiscard]] Written WritePackage(const json& scene);
/// The package of the scene that is open.
[[nodiscard]] Written WriteOpenScene();
/// Opens a scene; fails the test when it is refused.
void OpenScene(const json& scene);

/// Member lines of the node of that name, as written: key and value text, from after its name up
/// to its children. Doubled keys are all there.
using Members = std::vector<std::pair<std::string, std::string>>;
[[nodiscard]] Members NodeMembers(const std::string& text, const std::string& nodeName);
[[nodiscard]] std::string ToText(const Members& members);

/// Wide text of a plain ASCII text.
[[nodiscard]] std::wstring Wide(std::string_view ascii);

} // namespace brimwave::testing
