// Scripts over the scene, through the SDK's way in.
#include <maxscript/maxscript.h>

#include <gtest/gtest.h>

#include "simhost/core/host.h"
#include "simhost/files/scene_file.h"
#include "simhost/scene/scene.h"
#include "tests/standins/simhost_script/script_kit.h"
#include "text/utf8.h"

namespace simhost::script {
namespace {

constexpr const char* room = R"({
  "format": "simhost-scene", "version": 1, "file_name": "C:\\Scenes\\room.max",
  "renderer": {"class": "Corona", "params": {
    "bg_source": 2, "bg_color": [1, 0.5, 0], "bg_texmap": "wood",
    "displacement_amount": 2, "displacement_relative": true}},
  "color_pipeline": {"mode": "gamma", "display_gamma": 2.2},
  "maps": {
    "wood": {"class": "Bitmap", "name": "Wood", "file": "textures/wood.jpg"}},
  "materials": {
    "oak": {"class": "Physical Material", "name": "Oak",
            "params": {"roughness": 0.35, "base_color_map": "wood"}},
    "paint": {"class": "VRayMtl", "name": "Paint"},
    "both": {"class": "Multi/Sub-Object", "name": "Both", "sub_materials": ["oak", "paint"]},
    "loop": {"class": "Multi/Sub-Object", "name": "Loop", "sub_materials": ["loop", null]},
    "bad": {"class": "Physical Material", "name": "Bad", "throws": true, "throw_kind": "other"}},
  "objects": {
    "cube": {"class": "Box", "params": {"length": 10, "width": 20, "height": 30}},
    "wire": {"class": "Line", "splines": [{"points": [[0,0,0],[100,0,0]]}],
             "params": {"render_renderable": true}},
    "thin": {"class": "Line", "splines": [{"points": [[0,0,0],[100,0,0]]}],
             "params": {"render_renderable": false}}},
  "nodes": [
    {"name": "Box001", "object": "cube", "material": "both", "wire_color": [255, 0, 0],
     "transform": {"position": [1, 2, 3], "scale": [-1, 1, 2]}},
    {"name": "Line001", "object": "wire", "material": "oak"},
    {"name": "Line002", "object": "thin", "material": "loop", "hidden": true},
    {"name": "Broken", "object": "cube", "material": "bad"},
    {"name": "Group001", "group_head": true, "children": [
      {"name": "Inner", "object": "cube", "group_member": true},
      {"name": "Group002", "group_head": true, "group_member": true, "children": [
        {"name": "Deep", "object": "cube", "group_member": true}]}]}]})";

class SceneScripts : public testing::Test {
  protected:
    void SetUp() override {
        const LoadResult loaded = LoadSceneText(room);
        ASSERT_TRUE(loaded) << loaded.error;
    }
    void TearDown() override { Scene::Reset(); }

    // The string result of a script, or "! " and the message of the last error in the log.
    static std::string Run(const std::string& script) {
        FPValue value;
        value.Init();
        const std::wstring text = utf8::ToWide(script);
        if (!ExecuteMAXScriptScript(text.c_str(), MAXScript::ScriptSource::NonEmbedded, TRUE,
                                    &value, TRUE))
            return "! " + utf8::FromWide(HostLog().back().text);
        return value.type == TYPE_STRING ? utf8::FromWide(value.s)
                                         : "type " + std::to_string(value.type);
    }
    static std::string Text(const std::string& expression) {
        return Run("((" + expression + ") as string)");
    }
    static void Expect(std::initializer_list<Row> rows) {
        for (const Row& row : rows)
            EXPECT_EQ(Text(row.script), row.result) << "script: " << row.script;
    }
};

