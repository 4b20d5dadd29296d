#include "scene_kit.h"

#include "simhost/core/host.h"
#include "tests/support/places.h"

#include <fstream>
#include <sstream>

namespace {

using SceneFile = SceneTest;

struct Bad {
    const char* members;
    const char* place;     // in the message
    const char* complaint; // in the message
};

TEST_F(SceneFile, FaultsAreToldWithTheirPlaceAndNothingIsLoaded) {
    const Bad cases[] = {
        {R"("colour": 1)", "/colour", "unknown member"},
        {R"("units": {"type": "parsecs"})", "/units/type", "inches"},
        {R"("time": "now")", "/time", "integer"},
        {R"("maps": {"a": {"class": "Chequer"}})", "/maps/a/class", "\"Chequer\" is not known"},
        {R"("maps": {"a": {"name": "x"}})", "/maps/a", "\"class\" is missing"},
        {R"("maps": {"a": {"class": "Physical Material"}})", "/maps/a/class", "not known"},
        {R"("maps": {"a": {"class": "Checker", "params": {"colour1": 1}}})",
         "/maps/a/params/colour1", "no parameter \"colour1\""},
        {R"("maps": {"a": {"class": "Checker", "params": {"color1": [1, 2]}}})",
         "/maps/a/params/color1", "three numbers"},
        {R"("maps": {"a": {"class": "Checker", "params": {"color1": [1, 2, "x"]}}})",
         "/maps/a/params/color1/2", "a number"},
        {R"("maps": {"a": {"class": "Checker", "params": {"map1": "b"}}})", "/maps/a/params/map1",
         "no map has the id \"b\""},
        {R"("maps": {"a": {"class": "Checker", "params": {"map1Enabled": 7}}})", "map1Enabled",
         "true or false"},
        {R"("maps": {"a/b~c": {"class": "Checker", "slots": {"No": null}}})",
         "/maps/a~1b~0c/slots/No", "no such texture slot"},
        {R"("maps": {"a": {"class": "Q", "blocks": [{"name": "b", "params": [{"name": "p", "type": "colour"}]}]}})",
         "/maps/a/blocks/0/params/0/type", "a parameter type"},
        {R"("faults": {"answers_nothing": ["GetBackGround"]})", "/faults/answers_nothing/0",
         "can answer nothing"},
        {R"("maps": {"a": {"class": "Checker", "throws": ["Nap"]}})", "/maps/a/throws/0",
         "a call that can throw"},
        {R"("maps": {"a": {"class": "Checker", "omit_params": ["nope"]}})", "/maps/a/omit_params/0",
         "no such parameter"},
        {R"("materials": {"m": {"class": "Double Sided", "sub_materials": [null, null, null]}})",
         "/materials/m/sub_materials/2", "only 2"},
        {R"("materials": {"m": {"class": "Standard", "sub_objects": {"shade": null}}})",
         "/materials/m/sub_objects/shade", "role"},
        {R"("objects": {"o": {"class": "Odd", "blocks": []}})", "/objects/o", "super_class"},
        {R"("objects": {"o": {"class": "Box", "mesh": {"positions": [0, 0], "triangles": []}}})",
         "/objects/o/mesh/positions", "groups of 3"},
        {R"("objects": {"o": {"class": "Box", "mesh": {"positions": [0,0,0], "triangles": [0,0,1]}}})",
         "/objects/o/mesh/triangles", "outside of the 1 values"},
        {R"("objects": {"o": {"class": "Box", "mesh": {"positions": {"base64": "AAA"}, "triangles": []}}})",
         "/positions/base64", "base64"},
        {R"("objects": {"o": {"class": "Box", "mesh": {"positions": [[0,0,0]], "triangles": [0,0,0], "uvs": {"0": {"values": [0,0]}}}}})",
         "/uvs/0", "channel"},
        {R"("objects": {"o": {"class": "Box", "camera": {}}})", "/objects/o/camera",
         "do not have this"},
        {R"("objects": {"a": {"base": "b"}, "b": {"base": "a"}})", "/objects/a",
         "stands on itself"},
        {R"("nodes": [{"object": null}])", "/nodes/0", "\"name\" is missing"},
        {R"("nodes": [{"name": "a", "parent": "b"}, {"name": "b", "parent": "a"}])", "/parent",
         "below itself"},
        {R"("nodes": [{"name": "a"}, {"name": "a"}, {"name": "b", "target": "a"}])",
         "/nodes/2/target", "several nodes"},
        {R"("nodes": [{"name": "a", "id": "x"}, {"name": "b", "id": "x"}])", "/nodes/1/id",
         "another node"},
        {R"("nodes": [{"name": "a", "transform": {"rotation": [0,0,0,0]}}])",
         "/nodes/0/transform/rotation", "not zero"},
        {R"("nodes": [{"name": "a", "children": [{"name": "b", "material": "m"}]}])",
         "/nodes/0/children/0/material", "no material has the id \"m\""},
        {R"("nodes": [{"name": "a", "wire_color": [0, 0, 256]}])", "/nodes/0/wire_color/2",
         "0 to 255"},
        {R"("selection": ["nobody"])", "/selection/0", "no node has the id"},
        {R"("faults": {"exporter": "broken"})", "/faults/exporter", "refuses"}};
    OpenScene(R"("nodes": [{"name": "stays"}])");
    for (const Bad& bad : cases) {
        SCOPED_TRACE(bad.members);
        const auto result = simhost::LoadSceneText(
            std::string(R"({"format": "simhost-scene", "version": 1, )") + bad.members + "}");
        EXPECT_FALSE(result.ok);
        EXPECT_NE(result.error.find(bad.place), std::string::npos) << result.error;
        EXPECT_NE(result.error.find(bad.complaint), std::string::npos) << result.error;
        EXPECT_EQ(result.error.find('\n'), std::string::npos) << result.error;
        EXPECT_TRUE(NodeNamed(L"stays"));
    }
}

TEST_F(SceneFile, WhatIsNoSceneFileIsRefused) {
    const std::pair<const char*, const char*> cases[] = {
        {"", "line 1"},
        {"{\n \"format\": \"simhost-scene\",\n oops}", "line 3, column 2"},
        {"[]", "an object"},
        {"{}", "\"format\""},
        {R"({"format": "simhost-scene"})", "\"version\" is missing"},
        {R"({"format": "simhost-scene", "version": 2})", "version 1"}};
    for (const auto& [text, complaint] : cases) {
        const auto result = simhost::LoadSceneText(text);
        EXPECT_FALSE(result.ok) << text;
        EXPECT_NE(result.error.find(complaint), std::string::npos) << result.error;
    }
    const auto missing = simhost::LoadSceneFile(L"/tmp/no/such/scene.json");
    EXPECT_NE(missing.error.find("/tmp/no/such/scene.json: the file can't be read"),
              std::string::npos);
}

TEST_F(SceneFile, InlineEntriesAndRemarks) {
    OpenScene(
        R"("// remark": {"any": "thing"}, "nodes": [{"name": "n", "// why": 1, "object": {"class": "Sphere"},
      "material": {"class": "\rCoronaPhysicalMtl", "params": {"BASECOLOR": [1, 0, 0], "baseTexmap": {"class": "CoronaBitmap", "file": "x.png"}}}}])");
    simhost::Entity* mtl = simhost::EntityOf(MaterialOf(L"n"));
    EXPECT_EQ(std::get<Point3>(*mtl->Get(mtl->FindParam(L"baseColor"))), Point3(1, 0, 0));
    auto* map = simhost::EntityOf(mtl->SlotMap(mtl->FindSlot(L"baseTexmap")));
    ASSERT_TRUE(map);
    EXPECT_EQ(map->String(L"filename")->value(), L"x.png");
    std::string deep = "null";
    for (int i = 0; i < 200; ++i)
        deep = R"({"class": "Output", "params": {"map1": )" + deep + "}}";
    const auto result = simhost::LoadSceneText(
        R"({"format": "simhost-scene", "version": 1, "environment": {"map": )" + deep + "}}");
    EXPECT_NE(result.error.find("too deeply"), std::string::npos) << result.error;
}

