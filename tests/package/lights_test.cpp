// Lights: kinds, places, instances and IES files.
#include "host/text.h"
#include "tests/package/package_kit.h"
#include "tests/support/temp_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace brimwave::testing {
namespace {

using ::testing::HasSubstr;

json Light(const std::string& name, const std::string& className, const json& params) {
    return {{"name", name}, {"object", {{"class", className}, {"params", params}}}};
}

json SceneOfNodes(const std::vector<json>& nodes) {
    json scene = EmptyScene();
    scene["nodes"] = nodes;
    return scene;
}

TEST(Lights, OnlyKnownKinds) {
    json unknown = Light("unknown", "CoronaLight2", json::object());
    unknown["object"] = {
        {"class", "CoronaLight2"}, {"super_class", "light"}, {"blocks", json::array()}};
    const Written none =
        WritePackage(SceneOfNodes({unknown, Light("old", "Omni", json::object()),
                                   Light("no web", "Free Light", json::object())}));
    EXPECT_FALSE(none.document.contains("lights"));
    for (const std::string& line : none.log)
        EXPECT_EQ(line.find("Lights exported"), std::string::npos);

    const Written all = WritePackage(SceneOfNodes(
        {Light("1", "CoronaLight", json::object()), Light("2", "CoronaSun", json::object()),
         Light("3", "VRayLight", json::object()), Light("4", "VRaySun", json::object()),
         Light("5", "VRayIES", json::object()),
         Light("6", "Free Light", {{"webFile", "none.ies"}})}));
    std::vector<std::string> types;
    for (const json& light : all.document.at("lights"))
        types.push_back(light.at("light_type"));
    EXPECT_EQ(types, (std::vector<std::string>{"CoronaLight", "CoronaSun", "VRayLight", "VRaySun",
                                               "VRayIES", "PhotometricLight"}));
    EXPECT_TRUE(all.Logged("Lights exported: 6 (instance groups: 6)"));
}

TEST(Lights, EntryToTheLetter) {
    json scene = SceneOfNodes({Light("a \"b\"", "VRaySun", json::object())});
    scene["nodes"][0]["object"] = ClassWith("VRaySun", {Param("enabled", "bool", true)});
    scene["nodes"][0]["object"]["super_class"] = "light";
    scene["nodes"][0]["object"].erase("name");
    scene["nodes"][0]["transform"] = {{"position", {1, 2, 3}}};
    EXPECT_THAT(
        WritePackage(scene).text,
        HasSubstr("  ],\n"
                  "  \"lights\": [\n"
                  "  {\n"
                  "    \"light_name\": \"a \\\"b\\\"\",\n"
                  "    \"light_type\": \"VRaySun\",\n"
                  "    \"on\":true,\n"
                  "\"transform\":{\"position\":[1,2,3],\"quat\":[1,0,0,0],\"scale\":[1,1,1],"
                  "\"basis\":[[1,0,0],[0,1,0],[0,0,1]]},\n"
                  "    \"instance_group\": 0\n"
                  "  }\n"
                  "  ],\n"
                  "  \"environment\": {\n"));
}

TEST(Lights, InstancesShareAGroup) {
    json scene = SceneOfNodes({Light("a", "CoronaSun", json::object()),
                               Light("b", "CoronaLight", json::object()),
                               Light("c", "CoronaLight", json::object())});
    scene["objects"] = {{"lamp", {{"class", "CoronaLight"}}}};
    scene["nodes"][1]["object"] = "lamp";
    scene["nodes"][2]["object"] = "lamp";
    const Written written = WritePackage(scene);
    std::vector<int> groups;
    for (const json& light : written.document.at("lights"))
        groups.push_back(light.at("instance_group"));
    EXPECT_EQ(groups, (std::vector<int>{0, 1, 1}));
    EXPECT_TRUE(written.Logged("Lights exported: 3 (instance groups: 2)"));
    EXPECT_TRUE(written.Logged("  CoronaLight exported: c (group 1)"));
}

TEST(Lights, Targets) {
    const struct {
        bool targeted, hasTarget;
    } rows[] = {{true, true}, {true, false}, {false, true}};
    for (const auto& row : rows) {
        json scene = SceneOfNodes({Light("lamp", "CoronaLight", {{"targeted", row.targeted}}),
                                   {{"name", "aim"}, {"transform", {{"position", {0, 0, 400}}}}}});
        scene["units"] = {{"type", "centimeters"}};
        if (row.hasTarget)
            scene["nodes"][0]["target"] = "aim";
        const json light = WritePackage(scene).document.at("lights").at(0);
        ASSERT_EQ(light.contains("target_transform"), row.targeted && row.hasTarget);
        if (light.contains("target_transform")) {
            EXPECT_EQ(light.at("target_transform"), json({{"position", {0, 0, 4}}}));
        }
    }
}

TEST(Lights, HostsWithoutAUnitAreTakenForInches) {
    for (const double unit : {0.0, -1.0}) {
        json scene = SceneOfNodes({Light("lamp", "CoronaLight", {{"width", 100}})});
        scene["unit_scale_override"] = unit;
        scene["nodes"][0]["transform"] = {{"position", {100, 0, 0}}};
        const json light = WritePackage(scene).document.at("lights").at(0);
        EXPECT_EQ(light.at("transform").at("position"), json({2.54, 0, 0}));
        EXPECT_EQ(light.at("width"), 2.54);
    }
}

/// Row i of the basis as the decomposition tells it: scale times the rotated axis.
TEST(Lights, TransformsOfEveryKind) {
    const struct {
        json rows;
        double determinant;
    } cases[] = {
        {{{2, 0, 0}, {0, 3, 0}, {0, 0, 4}, {10, 20, 30}}, 24},
        {{{0, 2, 0}, {-3, 0, 0}, {0, 0, 4}, {0, 0, 0}}, 24},
        {{{1, 0, 0}, {0, 1, 0}, {0, 0, -1}, {0, 0, 0}}, -1}, // mirrored
        {{{0.6, 0.8, 0}, {-0.8, 0.6, 0}, {0, 0, 1}, {1, 1, 1}}, 1},
    };
    for (const auto& test : cases) {
        json scene = SceneOfNodes({Light("lamp", "CoronaLight", json::object())});
        scene["nodes"][0]["transform"] = {{"matrix", test.rows}};
        const json transform = WritePackage(scene).document.at("lights").at(0).at("transform");
        const json scale = transform.at("scale");
        const double product =
            scale[0].get<double>() * scale[1].get<double>() * scale[2].get<double>();
        EXPECT_NEAR(product, test.determinant, 1e-4);
        for (size_t i = 0; i < 3; ++i)
            for (size_t j = 0; j < 3; ++j)
                EXPECT_NEAR(transform.at("basis")[i][j], test.rows[i][j], 1e-5);
        for (size_t j = 0; j < 3; ++j)
            EXPECT_NEAR(transform.at("position")[j], test.rows[3][j], 1e-4);
        double length = 0;
        for (const json& part : transform.at("quat"))
            length += part.get<double>() * part.get<double>();
        EXPECT_NEAR(length, 1, 1e-5);
    }
}

std::string ReadFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// UTF-8 of a text in code page 1252.
std::string FromCodePage(const std::string& bytes) {
    // From 0x80; what the page does not define stays the control character that it is.
    constexpr std::wstring_view letters =
        L"\x20ac\x81\x201a\x192\x201e\x2026\x2020\x2021\x2c6\x2030\x160\x2039\x152\x8d\x17d\x8f"
        L"\x90\x2018\x2019\x201c\x201d\x2022\x2013\x2014\x2dc\x2122\x161\x203a\x153\x9d\x17e\x178";
    std::wstring text;
    for (const char byte : bytes) {
        const auto code = static_cast<unsigned char>(byte);
        text += code >= 0x80 && code < 0xa0 ? letters[code - 0x80u] : static_cast<wchar_t>(code);
    }
    return WideToUtf8(text);
}

TEST(Ies, EmbeddedAsTextOfTheSystemCodePage) {
    TempFolder folder;
    const std::string all = [] {
        std::string bytes;
        for (int i = 0; i < 128; ++i)
            bytes += static_cast<char>(i);
        return bytes;
    }();
    const struct {
        std::string bytes, data, characters;
    } rows[] = {
        {"IESNA:LM-63\r\nTILT=NONE\n", "IESNA:LM-63\r\nTILT=NONE\n", "23"},
        {"45\xb0", "45\xc2\xb0", "3"},
        {"\xef\xbb\xbfIES", "\xc3\xaf\xc2\xbb\xc2\xbfIES", "6"},
        {all, all, "128"},
        {std::string(200000, '7'), std::string(200000, '7'), "200000"}, // one line, several pieces
    };
    for (const auto& row : rows) {
        const std::wstring path = folder.Write(L"lamp.ies", row.bytes);
        const std::string stored(path.begin(), path.end());
        const Written written =
            WritePackage(SceneOfNodes({Light("lamp", "CoronaLight", {{"iesFile", stored}})}));
        const json light = written.document.at("lights").at(0);
        EXPECT_EQ(light.at("ies_file"), stored);
        EXPECT_EQ(light.at("ies_data"), row.data);
        EXPECT_FALSE(light.contains("ies_error"));
        EXPECT_TRUE(written.Logged("  IES embedded for lamp: " + stored + " (" + row.characters +
                                   " chars)"));
    }
}

TEST(Ies, WhatCannotBeEmbedded) {
    TempFolder folder;
    folder.Write(L"search\\found.ies", "text");
    folder.Write(L"empty.ies", "");
    const std::string base = folder.NativePath().string();
    const struct {
        std::string stored, error, line;
    } rows[] = {
        {"D:\\none.ies", "file not found", "  IES NOT FOUND for lamp: D:\\none.ies"},
        {base + "/empty.ies", "file unreadable",
         "  IES UNREADABLE for lamp: " + base + "/empty.ies"},
        {base, "file unreadable", "  IES UNREADABLE for lamp: " + base},
        {"D:\\found.ies", "", ""}, // only through the host's search folders
        {"", "", ""},
    };
    for (const auto& row : rows) {
        json scene = SceneOfNodes({Light("lamp", "VRayIES", {{"ies_file", row.stored}})});
        scene["map_paths"] = {base + "/search"};
        const Written written = WritePackage(scene);
        const json light = written.document.at("lights").at(0);
        EXPECT_EQ(light.value("ies_file", ""), row.stored);
        EXPECT_EQ(light.value("ies_error", ""), row.error) << row.stored;
        EXPECT_EQ(light.contains("ies_data"), row.stored == "D:\\found.ies");
        if (!row.line.empty()) {
            EXPECT_TRUE(written.Logged(row.line)) << row.line;
        }
    }
}

TEST(Ies, SharedFilesAreReadWhole) {
    const char* const shared = std::getenv("BRIMWAVE_SHARED");
    if (!shared)
        GTEST_SKIP() << "BRIMWAVE_SHARED is not set: no shared IES files";
    for (const auto& entry : std::filesystem::directory_iterator(std::string(shared) + "/ies")) {
        if (entry.path().extension() != ".ies")
            continue;
        const auto size = std::filesystem::file_size(entry);
        const Written written = WritePackage(
            SceneOfNodes({Light("lamp", "Free Light", {{"webFile", entry.path().string()}})}));
        const json light = written.document.at("lights").at(0);
        ASSERT_EQ(light.contains("ies_data"), size > 0) << entry.path();
        if (size == 0)
            continue;
        EXPECT_EQ(light.at("ies_data"), FromCodePage(ReadFile(entry.path()))) << entry.path();
        EXPECT_TRUE(written.Logged("  IES embedded for lamp: " + entry.path().string() + " (" +
                                   std::to_string(size) + " chars)"));
    }
}

TEST(Ies, HundredMegabytes) {
    TempFolder folder;
    const std::string line = "  12.5 \"13\" 14.25 15\r\n";
    constexpr size_t lines = 100'000'000 / 24 + 1;
    {
        std::ofstream file(folder.NativePath() / "big.ies", std::ios::binary);
        for (size_t i = 0; i < lines; ++i)
            file << line;
    }
    const std::string stored = (folder.NativePath() / "big.ies").string();
    OpenScene(SceneOfNodes({Light("lamp", "CoronaLight", {{"iesFile", stored}})}));
    ASSERT_TRUE(WriteScenePackage(folder.Path(L"1.json")).success);
    const std::string text = TempFolder::Read(folder.Path(L"1.json"));
    const std::string escaped = "  12.5 \\\"13\\\" 14.25 15\\r\\n";
    const std::string head = "\"ies_data\":\"";
    const size_t start = text.find(head) + head.size();
    ASSERT_LT(start, text.size());
    for (size_t i = 0; i < lines; ++i)
        ASSERT_EQ(text.compare(start + i * escaped.size(), escaped.size(), escaped), 0) << i;
    EXPECT_EQ(text[start + lines * escaped.size()], '"');
}

} // namespace
} // namespace brimwave::testing