TEST_F(SceneScripts, GiveTheirResultBackByType) {
    EXPECT_EQ(Run("\"text\""), "text");
    EXPECT_EQ(Run("1 + 1"), "type " + std::to_string(TYPE_INT));
    EXPECT_EQ(Run("1.5"), "type " + std::to_string(TYPE_FLOAT));
    EXPECT_EQ(Run("true"), "type " + std::to_string(TYPE_BOOL));
    EXPECT_EQ(Run("undefined"), "type " + std::to_string(TYPE_VOID));
    EXPECT_EQ(Run("(a = )"), "! -- Syntax error: at ), expected <factor> (line 1, column 6)");
    EXPECT_EQ(Run("undefined.x"), "! -- Unknown property: \"x\" in undefined (line 1, column 10)");
    EXPECT_EQ(ExecuteMAXScriptScript(nullptr, MAXScript::ScriptSource::NonEmbedded, TRUE, nullptr),
              FALSE);
    const size_t logged = HostLog().size();
    ExecuteMAXScriptScript(L"(", MAXScript::ScriptSource::NonEmbedded, TRUE, nullptr, FALSE);
    EXPECT_EQ(HostLog().size(), logged);
}

TEST_F(SceneScripts, SeeEveryNode) {
    Expect({
        {"for o in objects where o.parent == undefined collect o.name",
         "#(\"Box001\", \"Line001\", \"Line002\", \"Broken\", \"Group001\")"},
        {"objects.count", "8"},
        {"for o in rootNode.children collect o.children.count", "#(0, 0, 0, 0, 2)"},
        {"for o in objects where superClassOf o == shape collect o.isHidden", "#(false, true)"},
        {"for o in objects where isGroupHead o collect classOf o", "#(Dummy, Dummy)"},
        {"$Box001", "$Box:Box001 @ [1.000000,2.000000,3.000000]"},
        {"$box001 == $Box001", "true"},
        {"$nothing", "undefined"},
        {"for o in $line* collect o.name", "#(\"Line001\", \"Line002\")"},
        {"classOf objects", "ObjectSet"},
    });
}

TEST_F(SceneScripts, ReadAndWriteNodeProperties) {
    Expect({
        {"$Box001.wirecolor", "(color 255 0 0)"},
        {"$Box001.length + $Box001.width", "30.0"},
        {"($Box001.height = 5; $Box001.height)", "5.0"},
        {"($Box001.name = \"New\"; $New.name)", "New"},
        {"($New.parent = $Line001; $New.parent.name)", "Line001"},
        {"try ($Line001.parent = $New; \"linked\") catch (\"refused\")", "refused"},
        {"($New.parent = undefined; $New.parent)", "undefined"},
        {"($New.material = undefined; $New.material)", "undefined"},
        {"try ($New.material = $Line001; \"\") catch (getCurrentException())",
         "-- Unable to convert: $line:Line001 @ [0.000000,0.000000,0.000000] to type: Material"},
        {"$Line001.render_renderable", "true"},
        {"try ($New.render_renderable) catch (getCurrentException())",
         "-- Unknown property: \"render_renderable\" in $Box:New @ [1.000000,2.000000,3.000000]"},
        {"($New.wirecolor = color 1 2 3; $New.wirecolor)", "(color 1 2 3)"},
        {"#(isProperty $New #length, isProperty $New #radius)", "#(true, false)"},
        {"getPropNames $New",
         "#(#length, #width, #height, #lengthsegs, #widthsegs, #heightsegs, #mapcoords)"},
        {"for p in getPropNames $New collect getProperty $New p",
         "#(10.0, 20.0, 5.0, 1, 1, 1, true)"},
        {"(setProperty $New #width 7; $New.width)", "7.0"},
    });
}

TEST_F(SceneScripts, CopyAndDeleteNodes) {
    Expect({
        {"(local n = copy $Line001; #(n.name, n.baseObject == $Line001.baseObject))",
         "#(\"Line003\", false)"},
        {"(local n = copy $Line001; delete n; #(isValidNode n, n == undefined, n as string))",
         "#(false, false, \"<Deleted scene node>\")"},
        {"(local n = copy $Line001; delete n; try (n.name) catch (getCurrentException()))",
         "-- attempt to access a deleted scene object"},
        {"(local n = copy $Group001; #(n.name, n.children.count))", "#(\"Group003\", 0)"},
        {"try (delete (getSubMtl $Box001.material 1)) catch (getCurrentException())",
         "-- No \"delete\" function for Oak:PhysicalMaterial"},
        {"(delete $Line*; objects.count)", "7"},
        {"try (delete rootNode; 1) catch (2)", "2"},
    });
}

