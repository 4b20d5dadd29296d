// The document around the entries: head, objects, names, material ids, file and log.
#include "tests/package/package_kit.h"
#include "tests/support/temp_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <max.h>

namespace brimwave::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;

std::vector<std::string> ObjectNames(const Written& written) {
    std::vector<std::string> names;
    for (const json& object : written.document.at("objects"))
        names.push_back(object.at("object_name"));
    return names;
}

TEST(Document, EmptySceneToTheLetter) {
    json scene = EmptyScene();
    scene["units"] = {{"type", "inches"}};
    const Written written = WritePackage(scene);
    EXPECT_EQ(written.text, "{\n"
                            "  \"exporter\": \"Corona Material Exporter (C++)\",\n"
                            "  \"version\": \"1.0\",\n"
                            "  \"build_marker\": \"v3.41-targetradio\",\n"
                            "  \"scene_color_mode\": \"unknown\",\n"
                            "  \"scene_rendering_space\": \"\",\n"
                            "  \"scene_display_gamma\": 2.2,\n"
                            "  \"scene_unit_scale\": 0.0254,\n"
                            "  \"object_count\": 0,\n"
                            "  \"objects\": [\n"
                            "  ],\n"
                            "  \"environment\": {\n"
                            "    \"background_color\": [0,0,0],\n"
                            "    \"use_map\": false,\n"
                            "    \"map\": null\n"
                            "  }\n"
                            "}");
    EXPECT_THAT(written.log,
                ElementsAre("Geometry objects with materials: 0", "Cameras exported: 0",
                            "Environment: colour only (no map)"));
}

TEST(Document, EntryToTheLetter) {
    json scene = SceneOf(ClassWith("Plain", {}));
    scene["nodes"][0]["name"] = "a \"quoted\" name";
    const Written written = WritePackage(scene);
    EXPECT_THAT(written.text, HasSubstr("  \"objects\": [\n"
                                        "  {\n"
                                        "    \"object_name\": \"a \\\"quoted\\\" name\",\n"
                                        "    \"object_class\": \"Box\",\n"
                                        "    \"layer\": \"\",\n"
                                        "    \"material_ids\": [1,2,3,4,5,6],\n"
                                        "    \"displacement_mod\": null,\n"
                                        "    \"errors\": [],\n"
                                        "    \"material\": {\n"
                                        "      \"type\": \"Plain\",\n"
                                        "      \"name\": \"subject\",\n"
                                        "      \"node_tree\": {\n"
                                        "    \"node_id\": 1,\n"
                                        "    \"type\": \"Plain\",\n"
                                        "    \"name\": \"subject\"\n"
                                        "    }\n"
                                        "    }\n"
                                        "  }\n"
                                        "  ],\n"));
}

TEST(Document, UnitScale) {
    const struct {
        json unit;
        double override;
        double scale;
    } rows[] = {
        {{{"type", "centimeters"}}, 1, 0.01},
        {{{"type", "meters"}, {"scale", 2}}, 1, 2},
        {{{"type", "meters"}}, 0, 0.0254},
        {{{"type", "meters"}}, -1, 0.0254},
    };
    for (const auto& row : rows) {
        json scene = EmptyScene();
        scene["units"] = row.unit;
        if (row.override <= 0)
            scene["unit_scale_override"] = row.override;
        EXPECT_DOUBLE_EQ(WritePackage(scene).document.at("scene_unit_scale"), row.scale);
    }
}

TEST(Objects, GeometryWithMaterialChildrenFirst) {
    json scene = EmptyScene();
    const json material = ClassWith("Plain", {});
    json parent = Box("parent", material);
    parent["children"] = {Box("child 1", material), Box("no material", nullptr),
                          Box("child 2", material)};
    parent["children"][2]["children"] = json::array({Box("grandchild", material)});
    scene["nodes"] = {
        parent,
        Box("last", material),
        {{"name", "shape"}, {"object", {{"class", "Circle"}}}, {"material", material}},
        {{"name", "empty"}, {"material", material}}};
    const Written written = WritePackage(scene);
    EXPECT_THAT(ObjectNames(written),
                ElementsAre("child 1", "grandchild", "child 2", "parent", "last"));
    EXPECT_TRUE(written.Logged("Geometry objects with materials: 5"));
}

TEST(Objects, RepeatedNamesBecomeUnique) {
    const struct {
        std::vector<std::string> names, expected;
        int renamed;
    } rows[] = {
        {{"Box001", "Box001", "Box001"}, {"Box001", "Box001_001", "Box001_002"}, 2},
        {{"Box001_001", "Box001", "Box001"}, {"Box001_001", "Box001", "Box001_002"}, 1},
        {{"A", "A", "A_001", "A"}, {"A", "A_001", "A_001_001", "A_002"}, 3},
        {{"a", "A", ""}, {"a", "A", ""}, 0},
        {{"", ""}, {"", "_001"}, 1},
    };
    for (const auto& row : rows) {
        json scene = EmptyScene();
        for (const std::string& name : row.names)
            scene["nodes"].push_back(Box(name, ClassWith("Plain", {})));
        const Written written = WritePackage(scene);
        EXPECT_EQ(ObjectNames(written), row.expected);
        const std::string total = "Total renamed: " + std::to_string(row.renamed) +
                                  " object(s). Check scene before saving!";
        EXPECT_EQ(written.Logged(total), row.renamed > 0);
    }
}

