#include "scene_kit.h"

#include <iparamb2.h>

#include <set>

namespace {

using Params = SceneTest;

ParamID IdOf(IParamBlock2* block, const wchar_t* name) {
    return block->IndextoID(block->GetDesc()->NameToIndex(name));
}

/// One parameter of each type in one block of a class that only the file knows.
constexpr const char* everyType = R"(
 "maps": {"m": {"class": "Checker"}},
 "nodes": [{"name": "n", "material": {"class": "Own", "blocks": [{"name": "b", "params": [
  {"name": "float", "type": "float", "value": 1.5}, {"name": "world", "type": "world", "value": "inf"},
  {"name": "int", "type": "int", "value": -3}, {"name": "bool", "type": "bool", "value": true},
  {"name": "radio", "type": "radiobtn_index", "value": 2},
  {"name": "rgba", "type": "rgba", "value": [0.1, 0.2, 0.3]},
  {"name": "frgba", "type": "frgba", "value": [0.1, 0.2, 0.3, 0.4]},
  {"name": "point3", "type": "point3", "value": [1, 2, 3]},
  {"name": "string", "type": "string", "value": "text"}, {"name": "null", "type": "string", "value": null},
  {"name": "file", "type": "filename", "value": "C:\\a.png"},
  {"name": "map", "type": "texmap", "value": "m"}, {"name": "mtl", "type": "mtl"},
  {"name": "node", "type": "inode", "value": "n"}, {"name": "ref", "type": "reftarg", "value": "m"},
  {"name": "matrix", "type": "matrix3", "value": [[1,0,0],[0,1,0],[0,0,1],[7,8,9]]},
  {"name": "floats", "type": "float_tab", "value": [1, 2, "nan"]},
  {"name": "maps", "type": "texmap_tab", "value": ["m", null]},
  {"name": null, "type": "int", "value": 9}, {"name": "", "type": "int", "value": 10}]}]}}])";

TEST_F(Params, EveryTypeIsReadAsItselfAndAsNothingElse) {
    OpenScene(everyType);
    IParamBlock2* block = MaterialOf(L"n")->GetParamBlock(0);
    Interval valid = FOREVER;
    // Which of the readers answers for which parameter.
    const std::pair<const wchar_t*, char> kinds[] = {
        {L"float", 'f'},  {L"world", 'f'}, {L"int", 'i'},    {L"bool", 'i'},
        {L"radio", 'i'},  {L"rgba", '3'},  {L"point3", '3'}, {L"frgba", '4'},
        {L"string", 's'}, {L"null", 's'},  {L"file", 's'},   {L"map", 't'},
        {L"mtl", 'm'},    {L"node", 'n'},  {L"ref", 'r'},    {L"matrix", 'x'}};
    for (const auto& [name, kind] : kinds) {
        const ParamID id = IdOf(block, name);
        float f = 0;
        int i = 0;
        Point3 p3;
        Color color;
        Point4 p4;
        AColor acolor;
        const MCHAR* s = nullptr;
        Mtl* mtl = nullptr;
        Texmap* map = nullptr;
        INode* node = nullptr;
        ReferenceTarget* ref = nullptr;
        Matrix3 matrix;
        EXPECT_EQ(block->GetValue(id, 0, f, valid) != 0, kind == 'f') << name;
        EXPECT_EQ(block->GetValue(id, 0, i, valid) != 0, kind == 'i') << name;
        EXPECT_EQ(block->GetValue(id, 0, p3, valid) != 0, kind == '3') << name;
        EXPECT_EQ(block->GetValue(id, 0, color, valid) != 0, kind == '3') << name;
        EXPECT_EQ(block->GetValue(id, 0, p4, valid) != 0, kind == '4') << name;
        EXPECT_EQ(block->GetValue(id, 0, acolor, valid) != 0, kind == '4') << name;
        EXPECT_EQ(block->GetValue(id, 0, s, valid) != 0, kind == 's') << name;
        EXPECT_EQ(block->GetValue(id, 0, mtl, valid) != 0, kind == 'm') << name;
        EXPECT_EQ(block->GetValue(id, 0, map, valid) != 0, kind == 't') << name;
        EXPECT_EQ(block->GetValue(id, 0, node, valid) != 0, kind == 'n') << name;
        EXPECT_EQ(block->GetValue(id, 0, ref, valid) != 0, kind == 'r') << name;
        EXPECT_EQ(block->GetValue(id, 0, matrix, valid) != 0, kind == 'x') << name;
        EXPECT_FALSE(block->GetValue(id, 0, f, valid, 1)) << name << " is no table";
    }
}

