#include "scene_kit.h"

#include "simhost/core/host.h"
#include "simhost/scene/derived_object.h"
#include "simhost/scene/snapshot.h"

#include <IFileResolutionManager.h>
#include <max.h>
#include <maxscript/maxscript.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <set>

namespace {

using simhost::Scene;
using simhost::SceneNode;
using Tree = SceneTest;

void ExpectPlace(SceneNode* node, const Point3& place) {
    const Point3 at = node->GetNodeTM(0).GetTrans();
    for (int k = 0; k < 3; ++k)
        EXPECT_NEAR(at[k], place[k], 1e-3) << simhost::SnapshotScene();
}

// A node list that was kept for the scene before must not be taken for this one's, even when the
// new scene stands at the same address.
TEST_F(Tree, NoTwoScenesShareARevision) {
    std::set<unsigned long> seen;
    for (int i = 0; i < 3; ++i) {
        Scene::Reset();
        EXPECT_TRUE(seen.insert(Scene::Current().Revision()).second);
        Scene::Current().Touch();
        EXPECT_TRUE(seen.insert(Scene::Current().Revision()).second);
    }
}

TEST_F(Tree, TransformsComeFromTheParents) {
    OpenScene(R"("nodes": [
      {"name": "a", "transform": {"position": [10, 0, 0], "rotation": [0, 0, 90]}, "children": [
        {"name": "b", "transform": {"position": [5, 0, 0], "scale": 2}}]},
      {"name": "c", "parent": "b", "transform": {"position": [1, 0, 0]}},
      {"name": "d", "parent": "b", "world_transform": {"position": [7, 7, 7], "rotation": [0, 0, 0.7071068, 0.7071068]}},
      {"name": "o", "object_offset": {"position": [0, 0, 3], "scale": [1, 2, 1]}, "transform": {"matrix": [[1,0,0],[0,1,0],[0,0,1],[4,5,6]]}}])");
    ExpectPlace(NodeNamed(L"b"), {10, 5, 0});
    ExpectPlace(NodeNamed(L"c"), {10, 7, 0});
    ExpectPlace(NodeNamed(L"d"), {7, 7, 7});
    EXPECT_NEAR(NodeNamed(L"d")->GetNodeTM(0)[0].y, 1, 1e-5);
    const Point3 p = Point3(0, 1, 0) * NodeNamed(L"o")->GetObjectTM(0);
    EXPECT_EQ(p, Point3(4, 7, 9));
    NodeNamed(L"a")->SetNodeTM(0, Matrix3());
    ExpectPlace(NodeNamed(L"c"), {7, 0, 0});
    INode* root = GetCOREInterface()->GetRootNode();
    EXPECT_TRUE(root->IsRootNode());
    EXPECT_EQ(root->NumberOfChildren(), 2);
    EXPECT_EQ(NodeNamed(L"b")->GetChildNode(1), NodeNamed(L"d"));
    EXPECT_EQ(NodeNamed(L"b")->GetChildNode(2), nullptr);
}

TEST_F(Tree, DeletingKeepsTheChildrenInPlace) {
    OpenScene(
        R"("nodes": [{"name": "a", "transform": {"position": [10, 0, 0]}, "selected": true, "children": [
       {"name": "b", "transform": {"position": [5, 0, 0]}, "target": "t"}, {"name": "t"}]}])");
    const ULONG handle = NodeNamed(L"a")->GetHandle();
    EXPECT_TRUE(NodeNamed(L"t")->IsTarget());
    EXPECT_EQ(NodeNamed(L"t")->EvalWorldState(0).obj->ClassName(false), L"Target");
    GetCOREInterface()->DeleteNode(NodeNamed(L"a"));
    EXPECT_EQ(NodeNamed(L"a"), nullptr);
    EXPECT_EQ(GetCOREInterface()->GetINodeByHandle(handle), nullptr);
    EXPECT_EQ(GetCOREInterface()->GetSelNodeCount(), 0);
    ExpectPlace(NodeNamed(L"b"), {15, 0, 0});
    EXPECT_TRUE(NodeNamed(L"b")->GetParentNode()->IsRootNode());
    GetCOREInterface()->DeleteNode(NodeNamed(L"t"));
    EXPECT_EQ(NodeNamed(L"b")->GetTarget(), nullptr);
}