TEST(Objects, RenamingIsToldAndStays) {
    json scene = EmptyScene();
    for (int i = 0; i < 1002; ++i)
        scene["nodes"].push_back(Box("Box", "plain"));
    scene["materials"] = {{"plain", ClassWith("Plain", {})}};
    const Written written = WritePackage(scene);
    EXPECT_TRUE(written.Logged("WARNING: Duplicate name - renamed 'Box' to 'Box_007' in scene"));
    EXPECT_EQ(ObjectNames(written).back(), "Box_1001");
    EXPECT_EQ(ObjectNames(written)[999], "Box_999");
}

TEST(Objects, MaterialIds) {
    const json vertices = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
    const auto node = [&](const json& faces, const json& ids) {
        json mesh = {{"positions", vertices}, {"triangles", faces}};
        if (!ids.is_null())
            mesh["material_ids"] = ids;
        json scene = SceneOf(ClassWith("Plain", {}));
        scene["nodes"][0]["object"] = {{"class", "Editable Mesh"}, {"mesh", mesh}};
        return scene;
    };
    const json three = {{0, 1, 2}, {0, 1, 2}, {0, 1, 2}};
    const auto idsOf = [](const json& scene) {
        return WritePackage(scene).document.at("objects").at(0).at("material_ids");
    };
    EXPECT_EQ(idsOf(node(three, {2, 0, 2})), json({1, 3}));
    EXPECT_EQ(idsOf(node(three, {65535, 7, 7})), json({8, 65536}));
    EXPECT_EQ(idsOf(node(json::array(), nullptr)), json::array());
    json unconverted = SceneOf(ClassWith("Plain", {}));
    unconverted["nodes"][0]["object"]["converts"] = false;
    EXPECT_EQ(idsOf(unconverted), json::array());
}

TEST(File, FolderThatIsNotThereIsAFailure) {
    OpenScene(EmptyScene());
    const TempFolder folder;
    const PackageResult result = WriteScenePackage(folder.Path(L"missing\\1.json"));
    EXPECT_FALSE(result.success);
    EXPECT_FALSE(TempFolder::Exists(folder.Path(L"missing\\1.log")));
}

TEST(File, LogStandsBesideAnyName) {
    OpenScene(EmptyScene());
    const TempFolder folder;
    ASSERT_TRUE(WriteScenePackage(folder.Path(L"plain")).success);
    EXPECT_THAT(TempFolder::Read(folder.Path(L"plain.log")),
                StartsWith("Geometry objects with materials: 0\n"));
}

TEST(Document, TextsOfEveryKindStayValid) {
    const std::string texts[] = {"", "a \"quoted\\ name", "line\r\nfeed\ttab \x01\x1f\x7f",
                                 "\xc3\xa9\xe2\x82\xac \xf0\x9f\x98\x80",
                                 "</script> \xef\xbb\xbf \xef\xbf\xbf"};
    for (const std::string& text : texts) {
        json material = ClassWith(text.empty() ? "Plain" : text, {});
        material["name"] = text;
        material["slot_list"] = {{{"name", text}, {"map", "map"}}};
        json scene = EmptyScene();
        scene["maps"] = {{"map", ClassWith("CoronaBitmap", {Param("filename", "string", text)})}};
        scene["maps"]["map"]["name"] = text;
        scene["nodes"].push_back(Box(text, material));
        const json object = WritePackage(scene).document.at("objects").at(0);
        EXPECT_EQ(object.at("object_name"), text);
        EXPECT_EQ(object.at("material").at("type"), text.empty() ? "Plain" : text);
        EXPECT_EQ(object.at("material").at("name"), text);
        const json& children = object.at("material").at("node_tree").at("children");
        const json& map = children.at(text.empty() ? "slot_0" : text);
        EXPECT_EQ(map.at("name"), text);
        EXPECT_EQ(map.at("filepath"), text.substr(text.find_last_of("\\/") + 1));
    }
}

TEST(Document, HalvesOfPairsAreReplaced) {
    OpenScene(SceneOf(ClassWith("Plain", {})));
    INode* const node = GetCOREInterface()->GetRootNode()->GetChildNode(0);
    node->SetName(L"a\xd83d z\xde00");
    node->GetMtl()->SetName(MSTR(L"\xde00\xd83d"));
    const Written written = WriteOpenScene();
    const json& object = written.document.at("objects").at(0);
    EXPECT_EQ(object.at("object_name"), "a\xef\xbf\xbd z\xef\xbf\xbd");
    EXPECT_EQ(object.at("material").at("name"), "\xef\xbf\xbd\xef\xbf\xbd");
}

} // namespace
} // namespace brimwave::testing