TEST_F(SceneScripts, LoopOverALiveSceneOnlyThroughACollectedList) {
    EXPECT_EQ(
        Text("(local all = for o in objects collect o; for o in all do copy o; objects.count)"),
        "16");
    EXPECT_EQ(Text("(for o in (objects as array) do delete o; objects.count)"), "0");
}

TEST_F(SceneScripts, ConvertGeometry) {
    Expect({
        {"classOf (convertToMesh $Box001)", "Editable_mesh"},
        {"getNumFaces $Box001", "12"},
        {"convertToMesh $Group001", "undefined"},
        {"classOf (convertToMesh $Line001)", "Editable_mesh"},
        {"getNumFaces $Line001 > 0", "true"},
        {"(convertToMesh $Line002; getNumFaces $Line002)", "0"},
        {"classOf (convertToPoly $Inner)", "Editable_Poly"},
        {"try (getNumFaces $Deep) catch (getCurrentException())",
         "-- No \"getNumFaces\" function for $Box:Deep @ [0.000000,0.000000,0.000000]"},
        {"try (convertToMesh 5) catch (getCurrentException())",
         "-- No \"convertToMesh\" function for 5"},
    });
}

TEST_F(SceneScripts, OpenGroupsLevelByLevel) {
    Expect({
        {"(ungroup $Group001; for o in objects where isGroupHead o collect o.name)",
         "#(\"Group002\")"},
        {"#($Inner.parent, isGroupMember $Inner, $Deep.parent.name)",
         "#(undefined, false, \"Group002\")"},
        {"(ungroup $Inner; objects.count)", "7"}, // no head: nothing happens
    });
}

TEST_F(SceneScripts, WalkMaterialsAndMaps) {
    Expect({
        {"for m in sceneMaterials collect (try (m.name) catch (\"?\"))",
         "#(\"Both\", \"Oak\", \"Loop\", \"?\")"},
        {"sceneMaterials[\"oak\"].name", "Oak"},
        {"getNumSubMtls $Box001.material", "2"},
        {"(getSubMtl $Box001.material 2) as string", "Paint:VRayMtl"},
        {"getSubMtl $Line002.material 2", "undefined"},
        {"(local m = $Line001.material; for i = 1 to (getNumSubTexmaps m) where "
         "(getSubTexmap m i) != undefined collect (getSubTexmap m i).name)",
         "#(\"Wood\")"},
        {"(local t = $Line001.material.base_color_map; #(superClassOf t == textureMap, "
         "t.filename))",
         "#(true, \"textures/wood.jpg\")"},
        {"try (getNumSubMtls $Line001.material.base_color_map) catch (getCurrentException())",
         "-- Unable to convert: Wood:Bitmaptexture to type: Material"},
        {"$Line001.material.roughness", "0.35"},
        {"$Line001.material.base_color", "(color 127.5 127.5 127.5)"},
        {"($Line001.material.base_color = color 255 0 0; $Line001.material.base_color)",
         "(color 255 0 0)"},
        {"($Line001.material.base_color.g = 51; $Line001.material.base_color)", "(color 255 51 0)"},
        {"$Line001.material.base_color_map.output.Output_Amount", "1.0"},
        {"try ($Line001.material.output) catch (getCurrentException())",
         "-- Unknown property: \"output\" in Oak:PhysicalMaterial"},
        {"(physicalMaterial name:\"P\" roughness:0.25).roughness", "0.25"},
        // A class that throws at every call is an error like any other.
        {"try ($Broken.material.roughness) catch (getCurrentException())",
         "-- Runtime error: System exception"},
    });
}