TEST_F(SceneFile, ReferencesOfAnyKind) {
    OpenScene(R"("maps": {"x": {"class": "Noise"}}, "objects": {"y": {"class": "Box"}},
      "nodes": [{"name": "n", "object": "y", "material": {"class": "T", "blocks": [{"name": "b", "params": [
        {"name": "map", "type": "reftarg", "value": "x"}, {"name": "node", "type": "reftarg", "value": {"node": "n"}},
        {"name": "new", "type": "reftarg", "value": {"class": "Blinn"}}, {"name": "many", "type": "inode_tab", "value": ["n", null]}]}]}}])");
    simhost::Entity* mtl = simhost::EntityOf(MaterialOf(L"n"));
    const auto held = [&](const wchar_t* name) {
        return std::get<simhost::Ref<ReferenceTarget>>(*mtl->Get(mtl->FindParam(name))).Get();
    };
    EXPECT_TRUE(dynamic_cast<Texmap*>(held(L"map")));
    EXPECT_EQ(held(L"node"), NodeNamed(L"n"));
    EXPECT_EQ(held(L"new")->ClassName(false), L"Blinn");
    const auto twice = simhost::LoadSceneText(R"({"format": "simhost-scene", "version": 1,
      "maps": {"x": {"class": "Noise", "blocks": [{"name": "b", "params": [{"name": "r", "type": "reftarg", "value": "x"}]}]}}, "materials": {"x": {"class": "Blend"}}})");
    EXPECT_NE(twice.error.find("several things"), std::string::npos) << twice.error;
}

