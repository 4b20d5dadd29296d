// The environment, and what the current renderer keeps for itself.
#include "tests/package/package_kit.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace brimwave::testing {
namespace {

using ::testing::HasSubstr;

json Map(const std::string& name) {
    return {{"class", "Plain Map"}, {"name", name}, {"blocks", json::array()}};
}

TEST(Environment, MapIsWrittenWhetherUsedOrNot) {
    for (const bool used : {true, false}) {
        json scene = EmptyScene();
        scene["environment"] = {
            {"background", {0.25, 0.5, 1}}, {"use_map", used}, {"map", Map("Sky")}};
        const Written written = WritePackage(scene);
        EXPECT_THAT(written.text, HasSubstr(std::string("  ],\n"
                                                        "  \"environment\": {\n"
                                                        "    \"background_color\": [0.25,0.5,1],\n"
                                                        "    \"use_map\": ") +
                                            (used ? "true" : "false") +
                                            ",\n"
                                            "    \"map\": {\n"
                                            "    \"node_id\": 1,\n"
                                            "    \"type\": \"Plain Map\",\n"
                                            "    \"name\": \"Sky\"\n"
                                            "    }\n"
                                            "  }\n"
                                            "}"));
        EXPECT_TRUE(written.Logged(std::string("Environment map exported: Sky") +
                                   (used ? " (Use Map on)" : " (Use Map OFF - colour renders)")));
    }
}

/// A renderer with these parameters; bg_color as the host keeps colours, 0..1.
json SceneWithRenderer(const std::vector<json>& params) {
    json scene = EmptyScene();
    scene["maps"] = {{"hdri", Map("HDRI")}};
    scene["renderer"] = ClassWith("Corona", params);
    scene["renderer"].erase("name");
    scene["renderer"]["super_class"] = "renderer";
    return scene;
}

TEST(RendererBackground, WrittenAsTheHostSpellsIt) {
    const Written full = WritePackage(
        SceneWithRenderer({Param("bg_source", "int", 2), Param("bg_color", "rgba", {1, 0.5, 0}),
                           Param("bg_texmap", "texmap", "hdri")}));
    EXPECT_THAT(full.text, HasSubstr("    \"map\": null,\n"
                                     "    \"corona_bg_source\": 2,\n"
                                     "    \"corona_bg_color\": [1.0,0.5,0.0],\n"
                                     "    \"corona_bg_map\": {\n"
                                     "    \"node_id\": 1,\n"));
    EXPECT_TRUE(full.Logged("Corona scene environment map exported: HDRI"));

    const Written bare = WritePackage(SceneWithRenderer({Param("bg_source", "int", 0)}));
    EXPECT_THAT(bare.text, HasSubstr("    \"corona_bg_source\": 0,\n"
                                     "    \"corona_bg_map\": null\n"
                                     "  }\n"));
    // A handle of something that is no map.
    json other =
        SceneWithRenderer({Param("bg_source", "int", 1), Param("bg_texmap", "mtl", "material")});
    other["materials"] = {{"material", ClassWith("Plain", {})}};
    const Written noMap = WritePackage(other);
    EXPECT_EQ(noMap.document.at("environment").at("corona_bg_map"), nullptr);
    for (const std::string& line : noMap.log)
        EXPECT_EQ(line.find("Corona scene environment map"), std::string::npos);
    const Written none = WritePackage(SceneWithRenderer({Param("bg_texmap", "texmap", "hdri")}));
    EXPECT_EQ(none.document.at("environment").size(), 3u);
}

TEST(SceneValues, ColorPipelineAndRenderDisplacement) {
    json scene = SceneWithRenderer(
        {Param("displacement_amount", "float", 2.5), Param("displacement_relative", "bool", true)});
    scene["color_pipeline"] = {
        {"mode", "OCIO_Default"}, {"rendering_space", "ACEScg"}, {"display_gamma", 1.5}};
    EXPECT_THAT(WritePackage(scene).text, HasSubstr("  \"scene_color_mode\": \"OCIO_Default\",\n"
                                                    "  \"scene_rendering_space\": \"ACEScg\",\n"
                                                    "  \"scene_display_gamma\": 1.5,\n"
                                                    "  \"scene_unit_scale\": 1,\n"
                                                    "  \"disp_render_amount\": 2.5,\n"
                                                    "  \"disp_render_relative\": true,\n"
                                                    "  \"object_count\": 0,\n"));
    scene["color_pipeline"] = {{"mode", "gamma"}};
    const json partial = WritePackage(scene).document;
    EXPECT_EQ(partial.at("scene_color_mode"), "gamma");
    EXPECT_EQ(partial.at("scene_rendering_space"), "");
    EXPECT_EQ(partial.at("scene_display_gamma"), 2.2);
}

} // namespace
} // namespace brimwave::testing
