#include "tests/package/package_kit.h"

#include "simhost/files/scene_file.h"
#include "tests/support/places.h"
#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <sstream>
#include <stdexcept>
#include <unordered_set>

namespace brimwave::testing {
namespace {

/// Keeps a copy of every package that the tests write (of equal ones one), and at the end lets a
/// validator that is none of ours check them all against the schema.
class PackageCheck : public ::testing::Environment {
  public:
    void Keep(std::string_view text) {
        constexpr size_t tooDeepForTheValidator = 4u << 20;
        const bool isNew = kept_.insert(std::hash<std::string_view>{}(text)).second;
        if (isNew && text.size() < tooDeepForTheValidator)
            folder_.Write(std::to_wstring(++count_) + L".json", text);
    }
    void TearDown() override {
        if (count_ == 0)
            return;
        const std::string command = "python3 " + SourcePath("tests/package/validate_packages.py") +
                                    " " + SourcePath("docs/package.schema.json") + " " +
                                    folder_.NativePath().string();
        EXPECT_EQ(std::system(command.c_str()), 0) << "packages that the schema refuses";
    }

  private:
    TempFolder folder_;
    std::unordered_set<size_t> kept_;
    int count_ = 0;
};

// Owned by the test framework.
PackageCheck* const packageCheck =
    static_cast<PackageCheck*>(::testing::AddGlobalTestEnvironment(new PackageCheck));

} // namespace

json EmptyScene() {
    return {{"format", "simhost-scene"},
            {"version", 1},
            {"units", {{"type", "meters"}}},
            {"nodes", json::array()}};
}

json Box(const std::string& name, const json& material) {
    return {{"name", name}, {"object", {{"class", "Box"}}}, {"material", material}};
}

json SceneOf(const json& material) {
    json scene = EmptyScene();
    scene["nodes"].push_back(Box("Box001", material));
    return scene;
}

json Param(const json& name, const std::string& type, const json& value) {
    return {{"name", name}, {"type", type}, {"value", value}};
}

json ClassWith(const std::string& className, const std::vector<json>& params) {
    return {{"class", className},
            {"name", "subject"},
            {"replace_blocks", true},
            {"blocks", {{{"name", "Parameters"}, {"params", params}}}}};
}

void OpenScene(const json& scene) {
    const auto loaded = simhost::LoadSceneText(scene.dump());
    if (!loaded)
        throw std::runtime_error(loaded.error);
}

const json& Written::Object(const std::string& name) const {
    for (const json& object : document.at("objects"))
        if (object.at("object_name") == name)
            return object;
    throw std::runtime_error("no object " + name);
}

const json& Written::Node() const {
    return document.at("objects").at(0).at("material").at("node_tree");
}

bool Written::Logged(std::string_view line) const {
    return std::find(log.begin(), log.end(), line) != log.end();
}

Written WritePackage(const json& scene) {
    OpenScene(scene);
    return WriteOpenScene();
}

Written WriteOpenScene() {
    const TempFolder folder;
    Written written;
    written.result = WriteScenePackage(folder.Path(L"1.json"));
    EXPECT_TRUE(written.result.success);
    written.text = TempFolder::Read(folder.Path(L"1.json"));
    written.document = json::parse(written.text);
    packageCheck->Keep(written.text);
    std::istringstream lines(TempFolder::Read(folder.Path(L"1.log")));
    for (std::string line; std::getline(lines, line);)
        written.log.push_back(line);
    EXPECT_EQ(written.result.logLineCount, static_cast<int>(written.log.size()));
    EXPECT_EQ(written.result.objectCount, written.document.at("object_count"));
    EXPECT_EQ(written.document.at("objects").size(), written.document.at("object_count"));
    return written;
}

Members NodeMembers(const std::string& text, const std::string& nodeName) {
    std::istringstream lines(text);
    std::string line, indent;
    const std::string nameMember = "\"name\": \"" + nodeName + "\"";
    std::string previous, beforeThat; // lines, without their indentation
    Members members;
    bool inside = false;
    while (std::getline(lines, line)) {
        const std::string trimmed = line.substr(std::min(line.find_first_not_of(' '), line.size()));
        if (inside) {
            const bool member = line.rfind(indent + "\"", 0) == 0;
            if (!member || trimmed.rfind("\"children\"", 0) == 0)
                break;
            const size_t colon = trimmed.find("\":");
            std::string value = trimmed.substr(colon + 2);
            if (!value.empty() && value.back() == ',')
                value.pop_back();
            members.emplace_back(trimmed.substr(1, colon - 1), value);
        } else if (trimmed.rfind(nameMember, 0) == 0 && previous.rfind("\"type\"", 0) == 0 &&
                   beforeThat.rfind("\"node_id\"", 0) == 0) {
            inside = true;
            indent = line.substr(0, line.size() - trimmed.size());
        }
        beforeThat = std::exchange(previous, trimmed);
    }
    return members;
}

std::string ToText(const Members& members) {
    std::string text;
    for (const auto& [key, value] : members)
        text += key + "=" + value + "\n";
    return text;
}

std::wstring Wide(std::string_view ascii) {
    return {ascii.begin(), ascii.end()};
}

} // namespace brimwave::testing