TEST_F(Tree, ParentsChangeButNeverIntoACircle) {
    OpenScene(
        R"("nodes": [{"name": "a", "transform": {"position": [1, 0, 0]}, "children": [{"name": "b"}]}, {"name": "c", "transform": {"position": [0, 9, 0]}}])");
    SceneNode *a = NodeNamed(L"a"), *b = NodeNamed(L"b"), *c = NodeNamed(L"c");
    b->AttachChild(a);
    EXPECT_EQ(b->GetParentNode(), a);
    c->AttachChild(a);
    ExpectPlace(b, {1, 0, 0});
    Scene::Current().SetParent(*a, nullptr, false);
    ExpectPlace(a, {1, -9, 0});
    EXPECT_EQ(c->NumberOfChildren(), 0);
}

TEST_F(Tree, NamesAreFoundAsTheyChange) {
    OpenScene(R"("nodes": [{"name": "Line001"}, {"name": "Line001"}, {"name": "Box"}])");
    SceneNode* first = NodeNamed(L"Line001");
    first->SetName(L"x");
    EXPECT_NE(NodeNamed(L"Line001"), first);
    EXPECT_EQ(NodeNamed(L"x"), first);
    EXPECT_EQ(Scene::Current().UniqueName(L"Line001"), L"Line002");
    EXPECT_EQ(Scene::Current().UniqueName(L"Box"), L"Box001");
    first->SetName(L"Line003");
    EXPECT_EQ(Scene::Current().UniqueName(L"Line"), L"Line004");
}

// Renamings are entered when somebody looks.
TEST_F(Tree, NamesAreFoundAfterAnyRenaming) {
    OpenScene(R"("nodes": [{"name": "a"}, {"name": "a"}, {"name": "b"}])");
    Scene& scene = Scene::Current();
    INode* const root = GetCOREInterface()->GetRootNode();
    INode* const first = root->GetChildNode(0);
    INode* const second = root->GetChildNode(1);
    INode* const third = root->GetChildNode(2);
    first->SetName(L"b");
    EXPECT_EQ(scene.FindByName(L"a"), second);
    EXPECT_EQ(scene.FindByName(L"b"), first); // of two the older
    first->SetName(L"c");
    first->SetName(L"a");
    second->SetName(L"c");
    third->SetName(L"c");
    EXPECT_EQ(scene.FindByName(L"a"), first);
    EXPECT_EQ(scene.FindByName(L"b"), nullptr);
    EXPECT_EQ(scene.FindByName(L"c"), second);
    second->SetName(L"gone");
    scene.DeleteNode(static_cast<SceneNode*>(second));
    EXPECT_EQ(scene.FindByName(L"gone"), nullptr);
    EXPECT_EQ(scene.FindByName(L"c"), third);
}

TEST_F(Tree, CopiesHaveObjectAndStackOfTheirOwn) {
    OpenScene(
        R"("objects": {"o": {"class": "Box", "params": {"height": 7}, "modifiers": [{"class": "CoronaDisplacementMod", "params": {"maxDisplace": 3}}]}},
      "nodes": [{"name": "p", "transform": {"position": [1, 2, 3]}, "children": [{"name": "a", "object": "o", "material": {"class": "Blend"}, "wire_color": [1, 2, 3]}]}])");
    Scene& scene = Scene::Current();
    SceneNode* a = NodeNamed(L"a");
    SceneNode* copy = scene.CopyNode(*a);
    EXPECT_EQ(copy->Name(), L"a001");
    auto* stack = dynamic_cast<IDerivedObject*>(copy->GetObjectRef());
    ASSERT_TRUE(stack);
    EXPECT_NE(stack, a->GetObjectRef());
    EXPECT_NE(stack->GetModifier(0),
              dynamic_cast<IDerivedObject*>(a->GetObjectRef())->GetModifier(0));
    EXPECT_EQ(simhost::EntityOf(stack->GetModifier(0))->Float(L"maxDisplace"), 3);
    EXPECT_EQ(simhost::EntityOf(stack->GetObjRef())->Float(L"height"), 7);
    EXPECT_EQ(copy->GetMtl(), a->GetMtl());
    EXPECT_EQ(copy->GetWireColor(), 0x030201u);
    ExpectPlace(copy, {1, 2, 3});
}

