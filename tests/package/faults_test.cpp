// Host classes that throw, from any call: the document stays valid, everything else is complete.
#include "tests/package/package_kit.h"

#include <gtest/gtest.h>

namespace brimwave::testing {
namespace {

constexpr const char* failed = "buildMaterialJson exception";

json PlainMap(const std::string& name) {
    return {{"class", "Plain Map"},
            {"name", name},
            {"blocks", {{{"name", "p"}, {"params", {Param("amount", "float", 1)}}}}}};
}

/// Three boxes; the second has the material and the map that misbehave. All share one good map.
json FaultyScene(const json& materialFaults, const json& mapFaults, const json& blockFaults) {
    json scene = EmptyScene();
    json bad = {{"class", "VRayMtl"}, {"name", "bad"}, {"replace_blocks", true}};
    bad["blocks"] = {{{"name", "p"}, {"params", {Param("Diffuse", "float", 1)}}}};
    bad["blocks"][0]["throws"] = blockFaults;
    bad["slot_list"] = {{{"name", "shared"}, {"map", "good"}}, {{"name", "map"}, {"map", "bad"}}};
    bad["throws"] = materialFaults;
    scene["maps"] = {{"good", PlainMap("good")}, {"bad", PlainMap("bad")}};
    scene["maps"]["bad"]["throws"] = mapFaults;
    const json plain = {{"class", "Plain"},
                        {"name", "plain"},
                        {"blocks", json::array()},
                        {"slot_list", {{{"name", "shared"}, {"map", "good"}}}}};
    scene["materials"] = {{"bad", bad}, {"first", plain}, {"last", plain}};
    scene["nodes"] = {Box("before", "bad"), Box("ok", "last"), Box("again", "bad")};
    return scene;
}

void ExpectOneFailure(const json& scene, const std::string& what) {
    SCOPED_TRACE(what);
    const Written written = WritePackage(scene);
    for (const char* name : {"before", "again"}) {
        EXPECT_EQ(written.Object(name).at("errors"), json({failed}));
        EXPECT_EQ(written.Object(name).at("material"), nullptr);
        EXPECT_TRUE(written.Logged("[" + std::string(name) + "] " + failed));
    }
    // Nothing of the failed text counts as written.
    const json& ok = written.Object("ok");
    EXPECT_EQ(ok.at("errors"), json::array());
    EXPECT_EQ(ok.at("material").at("node_tree").at("node_id"), 1);
    EXPECT_EQ(ok.at("material").at("node_tree").at("children").at("shared").at("name"), "good");
}

TEST(Faults, AnyCallOfAMaterial) {
    for (const char* call : {"GetClassName", "SuperClassID", "NumParamBlocks", "GetParamBlock",
                             "GetName", "NumSubTexmaps", "GetSubTexmap", "GetSubTexmapSlotName"})
        ExpectOneFailure(FaultyScene({call}, json::array(), json::array()), call);
    for (const char* call : {"GetDesc", "GetValue"})
        ExpectOneFailure(FaultyScene(json::array(), json::array(), {call}), call);
    json scene = FaultyScene(true, json::array(), json::array());
    scene["materials"]["bad"]["throw_kind"] = "other"; // not derived from std::exception
    ExpectOneFailure(scene, "everything, other kind");
}

TEST(Faults, AnyCallOfAMapBelow) {
    for (const char* call : {"GetClassName", "SuperClassID", "GetName", "NumSubTexmaps"})
        ExpectOneFailure(FaultyScene(json::array(), {call}, json::array()), call);
}

TEST(Faults, AnyCallOfAnObject) {
    const struct {
        const char* call;
        const char* error;
    } rows[] = {{"CanConvertToType", "material_ids exception"},
                {"ConvertToType", "material_ids exception"},
                {"GetClassName", "object_class exception"}};
    for (const auto& row : rows) {
        json scene = SceneOf(ClassWith("Plain", {}));
        scene["nodes"][0]["object"]["throws"] = {row.call};
        const Written written = WritePackage(scene);
        const json& object = written.Object("Box001");
        EXPECT_EQ(object.at("errors"), json({row.error})) << row.call;
        EXPECT_EQ(object.at("material").at("name"), "subject");
        EXPECT_TRUE(written.Logged(std::string("[Box001] ") + row.error));
    }
}

TEST(Faults, AnyCallOfANode) {
    const struct {
        const char* call;
        bool exported;
    } rows[] = {{"EvalWorldState", false},
                {"GetMtl", false},
                {"GetObjectRef", true},
                {"GetName", true},
                {"SetName", true}};
    for (const auto& row : rows) {
        json scene = EmptyScene();
        const json material = ClassWith("Plain", {});
        scene["nodes"] = {Box("same", material), Box("same", material), Box("ok", material)};
        scene["nodes"][1]["throws"] = {row.call};
        const Written written = WritePackage(scene);
        EXPECT_EQ(written.result.objectCount, row.exported ? 3 : 2) << row.call;
        EXPECT_EQ(written.Object("ok").at("errors"), json::array());
        EXPECT_GT(written.log.size(), 3u) << row.call; // something was told
    }
}

TEST(Faults, LightsCamerasAndEnvironment) {
    const json light = {{"name", "light"}, {"object", {{"class", "CoronaLight"}}}};
    const json camera = {{"name", "camera"}, {"object", {{"class", "Free"}}}};
    json scene = EmptyScene();
    scene["nodes"] = {light, light, camera, camera};
    scene["nodes"][0]["name"] = "bad light";
    scene["nodes"][0]["throws"] = {"GetNodeTM"};
    scene["nodes"][2]["name"] = "bad camera";
    scene["nodes"][2]["object"]["throws"] = {"GetFOV"};
    scene["environment"]["map"] = PlainMap("env");
    scene["environment"]["map"]["throws"] = {"NumSubTexmaps"};
    scene["faults"]["throws"] = {"GetBackGround"};
    const Written written = WritePackage(scene);
    ASSERT_EQ(written.document.at("lights").size(), 1u);
    EXPECT_EQ(written.document.at("lights").at(0).at("light_name"), "light");
    ASSERT_EQ(written.document.at("cameras").size(), 1u);
    EXPECT_EQ(written.document.at("cameras").at(0).at("camera_name"), "camera");
    EXPECT_EQ(written.document.at("environment").at("map"), nullptr);
    EXPECT_TRUE(written.Logged("WARNING: Light 'bad light' could not be exported"));
    EXPECT_TRUE(written.Logged("WARNING: Camera 'bad camera' could not be exported"));
    EXPECT_TRUE(written.Logged("WARNING: Environment map 'env' could not be exported"));
}

// Blocks and parameters as broken third-party classes have them.
TEST(Faults, OddBlocks) {
    json material = ClassWith("VRayMtl", {});
    material["blocks"] = {
        nullptr,
        {{"name", nullptr}, {"descriptor", false}, {"params", json::array()}},
        {{"name", "p"},
         {"params",
          {Param(nullptr, "float", 1), Param("", "float", 2), Param("Diffuse", "texmap", nullptr),
           Param("Reflection", "string", nullptr), Param("anisotropy", "float", "nan"),
           Param("coat_ior", "float", "inf")}}},
        {{"name", "q"}, {"params", {Param("diffuse", "rgba", {1, 0.5, 0})}}}};
    const Written written = WritePackage(SceneOf(material));
    EXPECT_EQ(ToText(NodeMembers(written.text, "subject")), "diffuse=[1,0.5,0]\n"
                                                            "reflection=\"\"\n"
                                                            "coat_ior=null\n"
                                                            "anisotropy=null\n");
}

} // namespace
} // namespace brimwave::testing
