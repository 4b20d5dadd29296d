// Nodes: references, children, switched-off slots, lists and layers.
#include "tests/package/package_kit.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace brimwave::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

json Map(const std::string& name, const std::vector<json>& slots = {}) {
    json map = {{"class", "Plain Map"}, {"name", name}, {"blocks", json::array()}};
    map["slot_list"] = slots;
    return map;
}

json Slot(const json& name, const json& map, bool on = true) {
    return {{"name", name}, {"map", map}, {"on", on}};
}

json Material(const std::string& name, const std::vector<json>& slots) {
    json material = Map(name, slots);
    material["class"] = "Plain Material";
    return material;
}

TEST(NodeTree, ChildrenToTheLetter) {
    json scene = SceneOf("mat");
    scene["maps"] = {{"wood", Map("Wood")}, {"noise", Map("Noise", {Slot("Inner", "wood")})}};
    scene["materials"] = {
        {"mat",
         Material("Mat", {Slot("Diffuse", "wood"), Slot("Unused", nullptr), Slot(nullptr, "noise"),
                          Slot("Off \"1\"", "noise", false), Slot("Off 2", "wood", false)})}};
    EXPECT_THAT(WritePackage(scene).text,
                HasSubstr("      \"node_tree\": {\n"
                          "    \"node_id\": 1,\n"
                          "    \"type\": \"Plain Material\",\n"
                          "    \"name\": \"Mat\",\n"
                          "    \"disabled_slots\": [\"Off \\\"1\\\"\", \"Off 2\"],\n"
                          "    \"children\": {\n"
                          "      \"Diffuse\": {\n"
                          "      \"node_id\": 2,\n"
                          "      \"type\": \"Plain Map\",\n"
                          "      \"name\": \"Wood\"\n"
                          "      },\n"
                          "      \"slot_2\": {\n"
                          "      \"node_id\": 3,\n"
                          "      \"type\": \"Plain Map\",\n"
                          "      \"name\": \"Noise\",\n"
                          "      \"children\": {\n"
                          "        \"Inner\": { \"ref\": 2 }\n"
                          "      }\n"
                          "      }\n"
                          "    }\n"
                          "    }\n"
                          "    }\n"));
}

TEST(NodeTree, SharedThroughThePackage) {
    json scene = EmptyScene();
    scene["maps"] = {{"wood", Map("Wood")}};
    scene["materials"] = {{"a", Material("A", {Slot("Map", "wood")})},
                          {"b", Material("B", {Slot("Map", "wood")})}};
    scene["nodes"] = {Box("1", "a"), Box("2", "b"), Box("3", "a")};
    scene["environment"] = {{"map", "wood"}, {"use_map", true}};
    const Written written = WritePackage(scene);
    const auto tree = [&](const char* name) {
        return written.Object(name).at("material").at("node_tree");
    };
    EXPECT_EQ(tree("1").at("children").at("Map").at("node_id"), 2);
    EXPECT_EQ(tree("2").at("node_id"), 3);
    EXPECT_EQ(tree("2").at("children").at("Map"), json({{"ref", 2}}));
    EXPECT_EQ(tree("3"), json({{"ref", 1}}));
    EXPECT_EQ(written.Object("3").at("material").at("name"), "A");
    EXPECT_EQ(written.document.at("environment").at("map"), json({{"ref", 2}}));
}

TEST(NodeTree, CycleEndsInReference) {
    json scene = SceneOf(Material("Mat", {Slot("Map", "a")}));
    scene["maps"] = {{"a", Map("A", {Slot("Next", "b")})}, {"b", Map("B", {Slot("Next", "a")})}};
    const json a = WritePackage(scene).Node().at("children").at("Map");
    EXPECT_EQ(a.at("children").at("Next").at("children").at("Next"),
              json({{"ref", a.at("node_id")}}));
}

TEST(NodeTree, DeepTree) {
    constexpr int depth = 2000;
    json scene = SceneOf(Material("Mat", {Slot("Next", "map 1")}));
    for (int i = 1; i < depth; ++i)
        scene["maps"]["map " + std::to_string(i)] =
            Map("map " + std::to_string(i),
                {Slot("Next", i + 1 < depth ? json("map " + std::to_string(i + 1)) : json())});
    OpenScene(scene);
    const Written written = WritePackage(scene);
    const json* node = &written.Node();
    int met = 1;
    for (; node->contains("children"); ++met)
        node = &node->at("children").at("Next");
    EXPECT_EQ(met, depth);
    EXPECT_EQ(node->at("node_id"), depth);
}