TEST_F(Tree, GroupsComeApartOneLevelAtATime) {
    OpenScene(
        R"("nodes": [{"name": "outer", "group_head": true, "transform": {"position": [5, 0, 0]}, "children": [
       {"name": "inner", "group_head": true, "group_member": true, "children": [{"name": "x", "group_member": true, "transform": {"position": [1, 0, 0]}}]}]}])");
    Scene& scene = Scene::Current();
    EXPECT_EQ(NodeNamed(L"outer")->GetObjectRef()->ClassName(false), L"Dummy");
    EXPECT_FALSE(scene.Ungroup(NodeNamed(L"x")));
    EXPECT_TRUE(scene.Ungroup(NodeNamed(L"inner")));
    EXPECT_EQ(NodeNamed(L"x")->Parent(), NodeNamed(L"outer"));
    EXPECT_TRUE(NodeNamed(L"x")->IsGroupMember());
    EXPECT_TRUE(scene.Ungroup(NodeNamed(L"outer")));
    EXPECT_FALSE(NodeNamed(L"x")->IsGroupMember());
    ExpectPlace(NodeNamed(L"x"), {6, 0, 0});
    EXPECT_EQ(NodeNamed(L"outer"), nullptr);
}

TEST_F(Tree, CollapsingAndResettingKeepTheShapeInTheWorld) {
    OpenScene(R"("objects": {"o": {"class": "Box", "params": {"height": 10}}},
      "nodes": [{"name": "a", "object": "o", "object_offset": {"position": [0, 0, 1]}, "transform": {"position": [5, 0, 0], "rotation": [0, 0, 90], "scale": [-2, 1, 3]},
                 "children": [{"name": "child", "transform": {"position": [1, 0, 0]}}]},
                {"name": "twin", "object": "o"}, {"name": "lamp", "object": {"class": "Omni"}}])");
    Scene& scene = Scene::Current();
    SceneNode* a = NodeNamed(L"a");
    const auto corner = [&](int i) {
        Mesh mesh;
        EXPECT_TRUE(simhost::MeshOf(a->GetObjectRef(), mesh));
        return mesh.getVert(i) * a->GetObjectTM(0);
    };
    const Point3 before = corner(0), last = corner(7),
                 child = NodeNamed(L"child")->WorldTM().GetTrans();
    ASSERT_TRUE(scene.CollapseToPoly(*a));
    EXPECT_EQ(a->EvalWorldState(0).obj->ClassName(false), L"Editable Poly");
    EXPECT_EQ(NodeNamed(L"twin")->EvalWorldState(0).obj->ClassName(false), L"Box");
    scene.ResetXForm(*a);
    EXPECT_NEAR(Length(corner(0) - before) + Length(corner(7) - last), 0, 1e-3);
    EXPECT_EQ(a->GetNodeTM(0).GetRow(0), Point3(1, 0, 0));
    ExpectPlace(NodeNamed(L"child"), child);
    ASSERT_TRUE(scene.CollapseToMesh(*a));
    EXPECT_NEAR(Length(corner(7) - last), 0, 1e-3);
    EXPECT_FALSE(scene.CollapseToMesh(*NodeNamed(L"lamp")));
}

TEST_F(Tree, SelectionAndMaterials) {
    OpenScene(R"("materials": {"m": {"class": "Blend"}, "unused": {"class": "Blend"}},
       "nodes": [{"name": "a", "material": "m"}, {"name": "b", "material": "m"}], "selection": ["b", "a"])");
    Interface* core = GetCOREInterface();
    ASSERT_EQ(core->GetSelNodeCount(), 2);
    EXPECT_EQ(core->GetSelNode(0), NodeNamed(L"b"));
    core->SelectNode(NodeNamed(L"a"));
    EXPECT_EQ(core->GetSelNodeCount(), 1);
    EXPECT_FALSE(NodeNamed(L"b")->Selected());
    EXPECT_EQ(core->GetSceneMtls()->Count(), 1);
    NodeNamed(L"b")->SetMtl(nullptr);
    NodeNamed(L"a")->SetMtl(nullptr);
    EXPECT_EQ(core->GetSceneMtls()->Count(), 0);
}

