// Look-up of parameters by name, on classes that bring blocks of their own.
#include "host/params.h"
#include "host/text.h"
#include "simhost/files/scene_file.h"

#include <nlohmann/json.hpp>

#include <gtest/gtest.h>

namespace brimwave {
namespace {

using nlohmann::json;

json Param(const json& name, const std::string& type, const json& value) {
    return {{"name", name}, {"type", type}, {"value", value}};
}

/// A scene whose nodes have one material each, with these lists of blocks as scene files write
/// them; the materials in order.
std::vector<Mtl*> Subjects(const std::vector<std::vector<json>>& blockLists) {
    json scene = {{"format", "simhost-scene"},
                  {"version", 1},
                  {"maps",
                   {{"wood", {{"class", "Any Map"}, {"blocks", json::array()}}},
                    {"stone", {{"class", "Any Map"}, {"blocks", json::array()}}}}},
                  {"nodes", json::array()}};
    for (const std::vector<json>& blocks : blockLists)
        scene["nodes"].push_back({{"name", "node " + std::to_string(scene["nodes"].size())},
                                  {"object", {{"class", "Box"}}},
                                  {"material", {{"class", "Any Material"}, {"blocks", blocks}}}});
    const auto loaded = simhost::LoadSceneText(scene.dump());
    EXPECT_TRUE(loaded) << loaded.error;
    INode* const root = GetCOREInterface()->GetRootNode();
    std::vector<Mtl*> materials;
    for (int i = 0; i < root->NumberOfChildren(); ++i)
        materials.push_back(root->GetChildNode(i)->GetMtl());
    return materials;
}

Mtl* Subject(const std::vector<json>& blocks) {
    return Subjects({blocks}).at(0);
}

json Block(const std::vector<json>& params) {
    return {{"name", "block"}, {"params", params}};
}

std::string Member(Mtl* material, const wchar_t* name) {
    ParamReader params;
    JsonMembers members;
    params.AppendParamJson(members, material, name, L"k");
    return members.empty() ? "" : WideToUtf8(members[0]);
}

TEST(ParamReader, EveryTypeAsItsKind) {
    const struct {
        const char* type;
        json value;
        ParamKind kind;
        const char* member;
    } rows[] = {
        {"float", 0.5, ParamKind::Float, "\"k\":0.5"},
        {"angle", 1.5, ParamKind::Float, "\"k\":1.5"},
        {"pcnt_frac", 0.5, ParamKind::Float, "\"k\":0.5"},
        {"world", 1e6, ParamKind::Float, "\"k\":1e+06"},
        {"float", "nan", ParamKind::Float, "\"k\":null"},
        {"int", -1234567, ParamKind::Int, "\"k\":-1234567"},
        {"index", 3, ParamKind::Int, "\"k\":3"},
        {"bool", true, ParamKind::Bool, "\"k\":true"},
        {"bool", false, ParamKind::Bool, "\"k\":false"},
        {"string", "C:\\maps\\wood.png", ParamKind::String, "\"k\":\"C:\\\\maps\\\\wood.png\""},
        {"filename", nullptr, ParamKind::String, "\"k\":\"\""},
        {"rgba", {1, 0.5, 0}, ParamKind::Color, "\"k\":[1,0.5,0]"},
        {"frgba", {1, 0.5, 0, 0.25}, ParamKind::Color, "\"k\":[1,0.5,0]"},
        {"point3", {1, -2, 3}, ParamKind::Vector, "\"k\":[1,-2,3]"},
        {"texmap", "wood", ParamKind::None, ""},
        {"mtl", nullptr, ParamKind::None, ""},
        {"inode", "node 0", ParamKind::None, ""},
        {"radiobtn_index", 1, ParamKind::None, ""},
        {"color_channel", 1, ParamKind::None, ""},
        {"timevalue", 1, ParamKind::None, ""},
        {"point4", {1, 2, 3, 4}, ParamKind::None, ""},
        {"float_tab", {1, 2}, ParamKind::None, ""},
    };
    for (const auto& row : rows) {
        Mtl* const subject = Subject({Block({Param("p", row.type, row.value)})});
        ParamReader params;
        EXPECT_EQ(params.FindParamValue(subject, L"p").kind, row.kind) << row.type;
        EXPECT_EQ(Member(subject, L"p"), row.member) << row.type;
    }
}

TEST(ParamReader, NamesCompareWithoutCaseAndNothingElse) {
    Mtl* const subject =
        Subject({Block({Param("Diffuse_Color", "float", 1), Param("a b", "float", 2)})});
    EXPECT_EQ(Member(subject, L"diffuse_color"), "\"k\":1");
    EXPECT_EQ(Member(subject, L"DIFFUSE_COLOR"), "\"k\":1");
    for (const wchar_t* const name : {L"diffuse color", L"diffusecolor", L"ab", L"a_b", L""})
        EXPECT_EQ(Member(subject, name), "");
    EXPECT_EQ(Member(nullptr, L"a b"), "");
}

TEST(ParamReader, LaterBlocksAnswerWhatEarlierCannot) {
    Mtl* const subject =
        Subject({nullptr,
                 {{"name", "no descriptor"},
                  {"descriptor", false},
                  {"params", {Param("amount", "float", 9)}}},
                 Block({Param(nullptr, "float", 8), Param("", "float", 8),
                        Param("amount", "texmap", "wood"), Param("other", "float", 1)}),
                 Block({Param("AMOUNT", "float", 0.5), Param("Other", "texmap", "stone")}),
                 Block({Param("amount", "int", 7)})});
    ParamReader params;
    EXPECT_EQ(params.FindParamValue(subject, L"amount").floatValue, 0.5f);
    EXPECT_EQ(params.FindParamRef(subject, L"amount"),
              params.CollectTexmapParams(subject).at(0).map);
    EXPECT_EQ(params.FindParamRef(subject, L"other"),
              params.CollectTexmapParams(subject).at(1).map);
    EXPECT_EQ(params.FindParamRef(subject, L"missing"), nullptr);
    // Tables stop at the first match, whatever its type.
    EXPECT_EQ(params.GetTabParamCount(subject, L"amount"), -1);
}

TEST(ParamReader, Tables) {
    Mtl* const subject = Subject({Block(
        {Param("floats", "float_tab", {0.5, 1}), Param("ints", "int_tab", {-1}),
         Param("bools", "bool_tab", {true, false}), Param("strings", "string_tab", {"a"}),
         Param("colors", "frgba_tab", {{1, 0.5, 0, 1}}), Param("points", "point3_tab", {{1, 2, 3}}),
         Param("none", "float_tab", json::array()), Param("percents", "pcnt_frac_tab", {0.25}),
         Param("scalar", "float", 1)})});
    ParamReader params;
    const auto at = [&](const wchar_t* name, int i) {
        JsonMembers members;
        AppendParamValue(members, L"", params.GetTabParamValue(subject, name, i));
        return members.empty() ? "" : WideToUtf8(members[0]).substr(3);
    };
    EXPECT_EQ(params.GetTabParamCount(subject, L"floats"), 2);
    EXPECT_EQ(at(L"floats", 0), "0.5");
    EXPECT_EQ(at(L"ints", 0), "-1");
    EXPECT_EQ(at(L"bools", 1), "false");
    EXPECT_EQ(at(L"strings", 0), "\"a\"");
    EXPECT_EQ(at(L"colors", 0), "[1,0.5,0]");
    EXPECT_EQ(at(L"points", 0), "[1,2,3]");
    EXPECT_EQ(params.GetTabParamCount(subject, L"none"), 0);
    for (const int outside : {-1, 2})
        EXPECT_EQ(at(L"floats", outside), "");
    EXPECT_EQ(params.GetTabParamCount(subject, L"percents"), -1);
    EXPECT_EQ(params.GetTabParamCount(subject, L"scalar"), -1);
    EXPECT_EQ(params.GetTabParamCount(subject, L"missing"), -1);
    EXPECT_EQ(at(L"percents", 0), "");
    // Tables of any number type, where a writer needs them.
    EXPECT_EQ(params.CountElements(subject, L"percents"), 1);
    EXPECT_EQ(params.FindTabNumber(subject, L"percents", 0), 0.25f);
    EXPECT_EQ(params.FindTabNumber(subject, L"strings", 0), std::nullopt);
}

TEST(ParamReader, NamesOfMapsAndSwitches) {
    Mtl* const subject = Subject(
        {Block({Param("first", "texmap", nullptr), Param("maps", "texmap_tab", {nullptr, "stone"}),
                Param("on", "bool", true), Param("ons", "bool_tab", {true})}),
         Block({Param("second", "texmap", "wood"), Param("third", "texmap", "wood"),
                Param("off", "bool", false)})});
    ParamReader params;
    const std::vector<TexmapParam> held = params.CollectTexmapParams(subject);
    ASSERT_EQ(held.size(), 3u);
    Texmap* const stone = held[0].map;
    Texmap* const wood = held[1].map;
    int index = 5;
    EXPECT_EQ(params.FindTexmapParamName(subject, wood), L"second");
    EXPECT_EQ(params.FindTexmapParamName(subject, stone), L"");
    EXPECT_EQ(params.FindTexmapTabParamName(subject, stone, &index), L"maps");
    EXPECT_EQ(index, 1);
    EXPECT_EQ(params.FindTexmapTabParamName(subject, wood, &index), L"");
    EXPECT_EQ(index, -1);
    EXPECT_EQ(params.FindTexmapParamName(subject, nullptr), L"");
    std::vector<std::wstring> names;
    params.ListBoolParamNames(subject, names);
    params.ListBoolTabParamNames(subject, names);
    EXPECT_EQ(names, (std::vector<std::wstring>{L"on", L"off", L"ons"}));
}

TEST(ParamReader, TablesOfRowsFollowTheirOrderForEachLayout) {
    constexpr ParamRow rows[] = {{L"b", L"B"},
                                 {L"missing", L"M"},
                                 {L"a", L"A"},
                                 {L"B", L"A"},
                                 {L"length", L"L", {}, RowUnit::Length},
                                 {L"name", L"N", {}, RowUnit::Length}};
    ParamReader params;
    const auto text = [&](Mtl* subject) {
        JsonMembers members;
        params.AppendTable(members, subject, rows, 0.5f);
        return WideToUtf8(JoinJsonMembers(members, L""));
    };
    const auto subjects =
        Subjects({{Block({Param("A", "float", 1), Param("b", "int", 2), Param("length", "world", 3),
                          Param("name", "string", "n")})},
                  {Block({Param("A", "float", 1)})}});
    EXPECT_EQ(text(subjects.at(0)), "\"B\":2,\n\"A\":1,\n\"A\":2,\n\"L\":1.5");
    EXPECT_EQ(text(subjects.at(1)), "\"A\":1");
    EXPECT_EQ(text(subjects.at(0)), "\"B\":2,\n\"A\":1,\n\"A\":2,\n\"L\":1.5");
    EXPECT_EQ(text(nullptr), "");
}

} // namespace
} // namespace brimwave