TEST(MaterialEntry, MultiMaterial) {
    json scene = SceneOf(
        {{"class", "Multi/Sub-Object"}, {"name", "Multi"}, {"sub_materials", {"a", nullptr, "a"}}});
    scene["materials"] = {{"a", Material("A", {})}};
    const Written written = WritePackage(scene);
    EXPECT_THAT(written.text, HasSubstr("    \"material\": {\n"
                                        "      \"type\": \"Multimaterial\",\n"
                                        "      \"name\": \"Multi\",\n"
                                        "      \"sub_materials\": [\n"
                                        "      {\n"
                                        "        \"material_id\": 1,\n"
                                        "        \"material_name\": \"A\",\n"
                                        "        \"node_tree\": {\n"
                                        "      \"node_id\": 1,\n"));
    const json subs = written.Object("Box001").at("material").at("sub_materials");
    EXPECT_EQ(subs.at(1),
              json({{"material_id", 2}, {"material_name", ""}, {"node_tree", nullptr}}));
    EXPECT_EQ(subs.at(2).at("material_id"), 3);
    EXPECT_EQ(subs.at(2).at("node_tree"), json({{"ref", 1}}));
}

TEST(MaterialEntry, WhichClassesAreMulti) {
    const struct {
        const char* className;
        const char* type;
    } rows[] = {
        {"MultiTexture", "MultiTexture"}, {"My Multi Thing", "Multimaterial"}, {"multi", "multi"}};
    for (const auto& row : rows) {
        const Written written = WritePackage(SceneOf(ClassWith(row.className, {})));
        EXPECT_EQ(written.Object("Box001").at("material").at("type"), row.type);
    }
}

TEST(NodeTree, MultiTextureList) {
    const json on = {{"name", "p"}, {"params", {Param("submap_on", "bool_tab", {true, false})}}};
    json scene = SceneOf(Material("Mat", {Slot("Map", "multi")}));
    json multi = Map("Multi", {Slot("1", "a"), Slot("2", "b"), Slot("3", nullptr), Slot("4", "c")});
    multi["class"] = "MultiTexture";
    multi["replace_blocks"] = true;
    multi["blocks"] = json::array({on});
    scene["maps"] = {{"a", Map("A")}, {"b", Map("B")}, {"c", Map("C")}, {"multi", multi}};
    const Written written = WritePackage(scene);
    const json node = written.Node().at("children").at("Map");
    ASSERT_EQ(node.at("textures").size(), 2u); // the second is off, the third empty
    EXPECT_EQ(node.at("textures").at(0).at("name"), "A");
    EXPECT_EQ(node.at("textures").at(1).at("name"), "C"); // without an entry of its own
    EXPECT_EQ(node.at("children").at("4"), json({{"ref", 4}}));
    EXPECT_THAT(written.text, HasSubstr("\"textures\": [\n{\n"));
}

TEST(NodeTree, BlendedLayers) {
    const auto layered = [](const char* className, const std::vector<json>& params,
                            const json& subs) {
        json material = {{"class", className}, {"name", "subject"}, {"sub_materials", subs}};
        material["blocks"] = json::array({{{"name", "More"}, {"params", params}}});
        json scene = SceneOf(material);
        scene["materials"] = {{"a", Material("A", {})}, {"b", Material("B", {})}};
        return WritePackage(scene);
    };
    const json amounts = Param("blendAmounts", "float_tab", {0.25, 0.5});
    const Written plain = layered("Double Sided", {amounts}, {"a", nullptr});
    EXPECT_THAT(plain.text, HasSubstr("    \"children\": {\n"
                                      "      \"layer_1\": {\n"
                                      "        \"material\": {\n"
                                      "      \"node_id\": 2,\n"));
    EXPECT_THAT(plain.text, HasSubstr("      },\n"
                                      "        \"blend_amount\": 0.25\n"
                                      "      },\n"
                                      "      \"layer_2\": {\n"
                                      "        \"material\": null,\n"
                                      "        \"blend_amount\": 0.5\n"
                                      "      }\n"
                                      "    }\n"));
    json composite = {{"class", "Composite"},
                      {"params", {{"mapEnables", {true, false, true}}}},
                      {"sub_materials", {"a", "b", "a"}}};
    composite["blocks"] =
        json::array({{{"name", "More"}, {"params", {amounts, Param("blend_3", "int", 7)}}}});
    json scene = SceneOf(composite);
    scene["materials"] = {{"a", Material("A", {})}, {"b", Material("B", {})}};
    const json switched = WritePackage(scene).Node().at("children");
    EXPECT_EQ(switched.at("layer_1").at("enabled"), true);
    EXPECT_EQ(switched.at("layer_2").at("enabled"), false);
    EXPECT_EQ(switched.at("layer_3").at("material"), json({{"ref", 2}}));
    EXPECT_EQ(switched.at("layer_3").at("blend_amount"), 7);
    // Without the table there are no layers, whatever sub-materials the class has.
    EXPECT_FALSE(layered("Double Sided", {}, {"a", "b"}).Node().contains("children"));
}