TEST_F(Tree, SnapshotsTellEveryChange) {
    constexpr const char* scene =
        R"("nodes": [{"name": "a", "object": {"class": "Box"}, "material": {"class": "Physical Material", "name": "M"}}, {"name": "b"}])";
    using Change = void (*)();
    const Change changes[] = {
        [] { NodeNamed(L"a")->SetName(L"z"); },
        [] { NodeNamed(L"b")->AttachChild(NodeNamed(L"a")); },
        [] {
            NodeNamed(L"a")->SetNodeTM(0, Matrix3({1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {0, 0, 1e-6f}));
        },
        [] { NodeNamed(L"a")->Hide(TRUE); },
        [] { MaterialOf(L"a")->SetName(L"N"); },
        [] { MaterialOf(L"a")->GetParamBlock(0)->SetValue(1, 0, 0.5f); },
        [] { NodeNamed(L"a")->SetMtl(nullptr); },
        [] { Scene::Current().CollapseToMesh(*NodeNamed(L"a")); },
        [] { Scene::Current().DeleteNode(NodeNamed(L"b")); },
        [] { Scene::Current().Select(NodeNamed(L"b")); }};
    OpenScene(scene);
    const std::string before = simhost::SnapshotScene();
    for (size_t i = 0; i < std::size(changes); ++i) {
        OpenScene(scene);
        EXPECT_EQ(simhost::SnapshotScene(), before);
        changes[i]();
        EXPECT_NE(simhost::SnapshotScene(), before) << "change " << i;
    }
}

TEST_F(Tree, HostAnswersFromTheSettings) {
    OpenScene(
        R"("file_name": "C:\\Scenes\\Room.max", "units": {"type": "centimeters", "scale": 2}, "time": 480,
      "directories": {"26": "C:\\settings"}, "render": {"width": 200, "height": 100, "pixel_aspect": 1.5},
      "environment": {"background": [0.1, 0.2, 0.3], "use_map": true, "map": {"class": "CoronaSky"}})");
    Interface* core = GetCOREInterface();
    EXPECT_EQ(core->GetCurFileName(), L"Room.max");
    EXPECT_EQ(core->GetCurFilePath(), L"C:\\Scenes\\Room.max");
    EXPECT_NEAR(GetSystemUnitScale(UNITS_METERS), 0.02, 1e-9);
    EXPECT_EQ(GetSystemUnitScale(99), -1);
    EXPECT_EQ(core->GetTime(), 480);
    EXPECT_STREQ(core->GetDir(26), L"C:\\settings");
    EXPECT_STREQ(core->GetDir(0), L"");
    EXPECT_EQ(core->GetRendImageAspect(), 3);
    Interval valid = FOREVER;
    EXPECT_EQ(core->GetBackGround(0, valid), Point3(0.1f, 0.2f, 0.3f));
    EXPECT_TRUE(core->GetUseEnvironmentMap());
    EXPECT_EQ(core->GetEnvironmentMap()->ClassName(false), L"CoronaSky");
    EXPECT_EQ(core->GetCurrentRenderer()->ClassName(false), L"Scanline Renderer");
    simhost::HostLog().clear();
    core->Log()->LogEntry(SYSLOG_WARN, NO_DIALOG, L"t", L"%s: %d %5.1f%%", L"größe", 3, 2.5);
    ASSERT_EQ(simhost::HostLog().size(), 1u);
    EXPECT_EQ(simhost::HostLog()[0].text, L"größe: 3   2.5%");
}

TEST_F(Tree, HostFaultsOnDemand) {
    Interface* core = GetCOREInterface();
    OpenScene(
        R"("faults": {"exporter": "refuses", "throws": ["GetEnvironmentMap"]}, "unit_scale_override": 0,
                 "nodes": [{"name": "n", "throws": ["EvalWorldState"]}])");
    EXPECT_THROW((void)core->GetEnvironmentMap(), std::runtime_error);
    EXPECT_THROW((void)NodeNamed(L"n")->EvalWorldState(0), std::runtime_error);
    EXPECT_EQ(GetSystemUnitScale(UNITS_METERS), 0);
    EXPECT_FALSE(core->ExportToFile(L"/tmp/never_written.fbx", TRUE));
    OpenScene(
        R"("faults": {"answers_nothing": ["GetRootNode", "GetEnvironmentMap", "GetCurFilePath",
                                                "GetInstance", "ExecuteMAXScriptScript"]},
                 "file_name": "C:\\a.max", "environment": {"map": {"class": "Checker"}},
                 "nodes": [{"name": "n", "object": {"class": "Box"},
                            "answers_nothing": ["EvalWorldState", "GetName"]}])");
    EXPECT_EQ(core->GetRootNode(), nullptr);
    EXPECT_EQ(core->GetEnvironmentMap(), nullptr);
    EXPECT_STREQ(core->GetCurFilePath().data(), L"");
    EXPECT_EQ(IFileResolutionManager::GetInstance(), nullptr);
    EXPECT_FALSE(ExecuteMAXScriptScript(L"1", MAXScript::ScriptSource::NonEmbedded, TRUE));
    EXPECT_EQ(NodeNamed(L"n")->EvalWorldState(0).obj, nullptr);
    EXPECT_EQ(NodeNamed(L"n")->GetName(), nullptr);
    OpenScene(R"("faults": {"exporter": "writes_nothing"})");
    EXPECT_TRUE(core->ExportToFile(L"/tmp/never_written.fbx", TRUE));
    EXPECT_EQ(GetFileAttributesW(L"/tmp/never_written.fbx"), INVALID_FILE_ATTRIBUTES);
    OpenScene("");
    EXPECT_FALSE(core->ExportToFile(L"/tmp/never_written.xyz", TRUE)); // no exporter for it
}

