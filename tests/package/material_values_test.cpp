// Members that are not plain rows: Corona's and Standard's materials, composites, displacement.
#include "tests/package/package_kit.h"

#include <gtest/gtest.h>

#include <cmath>

namespace brimwave::testing {
namespace {

json NodeOf(const json& material) {
    return WritePackage(SceneOf(material)).Node();
}

TEST(CoronaMaterial, RoughnessAndIorByMode) {
    const double specularIor = (1 + std::sqrt(0.04)) / (1 - std::sqrt(0.04)); // of 0.5
    const struct {
        int roughnessMode, iorMode;
        double reflectGlossiness, coatRoughness, ior;
    } rows[] = {{0, 0, 0.75, 0.125, 0.5}, {1, 1, 0.25, 0.875, specularIor}};
    for (const auto& row : rows) {
        const json node = NodeOf(ClassWith(
            "\rCoronaPhysicalMtl",
            {Param("roughnessMode", "int", row.roughnessMode),
             Param("baseRoughness", "float", 0.25), Param("clearcoatRoughness", "float", 0.125),
             Param("iorMode", "int", row.iorMode), Param("baseIor", "float", 0.5),
             Param("metalnessMode", "int", 1)}));
        EXPECT_EQ(node.at("type"), "\rCoronaPhysicalMtl");
        EXPECT_EQ(node.at("roughness_mode"), row.roughnessMode);
        EXPECT_EQ(node.at("ior_mode"), row.iorMode);
        EXPECT_DOUBLE_EQ(node.at("reflect_glossiness"), row.reflectGlossiness);
        EXPECT_DOUBLE_EQ(node.at("coat_roughness"), row.coatRoughness);
        EXPECT_NEAR(node.at("fresnel_ior"), row.ior, 1e-5);
        EXPECT_EQ(node.at("metalness"), 1);
    }
    const json old = NodeOf(ClassWith("CoronaLegacyMtl", {Param("fresnelIor", "float", 1.5)}));
    EXPECT_FALSE(old.contains("reflect_glossiness"));
    EXPECT_EQ(old.at("fresnel_ior"), 1.5);
}

TEST(CoronaMaterial, AmountsFirstThenValuesWithEverySpelling) {
    const Written written = WritePackage(SceneOf(
        ClassWith("CoronaLegacyMtl",
                  {Param("diffuseLevel", "float", 0.5), Param("levelDiffuse", "float", 0.25),
                   Param("baseMapAmount", "float", 0.75), Param("mapAmountDiffuse", "float", 1),
                   Param("useThinMode", "bool", true)})));
    EXPECT_EQ(ToText(NodeMembers(written.text, "subject")), "amt_diffuse=1\n"
                                                            "amt_diffuse=0.75\n"
                                                            "thin_walled=true\n"
                                                            "diffuse_level=0.25\n"
                                                            "diffuse_level=0.5\n"
                                                            "use_thin_mode=true\n");
}

TEST(CoronaMaterial, LengthsAreInMetres) {
    json scene = SceneOf(ClassWith("CoronaMtl", {Param("displacementMaximum", "world", 2),
                                                 Param("displacementMinimum", "world", -1),
                                                 Param("sssRadius", "world", 5),
                                                 Param("displacementWaterLevel", "float", 0.5)}));
    scene["units"] = {{"type", "centimeters"}};
    const json node = WritePackage(scene).Node();
    EXPECT_DOUBLE_EQ(node.at("displacement_max"), 0.02);
    EXPECT_DOUBLE_EQ(node.at("displacement_min"), -0.01);
    EXPECT_DOUBLE_EQ(node.at("sss_radius"), 0.05);
    EXPECT_DOUBLE_EQ(node.at("displacement_water_level"), 0.5);
}

TEST(StandardMaterial, ItsOwnAndItsShadersValues) {
    json scene = SceneOf({{"class", "Standard (Legacy)"},
                          {"name", "Old"},
                          {"params",
                           {{"twoSided", true},
                            {"opacity", 0.5},
                            {"filterColor", {0, 0, 1}},
                            {"mapAmounts", {1, 0.25, 1, 1, 1, 1, 1, 1, 0.3, 1, 1, 1}}}},
                          {"sub_objects",
                           {{"shader",
                             {{"params",
                               {{"diffuse", {1, 0, 0}},
                                {"specular", {0, 1, 0}},
                                {"glossiness", 0.75},
                                {"specularLevel", 0.5},
                                {"selfIllumAmount", 0.125}}}}}}},
                          {"slots", {{"Diffuse Color", "wood"}, {"Bump", "wood"}}},
                          {"slots_off", {"Bump"}}});
    scene["maps"] = {{"wood", {{"class", "Bitmap"}, {"file", "wood.png"}}}};
    const json node = WritePackage(scene).Node();
    EXPECT_EQ(node.at("type"), "Standardmaterial");
    EXPECT_EQ(node.at("shader_name"), "Blinn");
    EXPECT_EQ(node.at("diffuse_color"), json({1, 0, 0}));
    EXPECT_EQ(node.at("specular_color"), json({0, 1, 0}));
    EXPECT_EQ(node.at("filter_color"), json({0, 0, 1}));
    EXPECT_EQ(node.at("glossiness"), 0.75);
    EXPECT_EQ(node.at("specular_level"), 0.5);
    EXPECT_EQ(node.at("opacity"), 0.5);
    EXPECT_EQ(node.at("self_illum"), 0.125);
    EXPECT_EQ(node.at("two_sided"), true);
    EXPECT_EQ(node.at("wire"), false);
    const json slots = {{{"name", "Diffuse Color"}, {"amount", 0.25}, {"enabled", true}},
                        {{"name", "Bump"}, {"amount", 0.3}, {"enabled", false}}};
    EXPECT_EQ(node.at("map_slots"), slots);
    EXPECT_EQ(node.at("disabled_slots"), json({"Bump"}));
}

TEST(Composite, LayersOnOneLine) {
    json composite = ClassWith("Composite", {Param("blendMode", "int_tab", {0, 5}),
                                             Param("opacity", "float_tab", {100, 12.5}),
                                             Param("mapEnabled", "bool_tab", {true, false}),
                                             Param("maskEnabled", "bool_tab", {false, true})});
    json scene = SceneOf({{"class", "Plain"},
                          {"blocks", json::array()},
                          {"slot_list", {{{"name", "Map"}, {"map", "c"}}}}});
    composite["slot_list"] = json::array();
    scene["maps"] = {{"c", composite}};
    EXPECT_EQ(ToText(NodeMembers(WritePackage(scene).text, "subject")),
              "num_layers=2\n"
              "layers=[{\"index\":1,\"blend_mode\":0,\"opacity\":100,\"layer_enabled\":true,"
              "\"mask_enabled\":false,\"enabled\":true},"
              "{\"index\":2,\"blend_mode\":5,\"opacity\":12.5,\"layer_enabled\":false,"
              "\"mask_enabled\":true,\"enabled\":false}]\n");

    json material = ClassWith("Composite", {Param("amount", "float_tab", {100, 50}),
                                            Param("mixType", "int_tab", {0, 2}),
                                            Param("mapEnables", "bool_tab", {true, false})});
    material["sub_materials"] = json::array();
    const Written written = WritePackage(SceneOf(material));
    EXPECT_EQ(written.Node().at("type"), "compositematerial");
    EXPECT_EQ(ToText(NodeMembers(written.text, "subject")),
              "num_layers=2\n"
              "layers=[{\"index\":1,\"mix_type\":0,\"amount\":100,\"enabled\":true},"
              "{\"index\":2,\"mix_type\":2,\"amount\":50,\"enabled\":false}]\n");
    // A class without the tables, and tables without entries.
    EXPECT_FALSE(NodeOf(ClassWith("Composite", {})).contains("layers"));
    const json none = NodeOf(ClassWith("Composite", {Param("amount", "float_tab", json::array())}));
    EXPECT_EQ(none.at("num_layers"), 0);
    EXPECT_EQ(none.at("layers"), json::array());
}

TEST(Displacement, ByModifierClass) {
    const auto modifier = [](const std::string& className, const std::vector<json>& params) {
        return ClassWith(className, params);
    };
    const std::vector<json> corona = {Param("amount", "float", 2), Param("maxDisplace", "float", 1),
                                      Param("pixelSize", "float", 3),
                                      Param("enabled", "bool", true)};
    const std::vector<json> vray = {Param("shift", "float", 0.5), Param("amount", "float", 4),
                                    Param("texmap", "texmap", nullptr)};
    const char* const coronaText = "\"displacement_mod\": {\"displacement_max\":1,"
                                   "\"displacement_max\":2,\"displacement_screen_px\":3,"
                                   "\"displacement_enabled\":true},\n";
    const char* const vrayText = "\"displacement_mod\": {\"vray_disp\":true,\"vray_disp_amount\":4,"
                                 "\"vray_disp_shift\":0.5,\"vray_disp_has_texmap\":false},\n";
    const json edit = modifier("Edit Poly", {});
    const struct {
        std::vector<json> stack;
        const char* text;
    } rows[] = {
        {{}, "\"displacement_mod\": null,\n"},
        {{edit}, "\"displacement_mod\": null,\n"},
        {{edit, modifier("CoronaDisplacement", corona)}, coronaText},
        {{modifier("corona_displacement", corona)}, coronaText},
        {{modifier("CoronaDisplacementMod", corona)}, coronaText},
        {{modifier("VRayDisplacement", vray), modifier("CoronaDisplacement", corona)}, vrayText},
        {{modifier("VRayDisplacementMod", vray)}, vrayText},
        {{modifier("CoronaDisplacement", {})},
         "\"displacement_mod\": {\"displacement_found\":true},\n"},
    };
    for (const auto& row : rows) {
        json scene = SceneOf(ClassWith("Plain", {}));
        scene["nodes"][0]["modifiers"] = row.stack;
        EXPECT_NE(WritePackage(scene).text.find(row.text), std::string::npos) << row.text;
    }
    json scene = SceneOf(ClassWith("Plain", {}));
    scene["maps"] = {{"m", ClassWith("Plain Map", {})}};
    scene["nodes"][0]["modifiers"] =
        json::array({modifier("VRay_Displacement", {Param("texmap", "texmap", "m")})});
    EXPECT_EQ(WritePackage(scene).Object("Box001").at("displacement_mod"),
              json({{"vray_disp", true}, {"vray_disp_has_texmap", true}}));
}

TEST(RealLayeredClasses, LayersFromTheirOwnParameters) {
    json scene = SceneOf(
        {{"class", "CoronaLayeredMtl"},
         {"params", {{"baseMtl", "a"}, {"layers", {"b", nullptr}}, {"amounts", {0.25, 1}}}}});
    scene["materials"] = {{"a", ClassWith("Plain", {})}, {"b", ClassWith("Plain", {})}};
    const json corona = WritePackage(scene).Node().at("children");
    EXPECT_EQ(corona.at("layer_1").at("blend_amount"), 1);
    EXPECT_EQ(corona.at("layer_2").at("blend_amount"), 0.25);
    EXPECT_EQ(corona.at("layer_2").at("material").at("node_id"), 3);
    EXPECT_EQ(corona.at("layer_3").at("material"), nullptr);
    scene["nodes"][0]["material"] = {
        {"class", "VRayBlendMtl"},
        {"params",
         {{"baseMtl", "a"},
          {"coatMtl_0", "b"},
          {"blend_0", {0.75, 0.5, 0.25}},
          {"coatMtl_enable", {false, true, true, true, true, true, true, true, true}}}}};
    const json vray = WritePackage(scene).Node().at("children");
    EXPECT_EQ(vray.at("layer_1").at("enabled"), true);
    EXPECT_EQ(vray.at("layer_2").at("blend_amount"), 0.5);
    EXPECT_EQ(vray.at("layer_2").at("enabled"), false);
}

} // namespace
} // namespace brimwave::testing