TEST_F(Params, ValuesTablesAndReferences) {
    OpenScene(everyType);
    IParamBlock2* block = MaterialOf(L"n")->GetParamBlock(0);
    Interval valid = FOREVER;
    float f = 0;
    EXPECT_TRUE(block->GetValue(IdOf(block, L"world"), 0, f, valid));
    EXPECT_TRUE(std::isinf(f));
    const ParamID floats = IdOf(block, L"floats");
    EXPECT_EQ(block->Count(floats), 3);
    EXPECT_TRUE(block->GetValue(floats, 0, f, valid, 2));
    EXPECT_TRUE(std::isnan(f));
    for (const int outside : {-1, 3})
        EXPECT_FALSE(block->GetValue(floats, 0, f, valid, outside));
    EXPECT_EQ(block->Count(999), 0);
    const MCHAR* text = L"kept";
    EXPECT_TRUE(block->GetValue(IdOf(block, L"null"), 0, text, valid));
    EXPECT_EQ(text, nullptr);
    INode* node = nullptr;
    EXPECT_TRUE(block->GetValue(IdOf(block, L"node"), 0, node, valid));
    EXPECT_EQ(node, NodeNamed(L"n"));
    EXPECT_EQ(block->GetAssetUser(IdOf(block, L"file")).GetFileName(), L"C:\\a.png");
    ParamBlockDesc2* desc = block->GetDesc();
    EXPECT_EQ(desc->paramdefs[desc->count - 2].int_name, nullptr);
    EXPECT_STREQ(desc->paramdefs[desc->count - 1].int_name, L"");
}

TEST_F(Params, WritingKeepsToTypes) {
    OpenScene(everyType);
    IParamBlock2* block = MaterialOf(L"n")->GetParamBlock(0);
    EXPECT_FALSE(block->SetValue(IdOf(block, L"float"), 0, 3));
    EXPECT_TRUE(block->SetValue(IdOf(block, L"float"), 0, 3.0f));
    EXPECT_FALSE(block->SetValue(IdOf(block, L"map"), 0, MaterialOf(L"n"))); // no map
    EXPECT_TRUE(block->SetValue(IdOf(block, L"mtl"), 0, MaterialOf(L"n")));
}

TEST_F(Params, ReferencesToWhatIsDeletedTurnNull) {
    OpenScene(everyType);
    IParamBlock2* block = MaterialOf(L"n")->GetParamBlock(0);
    Interval valid = FOREVER;
    Texmap* map = nullptr;
    ASSERT_TRUE(block->GetValue(IdOf(block, L"map"), 0, map, valid));
    const AnimHandle handle = Animatable::GetHandleByAnim(map);
    ASSERT_EQ(Animatable::GetAnimByHandle(handle), map);
    simhost::Scene::Current().Delete(map);
    EXPECT_TRUE(block->GetValue(IdOf(block, L"map"), 0, map, valid));
    EXPECT_EQ(map, nullptr);
    EXPECT_EQ(Animatable::GetAnimByHandle(handle), nullptr);
    EXPECT_EQ(Animatable::GetAnimByHandle(0), nullptr);
}

TEST_F(Params, DescriptorsAreSharedByAllOfTheSameShape) {
    OpenScene(R"("nodes": [
      {"name": "a", "material": {"class": "Physical Material", "params": {"roughness": 0.1}}},
      {"name": "b", "material": {"class": "Physical Material"}},
      {"name": "c", "material": {"class": "Physical Material", "omit_params": ["sheen"]}},
      {"name": "d", "material": {"class": "Physical Material", "omit_params": ["sheen"]}},
      {"name": "e", "material": {"class": "X", "blocks": [{"name": "p", "params": [{"name": "a", "type": "int", "value": 1}]}]}},
      {"name": "f", "material": {"class": "X", "blocks": [{"name": "p", "params": [{"name": "a", "type": "int", "value": 2}]}]}}])");
    const auto desc = [](const wchar_t* node) {
        return MaterialOf(node)->GetParamBlock(0)->GetDesc();
    };
    EXPECT_EQ(desc(L"a"), desc(L"b"));
    EXPECT_EQ(desc(L"c"), desc(L"d"));
    EXPECT_EQ(desc(L"e"), desc(L"f"));
    EXPECT_NE(desc(L"a"), desc(L"c"));
    EXPECT_EQ(desc(L"c")->NameToIndex(L"sheen"), -1);
    EXPECT_GE(desc(L"c")->NameToIndex(L"sheen_color"), 0);
    std::set<ParamID> ids;
    for (int i = 0; i < desc(L"a")->count; ++i)
        EXPECT_TRUE(ids.insert(desc(L"a")->IndextoID(i)).second);
}

} // namespace