TEST_F(Tree, FilesAreFoundInTheSearchFolders) {
    char pattern[] = "/tmp/simhost_maps_XXXXXX";
    const std::filesystem::path folder = mkdtemp(pattern);
    std::filesystem::create_directories(folder / "tex/sub");
    std::ofstream(folder / "tex/wood.png") << "x";
    std::ofstream(folder / "tex/sub/a.ies") << "x";
    std::ofstream(folder / "scene.json")
        << R"({"format": "simhost-scene", "version": 1, "map_paths": ["tex"]})";
    ASSERT_TRUE(simhost::LoadSceneFile((folder / "scene.json").wstring()).ok);
    const auto find = [](const wchar_t* name) {
        return std::wstring(IFileResolutionManager::GetInstance()->GetFullFilePath(
            name, MaxSDK::AssetManagement::kBitmapAsset));
    };
    EXPECT_NE(find(L"D:\\elsewhere\\wood.png").find(L"wood.png"), std::wstring::npos);
    EXPECT_NE(find(L"sub\\a.ies"), L"");
    EXPECT_EQ(find(L"a.ies"), L"");
    EXPECT_EQ(find(L""), L"");
    const std::wstring whole = (folder / "tex/wood.png").wstring();
    EXPECT_EQ(find(whole.c_str()), whole);
    Scene::Current().findsFiles = false;
    EXPECT_EQ(find(whole.c_str()), L"");
    std::filesystem::remove_all(folder);
}

/// Large trees have to stay linear: these would take minutes otherwise.
TEST_F(Tree, AHundredThousandNodes) {
    Scene& scene = Scene::Current();
    std::vector<SceneNode*> nodes;
    SceneNode* parent = nullptr;
    for (int i = 0; i < 100000; ++i) {
        nodes.push_back(scene.CreateNode(scene.UniqueName(L"Box"), nullptr, parent));
        if (i < 5000)
            parent = nodes.back(); // a deep chain first, then many children of one
    }
    EXPECT_EQ(nodes.back()->Name(), L"Box100000");
    EXPECT_EQ(parent->NumberOfChildren(), 95000);
    nodes.front()->SetNodeTM(0, Matrix3({1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 0, 0}));
    EXPECT_EQ(nodes.back()->WorldTM().GetTrans().x, 1);
    EXPECT_EQ(scene.AllNodes().size(), 100000u);
    for (size_t i = 5000; i < nodes.size(); ++i)
        scene.DeleteNode(nodes[i]);
    EXPECT_EQ(parent->NumberOfChildren(), 0);
    EXPECT_EQ(scene.NodeCount(), 5000u);
}

} // namespace
