// The scene scripts as the host runs them.
#include "pipeline/scene_scripts.h"
#include "pipeline/vray_conversion.h"

#include "simhost/scene/snapshot.h"
#include "tests/pipeline/scene_kit.h"
#include "tests/support/temp_folder.h"

#include <gmock/gmock.h>
#include <triobj.h>

#include <algorithm>

namespace brimwave {
namespace {

using brimwave::testing::TempFolder;
using nlohmann::json;
using ::testing::HasSubstr;
using ::testing::StartsWith;

/// Splines of every kind: two that get twins ("Cable", below a helper, and a hidden one), one of
/// each reason not to, and a box.
json SplineScene() {
    json scene = EmptyScene();
    json notRendered = SplineNode("Not rendered");
    notRendered["object"]["params"]["render_renderable"] = false;
    json notRenderable = SplineNode("Not renderable");
    notRenderable["renderable"] = false;
    json empty = SplineNode("Empty");
    empty["object"]["splines"] = json::array();
    json hidden = SplineNode("Hidden \"q\" \\n Дуб");
    hidden["hidden"] = true;
    json extruded = SplineNode("Extruded"); // geometry already
    extruded["modifiers"] = {{{"class", "Extrude"}, {"params", {{"amount", 5}}}}};
    json cable = SplineNode("Cable");
    cable["wire_color"] = {1, 2, 3};
    const json holder = {{"name", "Holder"},
                         {"object", {{"class", "Point"}}},
                         {"transform", {{"position", {5, 6, 7}}}},
                         {"children", {cable, BoxNode("Box", nullptr)}}};
    scene["nodes"] = {holder,  notRendered, notRenderable,
                      empty,   hidden,      SplineNode("Done_bwSplineSrc"),
                      extruded};
    return scene;
}

TEST(SplineCopies, GiveRenderableSplinesATwinUnderTheirName) {
    OpenScene(SplineScene());
    const std::string before = simhost::SnapshotScene();
    const std::size_t nodes = AllNodes().size();
    EXPECT_EQ(RunSplineCopies(), 2);
    EXPECT_EQ(AllNodes().size(), nodes + 2);

    INode* const twin = NodeNamed(L"Cable");
    INode* const source = NodeNamed(L"Cable_bwSplineSrc");
    ASSERT_TRUE(twin && source);
    EXPECT_EQ(twin->EvalWorldState(0).obj->SuperClassID(), GEOMOBJECT_CLASS_ID);
    EXPECT_EQ(source->EvalWorldState(0).obj->SuperClassID(), SHAPE_CLASS_ID);
    EXPECT_EQ(twin->GetParentNode(), NodeNamed(L"Holder"));
    EXPECT_EQ(twin->GetWireColor(), source->GetWireColor());
    EXPECT_EQ(twin->GetNodeTM(0).GetTrans(), source->GetNodeTM(0).GetTrans());
    EXPECT_TRUE(NodeNamed(L"Hidden \"q\" \\n Дуб_bwSplineSrc"));
    for (const wchar_t* alone :
         {L"Not rendered", L"Not renderable", L"Empty", L"Done_bwSplineSrc", L"Extruded"})
        EXPECT_TRUE(NodeNamed(alone)) << ::testing::PrintToString(alone);

    RestoreSplineCopies();
    EXPECT_EQ(simhost::SnapshotScene(), before);
    RestoreSplineCopies(); // there is nothing left to do
    EXPECT_EQ(simhost::SnapshotScene(), before);
}

TEST(SplineCopies, ASecondPassWithoutRestoreMakesNoSecondTwin) {
    OpenScene(SplineScene());
    EXPECT_EQ(RunSplineCopies(), 2);
    const std::string once = simhost::SnapshotScene();
    EXPECT_EQ(RunSplineCopies(), 0);
    EXPECT_EQ(simhost::SnapshotScene(), once);
}

TEST(SplineCopies, SplinesOfOneNameEachGetTheirsBack) {
    json scene = EmptyScene();
    for (int i = 0; i < 3; ++i)
        scene["nodes"].push_back(SplineNode("Same"));
    OpenScene(scene);
    const std::string before = simhost::SnapshotScene();
    EXPECT_EQ(RunSplineCopies(), 3);
    RestoreSplineCopies();
    EXPECT_EQ(simhost::SnapshotScene(), before);
}

TEST(SplineCopies, AnotherSceneOfTheSameSizeIsAnotherScene) {
    json scene = EmptyScene();
    for (int i = 0; i < 50; ++i) {
        const std::string name = "Spline " + std::to_string(i);
        scene["nodes"] = json::array({SplineNode(name)});
        OpenScene(EmptyScene());
        OpenScene(scene); // often at the address of the one before last
        EXPECT_EQ(RunSplineCopies(), 1);
        EXPECT_TRUE(NodeNamed(std::wstring(name.begin(), name.end()) + L"_bwSplineSrc"));
    }
}

TEST(SplineCopies, OneThatThrowsStopsNoOther) {
    for (const json& throws : {json(true), json({"GetName"}), json({"SetName"}),
                               json({"EvalWorldState"}), json({"GetObjectRef"})}) {
        SCOPED_TRACE(throws.dump());
        json scene = SplineScene();
        scene["nodes"].push_back(SplineNode("Bad node"));
        scene["nodes"].back()["throws"] = throws;
        scene["nodes"].push_back(SplineNode("Bad object"));
        scene["nodes"].back()["object"]["throws"] = true;
        scene["nodes"].push_back(SplineNode("After"));
        OpenScene(scene);
        const std::string before = simhost::SnapshotScene();
        EXPECT_GE(RunSplineCopies(), 3);
        EXPECT_TRUE(NodeNamed(L"After_bwSplineSrc"));
        RestoreSplineCopies();
        EXPECT_EQ(simhost::SnapshotScene(), before);
    }
}

TEST(SplineCopies, ATwinThatTheUserDeletedIsNoObstacle) {
    OpenScene(SplineScene());
    EXPECT_EQ(RunSplineCopies(), 2);
    GetCOREInterface()->DeleteNode(NodeNamed(L"Cable"));
    GetCOREInterface()->DeleteNode(NodeNamed(L"Hidden \"q\" \\n Дуб_bwSplineSrc"));
    RestoreSplineCopies();
    EXPECT_TRUE(NodeNamed(L"Cable"));
    EXPECT_FALSE(NodeNamed(L"Hidden \"q\" \\n Дуб"));
}

/// Heads within heads; the innermost holds a box.
json NestedGroups(int depth) {
    json inside = BoxNode("Box", nullptr);
    inside["group_member"] = true;
    for (int i = 0; i < depth; ++i) {
        inside = {{"name", "Group" + std::to_string(i)},
                  {"group_head", true},
                  {"group_member", i + 1 < depth},
                  {"transform", {{"position", {1, 0, 0}}}},
                  {"children", {inside}}};
    }
    return inside;
}

TEST(GeometryBake, LeavesEditablePolysWithoutGroupsAndTransforms) {
    json scene = EmptyScene();
    json mirrored = BoxNode("Mirrored", nullptr);
    mirrored["transform"] = {{"position", {1, 2, 3}}, {"scale", {-1, 2, 1}}};
    mirrored["modifiers"] = {
        {{"class", "TurboSmooth"}},
        {{"class", "XForm"}, {"matrix", {{1, 0.5, 0}, {0, 1, 0}, {0.25, 0, 2}, {7, 0, 0}}}}};
    json bad = BoxNode("Bad", nullptr);
    bad["object"]["throws"] = true;
    json badHead = {{"name", "Bad head"}, {"group_head", true}, {"throws", true}};
    badHead["children"] = json::array({BoxNode("In bad", nullptr)});
    badHead["children"][0]["group_member"] = true;
    scene["nodes"] = {badHead, NestedGroups(60), bad, mirrored, SplineNode("Curve")};
    scene["selection"] = {"Mirrored"};
    OpenScene(scene);
    const auto corner = [] {
        Object* const object = NodeNamed(L"Mirrored")->EvalWorldState(0).obj;
        Object* const mesh = object->ConvertToType(0, triObjectClassID);
        const Point3 at = static_cast<TriObject*>(mesh)->GetMesh().verts[0] *
                          NodeNamed(L"Mirrored")->GetObjectTM(0);
        if (mesh != object)
            mesh->MaybeAutoDelete();
        return at;
    };
    const Point3 before = corner();
    BakeGeometry();

    for (INode* node : AllNodes())
        EXPECT_FALSE(node->IsGroupHead()) << node->GetName();
    EXPECT_TRUE(NodeNamed(L"Box")->GetParentNode()->IsRootNode());
    EXPECT_EQ(NodeNamed(L"Box")->GetNodeTM(0).GetTrans(), Point3(60, 0, 0));
    for (const wchar_t* name : {L"Box", L"Mirrored"})
        EXPECT_STREQ(NodeNamed(name)->GetObjectRef()->ClassName(false).data(), L"Editable Poly");
    EXPECT_STREQ(NodeNamed(L"Curve")->GetObjectRef()->ClassName(false).data(), L"Line");
    EXPECT_EQ(corner(), before);
    EXPECT_EQ(NodeNamed(L"Mirrored")->GetNodeTM(0).GetRow(0), Point3(1, 0, 0));
    EXPECT_EQ(GetCOREInterface()->GetSelNodeCount(), 0);
}

/// A converter as the conversion expects it; `body` runs for each conversion.
std::string Converter(const std::string& body) {
    return "struct BW_settings (silent = false, printInfo = true)\n"
           "struct BW_converter (\n"
           "    converterSettings = BW_settings(),\n"
           "    fn convertNodeArray nodes = (\n" +
           body +
           "\n    )\n)\n"
           "::CoronaConverter = BW_converter()\n";
}

class VRayConversion : public ::testing::Test {
  protected:
    void SetUp() override {
        json scene = EmptyScene();
        scene["materials"] = {
            {"vray", {{"class", "VRayMtl"}, {"name", "v"}}},
            {"plain", {{"class", "Physical Material"}, {"name", "p"}}},
            {"loop",
             {{"class", "Multi/Sub-Object"},
              {"name", "loop"},
              {"sub_materials", {"loop", nullptr, "plain", "vray"}}}},
            {"plainLoop",
             {{"class", "Multi/Sub-Object"},
              {"name", "plain loop"},
              {"sub_materials", {"plainLoop", "plain"}}}},
            {"bad", {{"class", "VRayMtl"}, {"name", "b"}, {"throws", true}}},
        };
        scene["nodes"] = {BoxNode("A", "vray"),      BoxNode("B", "plain"), BoxNode("C", "loop"),
                          BoxNode("D", "plainLoop"), BoxNode("E", nullptr), BoxNode("F", "bad")};
        OpenScene(scene);
    }