TEST_F(SceneScripts, FindAGradientRampsFlags) {
    ASSERT_TRUE(LoadSceneText(R"({"format": "simhost-scene", "version": 1,
        "environment": {"map": {"class": "Gradient Ramp", "name": "Ramp"}}})"));
    Expect({
        {"environmentMap.gradient_ramp.flag__1.color", "(color 0 0 0)"},
        {"environmentMap.gradient_ramp.flag__2.position", "100.0"},
        {"(local r = environmentMap.gradient_ramp; getProperty r #flag__3).position", "50.0"},
        {"try (environmentMap.gradient_ramp.flag__4; 1) catch (2)", "2"},
    });
}

TEST_F(SceneScripts, PrintHandlesWithTheirLetter) {
    const std::string handle = Text("getHandleByAnim $Line001.material");
    EXPECT_EQ(handle.back(), 'P');
    EXPECT_EQ(Animatable::GetAnimByHandle(std::stoull(handle)),
              Scene::Current().FindByName(L"Line001")->GetMtl());
    for (const std::string& form :
         {handle, handle.substr(0, handle.size() - 1), handle.substr(0, handle.size() - 1) + "L"}) {
        EXPECT_EQ(Text("(getAnimByHandle " + form + ").name"), "Oak") << form;
    }
    EXPECT_EQ(Text("getAnimByHandle 99999999P"), "undefined");
}

TEST_F(SceneScripts, ProbeRendererAndColourPipeline) {
    Expect({
        {"renderers.current.displacement_amount", "2.0"},
        {"renderers.current.displacement_relative", "true"},
        {"renderers.current.bg_color.g / 255.0", "0.5"},
        {"renderers.current.bg_texmap.name", "Wood"},
        {"try (renderers.current.nothing) catch (\"none\")", "none"},
        {"try (renderers.current = $Box001) catch (getCurrentException())",
         "-- Unable to convert: $Box:Box001 @ [1.000000,2.000000,3.000000] to type: Renderer"},
        {"colorPipelineMgr.mode", "gamma"},
        {"try (colorPipelineMgr.RenderingColorSpace) catch (\"none\")", "none"},
        {"colorPipelineMgr.displayGamma", "2.2"},
        {"(maxVersion())[8]", "2024"},
    });
    Scene::Reset();
    EXPECT_EQ(Text("try (colorPipelineMgr.mode) catch (\"no manager\")"), "no manager");
}

TEST_F(SceneScripts, SayWhatThisHostDoesNotHave) {
    EXPECT_EQ(Run("(delete $Box001; polyop.getNumVerts $Line001)"),
              "! -- Compile error: unknown name: polyop (line 1, column 18)");
    EXPECT_EQ(Text("isValidNode $Box001"), "true"); // refused before anything ran
}

// What a script does that goes through the classes and writes down what they have.
TEST_F(SceneScripts, WriteDownTheClassesProperties) {
    const Folder folder;
    EXPECT_EQ(Run("(local path = \"" + folder.Path() +
                  R"(\classes.txt"
        local f = createFile path
        for c in #(Box, Noise, CoronaDisplacementMod) do
        (
            local made = c()
            local names = getPropNames made
            format "% % %\n" (classOf made) (superClassOf made) names.count to:f
            for n in names where not (isProperty made n) do format "lacks %\n" n to:f
            setProperty made names[names.count] (getProperty made names[names.count])
        )
        close f
        path)"
                  ")"),
              folder.Path() + "\\classes.txt");
    const std::string text = ReadFile(folder.Path() + "/classes.txt");
    EXPECT_NE(text.find("Box GeometryClass 7\n"), std::string::npos) << text;
    EXPECT_NE(text.find("CoronaDisplacementMod modifier 9\n"), std::string::npos) << text;
    EXPECT_EQ(text.find("lacks"), std::string::npos) << text;
}

TEST_F(SceneScripts, KeepGlobalsBetweenRuns) {
    Run("::mxsKept = $Line001");
    EXPECT_EQ(Text("::mxsKept.name"), "Line001");
    Scene::Reset();
    EXPECT_EQ(Text("isValidNode ::mxsKept"), "false");
}

} // namespace
} // namespace simhost::script
