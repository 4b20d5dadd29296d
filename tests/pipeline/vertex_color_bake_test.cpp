// What the bake does to the scene: whose mesh it writes, what it keeps, what it says.
#include "pipeline/vertex_color_bake.h"

#include "pipeline/random_choice.h"
#include "simhost/scene/objects.h"
#include "simhost/scene/snapshot.h"
#include "tests/pipeline/color_kit.h"

#include <gmock/gmock.h>

#include <set>

namespace brimwave {
namespace {

using nlohmann::json;
using ::testing::Contains;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::Ge;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class VertexColorBake : public ::testing::Test {
  protected:
    void SetUp() override {
        scene = EmptyScene();
        scene["materials"] = {{"random", Shows(MultiTexture(4, byElement))},
                              {"plain", Shows(Bitmaps(1)[0])}};
        scene["objects"] = {{"mesh", Squares(8)}};
    }
    void TearDown() override {
        EXPECT_EQ(simhost::ResultMesh::LiveTemporaries(), 0);
        EXPECT_EQ(simhost::SceneMesh::LiveLoose(), 0);
    }

    void AddNode(const char* name, const json& object, const json& material,
                 const json& more = json::object()) {
        json node = {{"name", name}, {"object", object}, {"material", material}};
        node.update(more);
        scene["nodes"].push_back(node);
    }

    std::vector<std::wstring> OpenAndBake() {
        OpenScene(scene);
        return Bake();
    }

    static INode& Node(const wchar_t* name) { return *NodeNamed(name); }

    static void ExpectBaked(const wchar_t* name, int count = 4) {
        EXPECT_THAT(FaceColors(Node(name)), Each(::testing::Field(&Bytes::count, count)));
        EXPECT_THAT(FaceChoices(Node(name)), Each(Ge(0)));
        EXPECT_THAT(FaceChoices(Node(name)), ::testing::Not(IsEmpty()));
    }

    static constexpr int byId = 0, byObject = 1, byElement = 2;
    json scene;
};

TEST_F(VertexColorBake, TenThousandElementsAreSpreadEvenly) {
    for (const int maps : {3, 10}) {
        scene["materials"]["random"] = Shows(MultiTexture(maps, byElement, 12345));
        scene["objects"]["mesh"] = Squares(10000);
        scene["nodes"].clear();
        AddNode("floor", "mesh", "random");
        OpenAndBake();
        const std::vector<int> choices = FaceChoices(Node(L"floor"));
        ASSERT_THAT(choices, SizeIs(20000));
        std::vector<int> seen(static_cast<size_t>(maps));
        for (size_t f = 0; f < choices.size(); f += 2) {
            ASSERT_EQ(choices[f], choices[f + 1]) << "two choices in element " << f / 2;
            ++seen.at(static_cast<size_t>(choices[f]));
        }
        double chiSquare = 0;
        const double expected = 10000.0 / maps;
        for (const int count : seen)
            chiSquare += (count - expected) * (count - expected) / expected;
        // Chance exceeds these once in a thousand times, with 2 and 9 independent numbers.
        EXPECT_LT(chiSquare, maps == 3 ? 13.82 : 27.88);
    }
}

TEST_F(VertexColorBake, SameSceneSameColors) {
    AddNode("a", "mesh", "random");
    OpenAndBake();
    const std::vector<Bytes> first = FaceColors(Node(L"a"));
    OpenAndBake();
    EXPECT_EQ(FaceColors(Node(L"a")), first);
    EXPECT_THAT(Bake(), Contains(HasSubstr(L"carries its colours already")));
    EXPECT_EQ(FaceColors(Node(L"a")), first);
}

TEST_F(VertexColorBake, WritesAnEditableMeshInPlaceAndKeepsTheRest) {
    scene["objects"]["mesh"]["mesh"]["alpha"] = {{"values", json::array({{0.5, 0.5, 0.5}})},
                                                 {"triangles", std::vector<int>(48, 0)}};
    AddNode("a", "mesh", "random");
    AddNode("b", "mesh", "random");
    OpenScene(scene);
    Object* const object = Node(L"a").GetObjectRef();
    Mesh before = *ShownMesh(Node(L"a"));
    std::string snapshot = simhost::SnapshotScene();
    Bake();
    ExpectBaked(L"a");
    EXPECT_EQ(Node(L"a").GetObjectRef(), object);
    EXPECT_EQ(Node(L"b").GetObjectRef(), object);

    Mesh& after = *ShownMesh(Node(L"a"));
    const std::string none = " 0 colours";
    snapshot.replace(snapshot.find(none), none.size(),
                     " " + std::to_string(after.getNumVertCol()) + " colours");
    EXPECT_EQ(simhost::SnapshotScene(), snapshot);
    ASSERT_EQ(after.getNumVerts(), before.getNumVerts());
    ASSERT_EQ(after.getNumFaces(), before.getNumFaces());
    ASSERT_EQ(after.getNumTVerts(), before.getNumTVerts());
    EXPECT_EQ(after.Map(MAP_ALPHA).tv[0], Point3(0.5f, 0.5f, 0.5f));
    for (int f = 0; f < before.getNumFaces(); ++f) {
        EXPECT_EQ(after.faces[f].getMatID(), before.faces[f].getMatID());
        EXPECT_EQ(after.faces[f].getSmGroup(), before.faces[f].getSmGroup());
        for (int k = 0; k < 3; ++k) {
            EXPECT_EQ(after.faces[f].v[k], before.faces[f].v[k]);
            EXPECT_EQ(after.tvFace[f].t[k], before.tvFace[f].t[k]);
            EXPECT_EQ(after.GetSpecifiedNormals()->Face(f).GetNormalID(k),
                      before.GetSpecifiedNormals()->Face(f).GetNormalID(k));
        }
    }
    for (int i = 0; i < before.getNumTVerts(); ++i)
        EXPECT_EQ(after.tVerts[i], before.tVerts[i]);
}

TEST_F(VertexColorBake, LeavesAloneWhatShowsNoSuchMap) {
    AddNode("plain", "mesh", "plain");
    AddNode("none", "mesh", nullptr);
    AddNode("lamp", {{"class", "Omni"}}, "random");
    AddNode("unused id", Squares(2, {0}),
            {{"class", "Multi/Sub-Object"}, {"sub_materials", {"plain", "random"}}});
    OpenScene(scene);
    const std::string before = simhost::SnapshotScene();
    EXPECT_THAT(Bake(), ElementsAre(L"Nothing to bake."));
    EXPECT_EQ(simhost::SnapshotScene(), before);
}

TEST_F(VertexColorBake, HarmsNobodyWhoSharesTheMesh) {
    scene["materials"]["other"] = Shows(MultiTexture(5, byElement));
    scene["objects"]["reference"] = {{"base", "mesh"}, {"modifiers", {{{"class", "UVW Map"}}}}};
    AddNode("a", "mesh", "random");
    AddNode("b", "mesh", "random");
    AddNode("other", "mesh", "other");
    AddNode("plain", "mesh", "plain");
    OpenAndBake();
    ExpectBaked(L"a");
    ExpectBaked(L"other", 5);
    EXPECT_EQ(Node(L"a").GetObjectRef(), Node(L"b").GetObjectRef());
    EXPECT_EQ(ShownMesh(Node(L"plain"))->getNumVertCol(), 0);

    // A stack of somebody else on the same mesh counts too.
    scene["nodes"].clear();
    AddNode("a", "mesh", "random");
    AddNode("reference", "reference", "plain");
    OpenAndBake();
    ExpectBaked(L"a");
    EXPECT_EQ(ShownMesh(Node(L"reference"))->getNumVertCol(), 0);
}

TEST_F(VertexColorBake, InstancesChooseForThemselvesOnlyByObject) {
    scene["materials"]["random"] = Shows(MultiTexture(2, byObject));
    for (int i = 0; i < 12; ++i)
        AddNode(("chair " + std::to_string(i)).c_str(), "mesh", "random");
    OpenAndBake();
    std::set<Object*> objects;
    std::set<int> choices;
    for (INode* const node : AllNodes()) {
        objects.insert(node->GetObjectRef());
        const std::vector<int> all = FaceChoices(*node);
        const int expected = static_cast<int>(WeightedChoice(2).Pick(
            RandomKey(7).With(RandomItem::Object, node->GetHandle()).Bits(RandomUse::Choice)));
        EXPECT_THAT(all, Each(expected));
        choices.insert(all.at(0));
    }
    EXPECT_THAT(choices, ElementsAre(0, 1));
    EXPECT_THAT(objects, SizeIs(2)); // one mesh for each choice, not one for each chair

    json map = MultiTexture(2, byObject);
    map["params"]["hue_random"] = 1;
    scene["materials"]["random"] = Shows(map);
    OpenAndBake();
    std::set<int> variations;
    for (INode* const node : AllNodes())
        variations.insert(FaceColors(*node).at(0).variation);
    EXPECT_GT(variations.size(), 8u);
}

TEST_F(VertexColorBake, OtherObjectsBecomeMeshes) {
    const json poly = {{"class", "Editable Poly"}, {"mesh", SquaresMesh(3)}};
    const json raise = {{"class", "XForm"},
                        {"matrix", {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {0, 0, 9}}}};
    scene["materials"]["by id"] = Shows(MultiTexture(100, byId));
    AddNode("poly", poly, "random");
    AddNode("box", {{"class", "Box"}}, "by id");
    AddNode("raised", {{"class", "Editable Mesh"}, {"mesh", SquaresMesh(3)}}, "random",
            {{"modifiers", {raise}}});
    const std::vector<std::wstring> lines = OpenAndBake();
    ExpectBaked(L"poly");
    ExpectBaked(L"box", 100);
    ExpectBaked(L"raised");
    EXPECT_THAT(lines, Contains(L"\"poly\": is an Editable Mesh from now on, was Editable Poly."));
    EXPECT_THAT(lines, Contains(HasSubstr(L"; collapsed: XForm.")));
    EXPECT_FLOAT_EQ(ShownMesh(Node(L"raised"))->getVert(0).z, 9);
    EXPECT_EQ(ShownMesh(Node(L"poly"))->getNumTVerts(), 12);
    const std::vector<int> sides = FaceChoices(Node(L"box"));
    EXPECT_EQ(sides[0], sides[1]);
    EXPECT_GT(std::set<int>(sides.begin(), sides.end()).size(), 3u);
}

TEST_F(VertexColorBake, SkipsWhatItWouldSpoilAndSaysSo) {
    const json displaced = {{"modifiers", {{{"class", "CoronaDisplacementMod"}}}}};
    const json warped = {{"modifiers", {{{"class", "UVW Map"}}}},
                         {"space_modifiers", {{{"class", "XForm"}}}}};
    json solid = {{"class", "Box"}, {"converts", false}};
    json broken = Squares(2);
    broken["throws"] = {"ConvertToType"};
    scene["materials"]["shows colours"] = Shows(MultiTexture(4, byElement));
    scene["materials"]["shows colours"]["params"]["bump_map"] = {{"class", "Vertex Color"}};
    json colored = Squares(1);
    colored["mesh"]["colors"] = {{"values", json::array({{0.25, 0.5, 1}})},
                                 {"triangles", {0, 0, 0, 0, 0, 0}}};
    AddNode("displaced", Squares(2), "random", displaced);
    AddNode("warped", Squares(2), "random", warped);
    AddNode("solid", solid, "random");
    AddNode("broken", broken, "random");
    AddNode("showing", colored, "shows colours");
    AddNode("coloured", colored, "random");
    AddNode("fine", Squares(2), "random");
    const std::vector<std::wstring> lines = OpenAndBake();
    ExpectBaked(L"fine");
    ExpectBaked(L"coloured");
    for (const wchar_t* const line : {
             L"\"displaced\": skipped, a mesh of its own would lose its displacement.",
             L"\"warped\": skipped, it cannot become a mesh.",
             L"\"solid\": skipped, it cannot become a mesh.",
             L"\"broken\": skipped, the host failed over it.",
             L"\"showing\": skipped, its material shows the vertex colours that it has.",
             L"\"coloured\": the vertex colours that it had are lost.",
             L"Baked 2 mesh(es) of 2 object(s); 5 object(s) skipped.",
         })
        EXPECT_THAT(lines, Contains(line));
    EXPECT_EQ(FaceColors(Node(L"showing"))[0], (Bytes{64, 128, 255}));
    EXPECT_EQ(std::wstring_view(Node(L"solid").EvalWorldState(0).obj->ClassName().data()), L"Box");
}

TEST_F(VertexColorBake, GoesOnPastWhatThrows) {
    for (const char* kind : {"std", "other"}) {
        scene["nodes"].clear();
        const bool other = kind == std::string("other");
        for (const char* call : {"GetObjectRef", "GetMtl", "EvalWorldState", "GetName"}) {
            json fault = {{"throws", {call}}};
            if (other)
                fault["throw_kind"] = "other";
            AddNode(call, Squares(2), "random", fault);
        }
        json map = MultiTexture(4, byElement);
        map["throws"] = true;
        scene["materials"]["broken map"] = Shows(map);
        scene["materials"]["broken"] = Shows(MultiTexture(4, byElement));
        scene["materials"]["broken"]["throws"] = true;
        AddNode("broken map", Squares(2), "broken map");
        AddNode("broken material", Squares(2), "broken");
        AddNode("fine", Squares(2), "random");
        EXPECT_THAT(OpenAndBake(), Contains(HasSubstr(L"Baked 2 mesh(es)"))) << kind;
        ExpectBaked(L"fine");
    }
}

} // namespace
} // namespace brimwave
