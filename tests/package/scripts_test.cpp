// The scripts that a package is made with: what they answer, and the form in which they run.
#include "package/map_search.h"
#include "simhost/bindings/bindings.h"
#include "simhost/script/interpreter.h"
#include "tests/package/package_kit.h"
#include "tests/support/places.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace brimwave::testing {
namespace {

/// Keeps every script that the host is given while this lives.
class ScriptRecord {
  public:
    ScriptRecord() {
        simhost::script::ScriptObserver() = [this](std::wstring_view script) {
            scripts.emplace_back(script);
        };
    }
    ~ScriptRecord() { simhost::script::ScriptObserver() = nullptr; }
    ScriptRecord(const ScriptRecord&) = delete;
    ScriptRecord& operator=(const ScriptRecord&) = delete;

    std::vector<std::wstring> scripts;
};

void ExpectCompiles(const std::wstring& script) {
    simhost::script::Interpreter host;
    simhost::script::RegisterHost(host);
    const auto fault = host.Check(script);
    EXPECT_FALSE(fault) << ::testing::PrintToString(fault->Message()) << " in "
                        << ::testing::PrintToString(script);
}

/// A block that the host shows to its scripts alone.
json WithHiddenBlock(json entry, const std::vector<json>& params) {
    entry["replace_blocks"] = true;
    entry["blocks"] = {{{"name", "hidden"}, {"descriptor", false}, {"params", params}}};
    return entry;
}

json SceneWithMaps() {
    const json output = {{"params",
                          {{"Output_Amount", 0.5},
                           {"RGB_Level", 2},
                           {"Bump_Amount", -1},
                           {"Invert", true},
                           {"useRGBColorMap", true}}}};
    const json ramp = {
        {"params", {{"positions", {0, 100, 25}}, {"colors", {{0, 0, 0}, {1, 1, 1}, {1, 0.5, 0}}}}}};
    json scene = SceneOf({{"class", "Plain"},
                          {"blocks", json::array()},
                          {"slot_list",
                           {{{"name", "file"}, {"map", "file"}},
                            {{"name", "ramp"}, {"map", "ramp"}},
                            {{"name", "falloff"}, {"map", "falloff"}}}}});
    scene["maps"] = {
        {"file", {{"class", "Bitmap"}, {"file", "a.png"}, {"sub_objects", {{"output", output}}}}},
        {"ramp", {{"class", "Gradient Ramp"}, {"sub_objects", {{"gradient_ramp", ramp}}}}},
        {"falloff", WithHiddenBlock({{"class", "Falloff"}, {"name", "falloff"}},
                                    {Param("color1", "rgba", {1, 0.5, 0}), Param("type", "int", 2),
                                     Param("map1On", "bool", true), Param("IOR", "float", 1.5)})}};
    return scene;
}

TEST(Scripts, ReadWhatTheHostShowsToThemAlone) {
    const json maps = WritePackage(SceneWithMaps()).Node().at("children");
    const json& file = maps.at("file");
    EXPECT_EQ(file.at("output_amount"), 0.5);
    EXPECT_EQ(file.at("output_rgb_level"), 2);
    EXPECT_EQ(file.at("output_rgb_offset"), 0);
    EXPECT_EQ(file.at("output_bump_amount"), -1);
    EXPECT_EQ(file.at("output_invert"), true);
    EXPECT_EQ(file.at("output_clamp"), false);
    EXPECT_EQ(file.at("output_alpha_from_rgb"), false);
    EXPECT_EQ(file.at("output_use_color_map"), false);
    EXPECT_EQ(file.at("output_use_rgb_color_map"), true);
    const json flags = {{{"position", 0}, {"color", {0, 0, 0}}},
                        {{"position", 1}, {"color", {1, 1, 1}}},
                        {{"position", 0.25}, {"color", {1, 0.5, 0}}}};
    EXPECT_EQ(maps.at("ramp").at("flags"), flags);
    const json& falloff = maps.at("falloff");
    EXPECT_EQ(falloff.at("color1"), json({1, 0.5, 0}));
    EXPECT_EQ(falloff.at("falloff_type"), 2);
    EXPECT_EQ(falloff.at("map1_enabled"), true);
    EXPECT_EQ(falloff.at("ior"), 1.5);
    EXPECT_FALSE(falloff.contains("color2"));
}

class Nameless final : public Texmap {
  public:
    Class_ID ClassID() override { return Class_ID(1, 2); }
    void GetClassName(MSTR& s, bool /*localized*/) const override { s = L"Nameless"; }
    MSTR GetName() override { return L"a \"name\" \\"; }
    void SetName(const MSTR&) override {}
};

/// The longest part of a script file between its placeholders, which runs as it stands.
std::wstring LongestPart(std::wstring text) {
    std::wstring longest;
    for (size_t open = 0; open != std::wstring::npos;) {
        open = text.find(L"{{");
        if (std::wstring part = text.substr(0, open); part.size() > longest.size())
            longest = std::move(part);
        if (open != std::wstring::npos)
            text.erase(0, text.find(L"}}", open) + 2);
    }
    return longest;
}

TEST(Scripts, AllCompileInTheFormInWhichTheyRun) {
    ScriptRecord record;
    static_cast<void>(WritePackage(SceneWithMaps()));
    Nameless map; // a script that fails is tried again with the search by name
    for (const MapSearch search :
         {MapSearch::Output, MapSearch::GradientRamp, MapSearch::Properties})
        EXPECT_FALSE(RunOnMap(map, search, L"throw \"x\""));
    for (const std::wstring& script : record.scripts)
        ExpectCompiles(script);

    for (const char* const folder : {"package/scripts", "pipeline/scripts"})
        for (const auto& entry : std::filesystem::directory_iterator(SourcePath(folder))) {
            std::ifstream file(entry.path());
            std::stringstream text;
            text << file.rdbuf();
            const std::wstring part = LongestPart(Wide(text.str()));
            const bool ran = std::any_of(
                record.scripts.begin(), record.scripts.end(),
                [&](const std::wstring& script) { return script.find(part) != script.npos; });
            if (!ran && std::string_view(folder) == "pipeline/scripts")
                ExpectCompiles(Wide(text.str()));
            else
                EXPECT_TRUE(ran) << entry.path() << " is never run";
        }
}

} // namespace
} // namespace brimwave::testing