TEST(NodeTree, MaterialOutputSelector) {
    json selector = ClassWith("Material Output Selector", {Param("source", "mtl", "a")});
    json scene = SceneOf(selector);
    scene["materials"] = {{"a", Material("A", {})}};
    const json layer = WritePackage(scene).Node().at("children").at("layer_1");
    EXPECT_EQ(layer.at("material").at("name"), "A");
    EXPECT_EQ(layer.at("blend_amount"), 1);
    scene["materials"]["a"] = Material("A", {});
    selector["blocks"][0]["params"] = json::array({Param("source", "mtl", nullptr)});
    EXPECT_FALSE(WritePackage(SceneOf(selector)).Node().contains("children"));
}

// Switches as the classes spell them: the map's parameter, the switch, and whether the slot's
// map stands in a table.
TEST(SlotSwitches, Spellings) {
    const struct {
        const char* map;
        const char* mapType;
        const char* flag;
        const char* flagType;
    } rows[] = {
        {"baseTexmap", "texmap", "baseTexmapOn", "bool"},
        {"texmapDiffuse", "texmap", "texmapOnDiffuse", "bool"},
        {"texmap_diffuse", "texmap", "texmap_diffuse_on", "int"},
        {"base_color_map", "texmap", "base_color_map_on", "bool"},
        {"map1", "texmap", "map1Enabled", "bool"},
        {"texmap", "texmap", "TEXMAPON", "bool"},
        {"maps", "texmap_tab", "mapEnables", "bool_tab"},
        {"mapList", "texmap_tab", "mapEnabled", "bool_tab"},
        {"mask", "texmap_tab", "maskEnabled", "int_tab"},
        {"masks", "texmap_tab", "masksOn", "bool_tab"},
        {"other", "texmap_tab", "Enables", "bool_tab"},
    };
    for (const auto& row : rows) {
        for (const bool on : {true, false}) {
            const bool table = std::string(row.mapType) == "texmap_tab";
            const json flag = table ? json({1, on ? 1 : 0}) : json(on ? 1 : 0);
            json material = ClassWith(
                "Plain Material",
                {Param(row.map, row.mapType, table ? json({"wood", "wood"}) : json("wood")),
                 Param(row.flag, row.flagType, flag)});
            json slot = {{"name", "Last"}, {"param", row.map}};
            if (table)
                slot["index"] = 1;
            material["slot_list"] =
                table ? json({{{"name", "First"}, {"param", row.map}, {"index", 0}}, slot})
                      : json::array({slot});
            json scene = SceneOf(material);
            scene["maps"] = {{"wood", Map("Wood")}};
            const json node = WritePackage(scene).Node();
            EXPECT_EQ(node.value("disabled_slots", json::array()),
                      on ? json::array() : json({"Last"}))
                << row.flag;
            EXPECT_EQ(node.value("children", json::object()).contains("Last"), on) << row.flag;
        }
    }
}

TEST(SlotSwitches, SameMapInTwoSlots) {
    json material = ClassWith(
        "Plain Material", {Param("aTexmap", "texmap", "wood"), Param("aTexmapOn", "bool", false),
                           Param("bTexmap", "texmap", "wood"), Param("bTexmapOn", "bool", true)});
    material["slot_list"] = {{{"name", "A"}, {"param", "aTexmap"}},
                             {{"name", "B"}, {"param", "bTexmap"}}};
    json scene = SceneOf(material);
    scene["maps"] = {{"wood", Map("Wood")}};
    const json node = WritePackage(scene).Node();
    EXPECT_EQ(node.at("disabled_slots"), json({"A"}));
    EXPECT_TRUE(node.at("children").contains("B"));
}

} // namespace
} // namespace brimwave::testing