    VRayConversionResult ConvertWith(const std::string& converter) {
        const std::wstring path = work_.Write(L"converter 'x'.ms", converter);
        const ScopedVariable file("BRIMWAVE_CORONA_CONVERTER", WideToUtf8(path));
        return ConvertVRayMaterials();
    }

    TempFolder work_;
    ScopedVariable asked_{"BRIMWAVE_VRAY_CONVERT", "1"};
};

TEST_F(VRayConversion, HandsTheNodesThatUseVRayToTheConverter) {
    const auto result = ConvertWith(
        Converter("if not converterSettings.silent or converterSettings.printInfo do throw \"?\"\n"
                  "if ::CoronaConverterSuppressGui != true do throw \"GUI\"\n"
                  "for n in nodes do n.name = n.name + \" converted\""));
    EXPECT_TRUE(result.ok) << ::testing::PrintToString(result.error);
    EXPECT_EQ(result.converted, 2);
    EXPECT_TRUE(NodeNamed(L"A converted") && NodeNamed(L"C converted") && NodeNamed(L"B"));
}

TEST_F(VRayConversion, TellsWhyItFailed) {
    const struct {
        std::string converter;
        std::wstring begins;
        std::wstring holds;
    } rows[] = {
        {"throw \"while loading\"", L"fileIn failed: ", L"while loading"},
        {"(", L"fileIn failed: ", L""},
        {"::CoronaConverter = undefined", L"CoronaConverter undefined after fileIn", L""},
        {Converter("throw \"while converting\""), L"convertNodeArray failed: ",
         L"while converting"},
        {"::CoronaConverter = 1", L"convertNodeArray failed: ", L"converterSettings"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.converter);
        const auto result = ConvertWith(row.converter);
        EXPECT_TRUE(result.attempted);
        EXPECT_FALSE(result.ok);
        EXPECT_THAT(result.error, StartsWith(row.begins));
        EXPECT_THAT(result.error, HasSubstr(row.holds));
    }
    const ScopedVariable gone("BRIMWAVE_CORONA_CONVERTER", "/nowhere/converter.ms");
    const auto result = ConvertVRayMaterials();
    EXPECT_TRUE(result.attempted);
    EXPECT_EQ(result.error, L"coronaConverter.ms not found on typical install paths");
}

TEST_F(VRayConversion, RunsOnlyWhenAskedAndNeeded) {
    for (const char* value : {"", "0", "01", "true", " 1", "12345678"}) {
        const ScopedVariable asked("BRIMWAVE_VRAY_CONVERT", value);
        EXPECT_FALSE(ConvertVRayMaterials().attempted) << value;
    }
    for (const char* value : {"1", "1234567"}) {
        const ScopedVariable asked("BRIMWAVE_VRAY_CONVERT", value);
        EXPECT_TRUE(ConvertVRayMaterials().attempted) << value;
    }
    json scene = EmptyScene();
    scene["nodes"] = json::array({BoxNode("A", nullptr)});
    OpenScene(scene);
    const auto none = ConvertVRayMaterials();
    EXPECT_FALSE(none.attempted);
    EXPECT_EQ(none.error, L"");
}

} // namespace
} // namespace brimwave
