#include "pipeline/material_names.h"

#include "tests/pipeline/scene_kit.h"

#include <gmock/gmock.h>

namespace brimwave {
namespace {

using nlohmann::json;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(MaterialNameRules, SafeNames) {
    const struct {
        const wchar_t* name;
        const wchar_t* safe;
    } rows[] = {
        {L"Wood_01-a", L"Wood_01-a"},
        {L"Brick Wall.001", L"Brick_Wall_001"},
        {L"a /#. b", L"a_b"},
        {L"a__b___c", L"a_b_c"},
        {L"_lead", L"_lead"},
        {L"##lead", L"_lead"},
        {L"tail_ _", L"tail"},
        {L"###", L""},
        {L"", L""},
        {L"straße", L"stra_e"},
        {L"дуб", L""},
        {L"oak \xd83c\xdf33 1", L"oak_1"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(SanitizeMaterialName(row.name), row.safe);
        EXPECT_EQ(NormalizeMaterialName(row.name), row.safe);
    }
}

TEST(MaterialNameRules, HashIsOverTheNameAsItStands) {
    EXPECT_EQ(ShortNameHash(L""), L"001505");       // 5381
    EXPECT_EQ(ShortNameHash(L"a"), L"02b606");      // 5381 * 33 + 97
    EXPECT_EQ(ShortNameHash(L"\xffff"), L"03b5a4"); // one whole unit, not its low byte
    // By hand: each step masked to 24 bits.
    std::uint32_t hash = 5381;
    for (int i = 0; i < 80; ++i)
        hash = (hash * 33 + 'x') % 0x1000000;
    wchar_t digits[8];
    swprintf(digits, 8, L"%06x", hash);
    EXPECT_EQ(ShortNameHash(std::wstring(80, L'x')), digits);
}

TEST(MaterialNameRules, LongNamesAreCutToABeginningAndAHash) {
    const std::wstring at56(56, L'x');
    EXPECT_EQ(NormalizeMaterialName(at56), at56);

    const std::wstring at57(57, L'x');
    EXPECT_EQ(NormalizeMaterialName(at57), std::wstring(49, L'x') + L"_" + ShortNameHash(at57));

    // What counts is the length of the safe name, and the cut leaves no "_" at its end.
    const std::wstring spaced = std::wstring(47, L'x') + L".  " + std::wstring(20, L'y');
    EXPECT_EQ(NormalizeMaterialName(spaced),
              std::wstring(47, L'x') + L"_y_" + ShortNameHash(spaced));
    const std::wstring cutAtBlank = std::wstring(48, L'x') + L" " + std::wstring(20, L'y');
    EXPECT_EQ(NormalizeMaterialName(cutAtBlank),
              std::wstring(48, L'x') + L"_" + ShortNameHash(cutAtBlank));

    EXPECT_NE(NormalizeMaterialName(std::wstring(60, L'x') + L"1"),
              NormalizeMaterialName(std::wstring(60, L'x') + L"2"));
}

/// Boxes with one material each, named as told.
json Boxes(const std::vector<std::string>& names) {
    json scene = EmptyScene();
    for (std::size_t i = 0; i < names.size(); ++i) {
        const std::string id = "m" + std::to_string(i);
        scene["materials"][id] = {{"class", "Physical Material"}, {"name", names[i]}};
        scene["nodes"].push_back(BoxNode("box" + std::to_string(i), id));
    }
    return scene;
}

std::vector<std::wstring> OldNames(const std::vector<MtlRestoreEntry>& entries) {
    std::vector<std::wstring> names;
    for (const MtlRestoreEntry& entry : entries)
        names.push_back(entry.oldName);
    return names;
}

TEST(DeduplicateMaterialNames, RenamesWhatIsUnsafeOrShared) {
    OpenScene(Boxes({"Wood", "Brick Wall.001", "Wood#", "Fine", "WOOD", "###", "Wood_01"}));
    const auto entries = DeduplicateMaterialNames();
    EXPECT_THAT(NodeMaterialNames(), ElementsAre(L"Wood_01", L"Brick_Wall_001", L"Wood_02", L"Fine",
                                                 L"WOOD", L"", L"Wood_01"));
    EXPECT_THAT(OldNames(entries), ElementsAre(L"Wood", L"Wood#", L"Brick Wall.001", L"###"));

    EXPECT_EQ(RestoreMaterialNames(entries), 0u);
    EXPECT_THAT(NodeMaterialNames(), ElementsAre(L"Wood", L"Brick Wall.001", L"Wood#", L"Fine",
                                                 L"WOOD", L"###", L"Wood_01"));
}

TEST(DeduplicateMaterialNames, NumbersGrowPastTwoDigits) {
    OpenScene(Boxes(std::vector<std::string>(101, "M")));
    const auto entries = DeduplicateMaterialNames();
    const auto names = NodeMaterialNames();
    ASSERT_EQ(names.size(), 101u);
    EXPECT_EQ(names[0], L"M_01");
    EXPECT_EQ(names[9], L"M_10");
    EXPECT_EQ(names[98], L"M_99");
    EXPECT_EQ(names[100], L"M_101");
    RestoreMaterialNames(entries);
}

TEST(DeduplicateMaterialNames, CountsAMaterialOnceAndSkipsWhatIsUnnamedOrNotOnGeometry) {
    json scene = EmptyScene();
    scene["materials"] = {
        {"sub", {{"class", "Physical Material"}, {"name", "a b"}}},
        {"multi",
         {{"class", "Multi/Sub-Object"},
          {"name", "multi"},
          {"sub_materials", {"sub", nullptr, "multi", "sub"}}}},
        {"unnamed", {{"class", "Multi/Sub-Object"}, {"name", ""}, {"sub_materials", {"inside"}}}},
        {"inside", {{"class", "Physical Material"}, {"name", "in side"}}},
        {"onLight", {{"class", "Physical Material"}, {"name", "on light"}}},
    };
    scene["nodes"] = {
        BoxNode("one", "multi"),
        BoxNode("two", "multi"),
        BoxNode("three", "sub"),
        BoxNode("four", "unnamed"),
        BoxNode("five", nullptr),
        {{"name", "lamp"}, {"object", {{"class", "Omni"}}}, {"material", "onLight"}},
        {{"name", "curve"}, {"object", {{"class", "Circle"}}}, {"material", "onLight"}},
    };
    OpenScene(scene);
    const auto entries = DeduplicateMaterialNames();
    EXPECT_THAT(OldNames(entries), ElementsAre(L"a b"));
    RestoreMaterialNames(entries);
}

TEST(DeduplicateMaterialNames, WalksParentsBeforeChildrenInOrder) {
    json scene = Boxes({"M#1", "M#1", "M#1", "M#1"});
    json nodes = scene["nodes"];
    nodes[1]["children"] = json::array({nodes[2]});
    nodes[0]["children"] = {nodes[1], nodes[3]};
    scene["nodes"] = json::array({nodes[0]});
    OpenScene(scene);
    const auto entries = DeduplicateMaterialNames();
    EXPECT_THAT(NodeMaterialNames(), ElementsAre(L"M_1_01", L"M_1_02", L"M_1_03", L"M_1_04"));
    RestoreMaterialNames(entries);
}

TEST(DeduplicateMaterialNames, GoesOnPastWhatThrows) {
    json scene = Boxes({"a#a", "b#b", "c#c", "d#d", "e#e"});
    scene["materials"]["m0"]["throws"] = {"GetName"};
    scene["materials"]["m1"]["throws"] = {"NumSubMtls"};
    scene["materials"]["m2"]["throws"] = true;
    scene["materials"]["m2"]["throw_kind"] = "other";
    scene["nodes"][3]["throws"] = {"EvalWorldState"};
    OpenScene(scene);
    const auto entries = DeduplicateMaterialNames();
    EXPECT_THAT(OldNames(entries), ElementsAre(L"b#b", L"e#e"));
    EXPECT_EQ(RestoreMaterialNames(entries), 0u);
}

TEST(RestoreMaterialNames, CountsWhatIsGoneAndGoesOn) {
    OpenScene(Boxes({"a#a"}));
    auto stale = DeduplicateMaterialNames();
    ASSERT_EQ(stale.size(), 1u);
    OpenScene(Boxes({"b#b"})); // the material of the first entry is deleted
    auto entries = DeduplicateMaterialNames();
    ASSERT_EQ(entries.size(), 1u);

    MtlRestoreEntry node = entries[0];
    node.handle = Animatable::GetHandleByAnim(GetCOREInterface()->GetRootNode());
    MtlRestoreEntry byPointer = entries[0];
    byPointer.handle = 0;
    byPointer.oldName = L"by pointer";
    EXPECT_EQ(RestoreMaterialNames({stale[0], node, {}, byPointer}), 3u);
    EXPECT_THAT(NodeMaterialNames(), ElementsAre(L"by pointer"));
    EXPECT_EQ(RestoreMaterialNames(entries), 0u);
    EXPECT_THAT(NodeMaterialNames(), ElementsAre(L"b#b"));
}

TEST(UniqueMaterialNames, EndWithTheirScope) {
    OpenScene(Boxes({"a#a"}));
    {
        UniqueMaterialNames names;
        EXPECT_THAT(NodeMaterialNames(), ElementsAre(L"a_a"));
        names.Restore();
        EXPECT_THAT(NodeMaterialNames(), ElementsAre(L"a#a"));
    }
    try {
        const UniqueMaterialNames names;
        throw 1;
    } catch (int) {
    }
    EXPECT_THAT(NodeMaterialNames(), ElementsAre(L"a#a"));
}

TEST(MaterialNames, VeryDeepNestingIsWalked) {
    json scene = EmptyScene();
    constexpr int depth = 3000;
    for (int i = 0; i < depth; ++i)
        scene["materials"]["m" + std::to_string(i)] = {
            {"class", "Multi/Sub-Object"},
            {"name", "deep#"},
            {"sub_materials",
             json::array({i + 1 < depth ? json("m" + std::to_string(i + 1)) : json()})}};
    scene["nodes"] = json::array({BoxNode("box", "m0")});
    OpenScene(scene);
    const auto entries = DeduplicateMaterialNames();
    EXPECT_EQ(entries.size(), static_cast<std::size_t>(depth));
    RestoreMaterialNames(entries);
}

} // namespace
} // namespace brimwave
