// Cameras.
#include "tests/package/package_kit.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

namespace brimwave::testing {
namespace {

using ::testing::HasSubstr;

json Camera(const json& lens, const std::string& className = "Free") {
    json scene = EmptyScene();
    json object = {{"class", className}};
    if (!lens.is_null())
        object["camera"] = lens;
    scene["nodes"] = {{{"name", "cam"}, {"object", object}}};
    return scene;
}

json Entry(const json& scene) {
    return WritePackage(scene).document.at("cameras").at(0);
}

TEST(Cameras, EntryToTheLetter) {
    json scene = Camera({{"fov", 0.75}, {"target_distance", 0}});
    scene["units"] = {{"type", "centimeters"}};
    scene["nodes"][0]["transform"] = {{"position", {100, 200, 300}}};
    const Written written = WritePackage(scene);
    EXPECT_THAT(written.text, HasSubstr("  ],\n"
                                        "  \"cameras\": [\n"
                                        "  {\n"
                                        "    \"camera_name\": \"cam\",\n"
                                        "    \"camera_class\": \"Free\",\n"
                                        "    \"position\": [1, 2, 3],\n"
                                        "    \"target\": [1, 2, 2],\n"
                                        "    \"direction\": [-0, -0, -1],\n"
                                        "    \"up\": [0, 1, 0],\n"
                                        "    \"fov_horizontal\": 0.75,\n"
                                        "    \"has_target\": false,\n"
                                        "    \"ortho\": false,\n"
                                        "    \"basis\": [[1,0,0], [0,1,0], [0,0,1]],\n"
                                        "    \"clip_on\":false\n"
                                        "  }\n"
                                        "  ],\n"));
    EXPECT_TRUE(written.Logged("  camera exported: cam"));
    EXPECT_TRUE(written.Logged("Cameras exported: 1"));
    EXPECT_TRUE(WritePackage(EmptyScene()).Logged("Cameras exported: 0"));
}

TEST(Cameras, TargetNodeIsInMetresAndAxesAreUnitVectors) {
    json scene = Camera({{"fov", 1}, {"target_distance", 7}}, "Target");
    scene["units"] = {{"type", "centimeters"}};
    scene["nodes"][0]["target"] = "aim";
    scene["nodes"][0]["transform"] = {{"rotation", {90, 0, 0}}, {"scale", 3}};
    scene["nodes"].push_back({{"name", "aim"}, {"transform", {{"position", {0, 500, 0}}}}});
    const json entry = Entry(scene);
    EXPECT_EQ(entry.at("has_target"), true);
    EXPECT_EQ(entry.at("target"), json({0, 5, 0}));
    EXPECT_EQ(entry.at("target_distance"), 7); // system units
    const double direction[] = {0, 1, 0}, up[] = {0, 0, 1};
    for (size_t i = 0; i < 3; ++i) {
        EXPECT_NEAR(entry.at("direction")[i], direction[i], 1e-6);
        EXPECT_NEAR(entry.at("up")[i], up[i], 1e-6);
    }
}

TEST(Cameras, ClippingAndProjection) {
    const struct {
        bool ortho, clip;
        double distance;
    } rows[] = {{false, false, 10}, {true, false, 10}, {true, true, 0}, {false, true, 10}};
    for (const auto& row : rows) {
        const json entry = Entry(Camera({{"fov", 1},
                                         {"ortho", row.ortho},
                                         {"target_distance", row.distance},
                                         {"manual_clip", row.clip},
                                         {"near", 1.5},
                                         {"far", 90}}));
        EXPECT_EQ(entry.at("ortho"), row.ortho);
        EXPECT_EQ(entry.at("clip_on"), row.clip);
        EXPECT_EQ(entry.value("clip_near", 0.0), row.clip ? 1.5 : 0.0);
        EXPECT_EQ(entry.value("clip_far", 0.0), row.clip ? 90.0 : 0.0);
        EXPECT_EQ(entry.contains("target_distance"), row.distance > 0);
        ASSERT_EQ(entry.contains("ortho_width"), row.ortho && row.distance > 0);
        if (entry.contains("ortho_width")) {
            EXPECT_NEAR(entry.at("ortho_width"), 2 * std::tan(0.5) * 10, 1e-4);
        }
    }
}

TEST(Cameras, LensUnderEverySpelling) {
    json scene = Camera(nullptr);
    scene["nodes"][0]["object"] =
        ClassWith("AnyCam", {Param("fStop", "float", 4), Param("f_number", "float", 8),
                             Param("focal_length_mm", "float", 50), Param("use_dof", "bool", true),
                             Param("horizontalShift", "float", 0.25)});
    scene["nodes"][0]["object"]["super_class"] = "camera";
    scene["nodes"][0]["object"].erase("name");
    EXPECT_THAT(WritePackage(scene).text, HasSubstr(",\n    \"focal_length\":50"
                                                    ",\n    \"f_number\":8"
                                                    ",\n    \"f_number\":4"
                                                    ",\n    \"dof_on\":true"
                                                    ",\n    \"horizontal_shift\":0.25\n  }"));
}

} // namespace
} // namespace brimwave::testing
