// Bitmaps: the file's name and place, and where the image lies.
#include "tests/package/package_kit.h"
#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>

#include <numbers>

namespace brimwave::testing {
namespace {

/// The scene's only material has the map in its only slot.
json SceneWithMap(const json& map) {
    json scene = SceneOf({{"class", "Plain"},
                          {"blocks", json::array()},
                          {"slot_list", {{{"name", "Map"}, {"map", "map"}}}}});
    scene["maps"] = {{"map", map}};
    return scene;
}

json MapNode(const json& map) {
    return WritePackage(SceneWithMap(map)).Node().at("children").at("Map");
}

TEST(Bitmap, MembersInOrder) {
    json map = ClassWith("CoronaBitmap",
                         {Param("clippingHeight", "float", 0.5), Param("gamma", "float", -1),
                          Param("wAngle", "float", std::numbers::pi / 2),
                          Param("uvwOffset", "point3", {0.25, 0.5, 9}),
                          Param("realWorldScale", "bool", true),
                          Param("uvwScale", "point3", {400, 300, 1}), Param("uvwChannel", "int", 2),
                          Param("tilingU", "int", 2), Param("colorSpace", "string", nullptr),
                          Param("filename", "filename", "C:\\maps/sub\\we \"ird\".png")});
    EXPECT_EQ(ToText(NodeMembers(WritePackage(SceneWithMap(map)).text, "subject")),
              "filepath=\"we \\\"ird\\\".png\"\n"
              "tiling_u=400\n"
              "tiling_v=300\n"
              "real_world_scale=true\n"
              "real_world_width_mm=400\n"
              "real_world_height_mm=300\n"
              "offset_u=0.25\n"
              "offset_v=0.5\n"
              "uvw_channel=2\n"
              "rotate_w=90\n"
              "color_space=\"\"\n"
              "gamma=-1\n"
              "tiling_mode_u=2\n"
              "crop_h=0.5\n");
}

TEST(Bitmap, FileIsFoundAsStoredOrByTheHost) {
    TempFolder folder;
    folder.Write(L"textures\\wood.png", "x");
    const std::string real = folder.NativePath().string() + "/textures/wood.png";
    const struct {
        std::string stored;
        bool found;
    } rows[] = {{real, true},
                {"D:\\elsewhere\\wood.png", true}, // by the map path below
                {"D:\\elsewhere\\stone.png", false}};
    for (const auto& row : rows) {
        json scene =
            SceneWithMap(ClassWith("CoronaBitmap", {Param("filename", "filename", row.stored)}));
        scene["map_paths"] = {folder.NativePath().string() + "/textures"};
        const json node = WritePackage(scene).Node().at("children").at("Map");
        EXPECT_EQ(node.at("filepath"), row.stored.substr(row.stored.find_last_of("\\/") + 1));
        ASSERT_EQ(node.contains("filepath_abs"), row.found) << row.stored;
        if (row.found) {
            EXPECT_EQ(TempFolder::Read(Wide(node.at("filepath_abs").get<std::string>())), "x");
        }
    }
}

TEST(Bitmap, EachClassKeepsItsPathElsewhere) {
    EXPECT_EQ(MapNode(ClassWith("VRayBitmap", {Param("HDRIMapName", "filename", "a/b.hdr")}))
                  .at("filepath"),
              "b.hdr");
    const json host = MapNode({{"class", "Bitmap"},
                               {"file", "C:\\wood.png"},
                               {"params", {{"clipu", 0.25}}},
                               {"sub_objects", {{"uvgen", {{"params", json::object()}}}}}});
    EXPECT_EQ(host.at("type"), "Bitmaptexture");
    EXPECT_EQ(host.at("filepath"), "wood.png");
    EXPECT_EQ(host.at("crop_u"), 0.25);
    EXPECT_EQ(host.at("tiling_u"), 1);
    EXPECT_EQ(host.at("uvw_channel"), 1);
    EXPECT_EQ(host.at("rotate_w"), 0);
    const json none = MapNode({{"class", "Bitmap"}});
    EXPECT_FALSE(none.contains("filepath"));
    EXPECT_FALSE(
        MapNode(ClassWith("CoronaBitmap", {Param("filename", "int", 1)})).contains("filepath"));
}

} // namespace
} // namespace brimwave::testing