TEST_F(SceneFile, TheExampleOfTheDocumentLoads) {
    std::ifstream file(brimwave::testing::SourcePath("docs/scene-file.md"));
    std::stringstream text;
    text << file.rdbuf();
    const std::string page = text.str();
    const size_t from = page.find("```json") + 7;
    const auto result = simhost::LoadSceneText(page.substr(from, page.find("```", from) - from));
    ASSERT_TRUE(result.ok) << result.error;
    EXPECT_EQ(MaterialOf(L"Table")->GetName(), L"Oak");
    // The page names every call that can be made to throw.
    for (int i = 0; i < static_cast<int>(simhost::Call::NumberOfCalls); ++i) {
        const std::string name(simhost::NameOfCall(static_cast<simhost::Call>(i)));
        EXPECT_EQ(simhost::CallOfName(name), static_cast<simhost::Call>(i));
        EXPECT_NE(page.find(name), std::string::npos) << name;
    }
}

TEST_F(SceneFile, LargeMeshesAndManyNodesLoadInOneGo) {
    std::string triangles, nodes;
    for (int i = 0; i < 100000; ++i)
        triangles += (i ? ",0,1,2" : "0,1,2");
    for (int i = 0; i < 20000; ++i)
        nodes += std::string(i ? "," : "") + R"({"name": "Box)" + std::to_string(i) +
                 R"(", "object": "o", "parent": )" + (i ? R"("Box0")" : "null") + "}";
    OpenScene(
        R"("objects": {"o": {"class": "Editable Mesh", "mesh": {"positions": [0,0,0,1,0,0,0,1,0], "triangles": [)" +
        triangles + R"(]}}}, "nodes": [)" + nodes + "]");
    EXPECT_EQ(NodeNamed(L"Box0")->NumberOfChildren(), 19999);
    EXPECT_EQ(
        dynamic_cast<TriObject*>(NodeNamed(L"Box7")->EvalWorldState(0).obj)->mesh.getNumFaces(),
        100000);
}

} // namespace
