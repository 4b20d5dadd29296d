// What the maps' parameters mean: modes, lists, switches, weights, and which map a face shows.
#include "pipeline/random_choice.h"
#include "tests/pipeline/color_kit.h"

#include <gmock/gmock.h>

#include <set>

namespace brimwave {
namespace {

using nlohmann::json;
using ::testing::Contains;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

constexpr wchar_t squaresNode[] = L"squares";

/// Six squares with the material ids 0, 1, 2, 0, 1, 2 and the material.
INode& OpenSquares(const json& material) {
    json scene = EmptyScene();
    scene["materials"] = {{"m", material}};
    scene["objects"] = {{"squares", Squares(6, {0, 1, 2})}};
    scene["nodes"] = {{{"name", "squares"}, {"object", "squares"}, {"material", "m"}}};
    OpenScene(scene);
    return *NodeNamed(squaresNode);
}

json WithoutSwitches(json map, int mode) {
    for (const char* name : {"randomizeInstance", "randomizePrimitive", "randomizeMaterialId",
                             "randomizeMeshElement"}) {
        map["params"].erase(name);
        map["omit_params"].push_back(name);
    }
    map["params"]["mode"] = mode;
    return map;
}

TEST(ChoiceRules, Modes) {
    enum { Object = 1, Id = 2, Element = 4, Face = 8 };
    const struct {
        json map;
        int items;
    } rows[] = {
        {MultiTexture(5, 0), Id},
        {MultiTexture(5, 1), Object},
        {MultiTexture(5, 2), Element},
        {MultiTexture(5, 3), Face},
        {MultiTexture(5, 99), Id},
        {CoronaMultiMap(5, {{"randomizeInstance", true}}), Object},
        {CoronaMultiMap(5, {{"randomizePrimitive", true}}), Face},
        {CoronaMultiMap(5, {{"randomizeMaterialId", true}}), Id},
        {CoronaMultiMap(5, {{"randomizeMeshElement", true}}), Element},
        {CoronaMultiMap(5, {{"randomizeInstance", true}, {"randomizeMeshElement", true}}),
         Object | Element},
        {CoronaMultiMap(5, {{"randomizeMaterialId", true}, {"randomizePrimitive", true}}),
         Id | Face},
        {CoronaMultiMap(5), 0},
        {WithoutSwitches(CoronaMultiMap(5), 0), Object},
        {WithoutSwitches(CoronaMultiMap(5), 1), Face},
        {WithoutSwitches(CoronaMultiMap(5), 2), Id},
        {WithoutSwitches(CoronaMultiMap(5), 3), Element},
        {WithoutSwitches(CoronaMultiMap(5), -1), Object},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.map.dump());
        INode& node = OpenSquares(Shows(row.map));
        Bake();
        std::vector<int> expected;
        for (std::uint32_t face = 0; face < 12; ++face) {
            RandomKey key(7);
            if (row.items & Object)
                key = key.With(RandomItem::Object, node.GetHandle());
            if (row.items & Id)
                key = key.With(RandomItem::MaterialId, face / 2 % 3);
            if (row.items & Element)
                key = key.With(RandomItem::Element, face / 2);
            if (row.items & Face)
                key = key.With(RandomItem::Face, face);
            expected.push_back(
                static_cast<int>(WeightedChoice(5).Pick(key.Bits(RandomUse::Choice))));
        }
        EXPECT_EQ(FaceChoices(node), expected);
    }
}

/// The counts and choices that 12 faces, each for itself, get from the map.
struct Seen {
    std::set<int> counts, choices, variations;
};
Seen BakeByFace(json map) {
    if (map["class"] == "MultiTexture")
        map["params"]["rnd_by"] = 3;
    else
        map["params"]["randomizePrimitive"] = true;
    json scene = EmptyScene();
    scene["nodes"] = {{{"name", "squares"}, {"object", Squares(1000)}, {"material", Shows(map)}}};
    OpenScene(scene);
    Bake();
    Seen seen;
    for (const Bytes& color : FaceColors(*NodeNamed(squaresNode))) {
        seen.counts.insert(color.count);
        seen.choices.insert(color.choice);
        seen.variations.insert(color.variation);
    }
    return seen;
}

TEST(ChoiceRules, OnlyMapsThatAreThereAndOnCanBeChosen) {
    json map = MultiTexture(5, 3);
    map["params"]["texmaps"][1] = nullptr;
    map["params"]["submap_on"] = {true, true, false}; // the rest has no switch
    Seen seen = BakeByFace(map);
    EXPECT_THAT(seen.counts, ElementsAre(3)); // 0, 3 and 4 of the list
    EXPECT_THAT(seen.choices, ElementsAre(0, 1, 2));

    map = CoronaMultiMap(6, {{"items", 4}, {"texmapsOn", {true, false, true, true, true, true}}});
    seen = BakeByFace(map);
    EXPECT_THAT(seen.counts, ElementsAre(3)); // 0, 2 and 3
    EXPECT_THAT(seen.choices, ElementsAre(0, 1, 2));

    map["params"]["frequencies"] = {1, 1, 0, 2.5};
    EXPECT_THAT(BakeByFace(map).choices, ElementsAre(0, 2));
}

TEST(ChoiceRules, VariationOnlyWhereTheMapVaries) {
    EXPECT_THAT(BakeByFace(MultiTexture(3, 3)).variations, ElementsAre(0));
    for (const char* name : {"hue_random", "saturation_random", "gamma_random"}) {
        json map = MultiTexture(3, 3);
        map["params"][name] = 0.25;
        EXPECT_GT(BakeByFace(map).variations.size(), 240u) << name;
    }
    EXPECT_GT(BakeByFace(CoronaMultiMap(3, {{"hueRandom", 0.1}})).variations.size(), 240u);
}

TEST(ChoiceRules, AsManyMapsAsAColorCanName) {
    const Seen seen = BakeByFace(MultiTexture(255, 3));
    EXPECT_THAT(seen.counts, ElementsAre(255));
    EXPECT_EQ(*seen.choices.rbegin(), 254);
    INode& node = OpenSquares(Shows(MultiTexture(258, 3)));
    EXPECT_THAT(Bake(), Contains(HasSubstr(L"the last 3 maps of its list are never chosen")));
    for (const Bytes& color : FaceColors(node))
        EXPECT_EQ(color.count, 255);
}

TEST(ChoiceRules, FacesShowTheSubMaterialOfTheirId) {
    const json three = Shows(MultiTexture(3, 2)), five = Shows(MultiTexture(5, 2));
    const json nested = {{"class", "Multi/Sub-Object"}, {"sub_materials", {nullptr, five}}};
    INode& node = OpenSquares({{"class", "Multi/Sub-Object"}, {"sub_materials", {three, nested}}});
    Bake();
    std::vector<int> counts;
    for (const Bytes& color : FaceColors(node))
        counts.push_back(color.count);
    // Ids 0 and 2 (wrapped) show the first, id 1 the nested one's second.
    EXPECT_THAT(counts, ElementsAre(3, 3, 5, 5, 3, 3, 3, 3, 5, 5, 3, 3));
}

TEST(ChoiceRules, FoundWhereverTheMaterialHidesThem) {
    const json multi = MultiTexture(4, 2);
    const json deep = {{"class", "Mix"}, {"slots", {{{"class", "Output"}, {"slots", {multi}}}}}};
    const json materials[] = {
        Shows(deep),
        {{"class", "Double Sided"}, {"sub_materials", {nullptr, Shows(deep)}}},
        {{"class", "CoronaLayeredMtl"}, {"params", {{"layers", {Shows(multi)}}}}},
        {{"class", "Multi/Sub-Object"}, {"sub_materials", {"m", Shows(multi)}}}, // a cycle
    };
    for (const json& material : materials) {
        SCOPED_TRACE(material.dump());
        INode& node = OpenSquares(material);
        Bake();
        const std::vector<int> choices = FaceChoices(node);
        ASSERT_EQ(choices.size(), 12u);
        EXPECT_THAT(choices[2], ::testing::AllOf(::testing::Ge(0), ::testing::Lt(4))); // id 1
    }
}

TEST(ChoiceRules, OneRuleAFace) {
    json material = Shows(MultiTexture(4, 2));
    json same = MultiTexture(4, 2), other = MultiTexture(4, 2, 8);
    same["name"] = "same";
    other["name"] = "other";
    material["params"]["roughness_map"] = same;
    material["params"]["bump_map"] = other;
    INode& node = OpenSquares(material);
    const std::vector<std::wstring> lines = Bake();
    EXPECT_THAT(lines, Contains(HasSubstr(L"\"other\" is not served")));
    EXPECT_THAT(lines, Not(Contains(HasSubstr(L"\"same\""))));
    const std::vector<int> together = FaceChoices(node);

    OpenSquares(Shows(MultiTexture(4, 2)));
    Bake();
    EXPECT_EQ(FaceChoices(*NodeNamed(squaresNode)), together);

    // What is switched off takes no place.
    material["params"]["base_color_map_on"] = false;
    material["params"]["roughness_map_on"] = false;
    OpenSquares(material);
    EXPECT_THAT(Bake(), Each(Not(HasSubstr(L"not served"))));
    EXPECT_NE(FaceChoices(*NodeNamed(squaresNode)), together);
}

TEST(ChoiceRules, ListsWithoutMapsChooseNothing) {
    json material = Shows(MultiTexture(0, 2));
    INode& node = OpenSquares(material);
    EXPECT_THAT(Bake(), Contains(HasSubstr(L"no map to choose")));
    EXPECT_EQ(ShownMesh(node)->getNumVertCol(), 0);
    material["params"]["bump_map"] = MultiTexture(3, 2);
    OpenSquares(material);
    Bake();
    EXPECT_THAT(FaceChoices(*NodeNamed(squaresNode)), Each(::testing::Ge(0)));
}

} // namespace
} // namespace brimwave
