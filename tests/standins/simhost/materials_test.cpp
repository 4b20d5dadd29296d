#include "scene_kit.h"

#include "simhost/classes/catalogue.h"
#include "simhost/scene/factory.h"

#include <stdmat.h>

namespace {

using Materials = SceneTest;

TEST(Catalogue, EveryClassCanBeMadeAndRead) {
    std::vector<std::unique_ptr<ReferenceTarget>> kept;
    for (const simhost::ClassPtr& info : simhost::AllClasses()) {
        SCOPED_TRACE(testing::Message() << info->name);
        auto thing = simhost::MakeThing(info);
        EXPECT_EQ(thing->SuperClassID(), info->kind);
        EXPECT_EQ(thing->ClassID(), info->classId);
        simhost::Entity* entity = simhost::EntityOf(thing.get());
        for (int i = 0; i < entity->NumSubObjects(); ++i)
            EXPECT_NE(entity->SubObject(i), nullptr) << "sub-object " << i;
        if (auto* base = dynamic_cast<MtlBase*>(thing.get())) {
            for (int i = 0; i < base->NumSubTexmaps(); ++i) {
                EXPECT_EQ(base->GetSubTexmap(i), nullptr);
                EXPECT_FALSE(base->GetSubTexmapSlotName(i, false).isNull());
            }
        }
    }
    EXPECT_GT(simhost::AllClasses().size(), 150u);
}

TEST(Catalogue, NamesThatTrapADispatcher) {
    const auto physical = simhost::FindClass(L"\rCoronaPhysicalMtl", MATERIAL_CLASS_ID);
    ASSERT_TRUE(physical);
    EXPECT_EQ(physical->blocks[0].desc->count, 171);
    EXPECT_EQ(*physical->blocks[0].desc->Name(), L"CoronaPhysicalMtlPb");
    EXPECT_NE(simhost::FindClass(L"Composite", MATERIAL_CLASS_ID),
              simhost::FindClass(L"Composite", TEXMAP_CLASS_ID));
    const auto bitmap = simhost::FindClass(L"VRayBitmap", TEXMAP_CLASS_ID);
    EXPECT_TRUE(bitmap->Find(L"HDRIMapName").Known());
    EXPECT_EQ(bitmap->blocks[0].desc->Params().back().name, L"");
}

TEST_F(Materials, SlotsAndTheirParametersAreOne) {
    OpenScene(R"~("maps": {"w": {"class": "Bitmap", "name": "Wood"}, "n": {"class": "Noise"}},
      "nodes": [{"name": "a", "material": {"class": "Physical Material", "params": {"base_color_map": "w", "roughness_map_on": false},
                                           "slots": {"Roughness": "n"}}},
                {"name": "b", "material": {"class": "Standard (Legacy)", "slots": {"Diffuse Color": "w", "Bump": "n"}, "slots_off": ["Bump"]
}
}])~");
    Mtl* mtl = MaterialOf(L"a");
    IParamBlock2* block = mtl->GetParamBlock(0);
    Interval valid = FOREVER;
    int found = 0;
    for (int i = 0; i < mtl->NumSubTexmaps(); ++i) {
        const MSTR slot = mtl->GetSubTexmapSlotName(i, false);
        Texmap* map = mtl->GetSubTexmap(i);
        if (slot == L"Base Color" && map && map->GetName() == L"Wood" && mtl->SubTexmapOn(i)) {
            ++found;
            mtl->SetSubTexmap(i, nullptr);
            Texmap* held = map;
            ParamBlockDesc2* desc = block->GetDesc();
            EXPECT_TRUE(block->GetValue(desc->IndextoID(desc->NameToIndex(L"base_color_map")), 0,
                                        held, valid));
            EXPECT_EQ(held, nullptr);
        } else if (slot == L"Roughness") {
            ++found;
            EXPECT_TRUE(map);
            EXPECT_FALSE(mtl->SubTexmapOn(i));
        } else {
            EXPECT_FALSE(map) << simhost::EntityOf(mtl)->SlotName(i)->c_str();
        }
    }
    EXPECT_EQ(found, 2);

    Mtl* standard = MaterialOf(L"b");
    ASSERT_EQ(standard->NumSubTexmaps(), 12);
    EXPECT_TRUE(standard->GetSubTexmap(1) && standard->SubTexmapOn(1));
    EXPECT_TRUE(standard->GetSubTexmap(8) && !standard->SubTexmapOn(8));
}

TEST_F(Materials, StandardKeepsItsColoursInItsShader) {
    OpenScene(
        R"~("nodes": [{"name": "a", "material": {"class": "Standard (Legacy)", "params": {"wire": true},
      "sub_objects": {
        "shader" : {
            "class" : "Phong", "params" : {
                "diffuse" : [ 1, 0, 0 ], "glossiness" : 0.4
            }
        }}
}
},
      {"name": "b", "material": {"class": "Standard", "sub_objects": {"shader": null}}}])~");
    Mtl* mtl = MaterialOf(L"a");
    EXPECT_EQ(mtl->NumParamBlocks(), 5);
    for (int b = 0; b < 5; ++b)
        EXPECT_EQ(mtl->GetParamBlock(b)->GetDesc()->NameToIndex(L"diffuse"), -1);
    ReferenceTarget* shader = nullptr;
    for (int i = 0; i < mtl->NumRefs(); ++i)
        if (auto* ref = mtl->GetReference(i); ref && ref->ClassName(false) == L"Phong")
            shader = ref;
    ASSERT_TRUE(shader);
    IParamBlock2* block = shader->GetParamBlock(0);
    ParamBlockDesc2* desc = block->GetDesc();
    Interval valid = FOREVER;
    Color diffuse;
    EXPECT_TRUE(block->GetValue(desc->IndextoID(desc->NameToIndex(L"diffuse")), 0, diffuse, valid));
    EXPECT_EQ(diffuse, Color(1, 0, 0));
    Mtl* bare = MaterialOf(L"b");
    EXPECT_EQ(bare->GetReference(bare->NumRefs() - 1), nullptr);
}

TEST_F(Materials, BitmapsKeepPathAndPlacementOutOfTheirBlocks) {
    OpenScene(
        R"("nodes": [{"name": "a", "material": {"class": "Physical Material", "params": {"bump_map":
      {"class": "Bitmap", "file": "C:\\maps\\a.png", "params": {"clipu": 0.25},
       "sub_objects": {"uvgen": {"params": {"U_Offset": 0.5, "V_Tiling": 4, "V_Mirror": true, "W_Angle": 1.5}},
                       "output": {"params": {"Invert": true, "Output_Amount": 2}}}}}}}])");
    Mtl* mtl = MaterialOf(L"a");
    auto* bitmap = dynamic_cast<BitmapTex*>(
        simhost::EntityOf(mtl)->SlotMap(simhost::EntityOf(mtl)->FindSlot(L"bump_map")));
    ASSERT_TRUE(bitmap);
    EXPECT_EQ(bitmap->ClassID(), Class_ID(BMTEX_CLASS_ID, 0));
    ASSERT_EQ(bitmap->NumParamBlocks(), 1);
    EXPECT_EQ(bitmap->GetParamBlock(0)->GetDesc()->NameToIndex(L"fileName"), -1);
    EXPECT_STREQ(bitmap->GetMapName(), L"C:\\maps\\a.png");
    EXPECT_EQ(bitmap->GetMap().GetFileName(), L"C:\\maps\\a.png");
    bitmap->SetMapName(L"b.png");
    EXPECT_STREQ(bitmap->GetMapName(), L"b.png");
    StdUVGen* uv = bitmap->GetUVGen();
    ASSERT_TRUE(uv);
    EXPECT_EQ(uv->NumParamBlocks(), 0);
    EXPECT_EQ(uv->GetUOffs(0), 0.5f);
    EXPECT_EQ(uv->GetUScl(0), 1);
    EXPECT_EQ(uv->GetVScl(0), 4);
    EXPECT_EQ(uv->GetWAng(0), 1.5f);
    EXPECT_EQ(uv->GetTextureTiling(), U_WRAP | V_WRAP | V_MIRROR);
    const simhost::Entity* output = simhost::EntityOf(bitmap->GetTexout());
    EXPECT_EQ(output->Int(L"Invert"), 1);
    EXPECT_EQ(output->Float(L"Output_Amount"), 2);
}

TEST_F(Materials, MultiMaterialsGrowAndKeepEmptyEntries) {
    OpenScene(R"("materials": {"a": {"class": "Physical Material", "name": "A"}},
      "nodes": [{"name": "n", "material": {"class": "Multi/Sub-Object", "sub_materials": ["a", null, "a"],
        "sub_material_names": ["wood", null, "iron"], "sub_material_ids": [0, 4, 7]}}])");
    auto* multi = dynamic_cast<MultiMtl*>(MaterialOf(L"n"));
    ASSERT_TRUE(multi);
    EXPECT_TRUE(multi->IsMultiMtl());
    ASSERT_EQ(multi->NumSubMtls(), 3);
    EXPECT_EQ(multi->GetSubMtl(0), multi->GetSubMtl(2));
    EXPECT_EQ(multi->GetSubMtl(1), nullptr);
    const simhost::Entity* entity = simhost::EntityOf(multi);
    simhost::ParamPlace third = entity->FindParam(L"names");
    third.element = 2;
    EXPECT_EQ(std::get<simhost::Text>(*entity->Get(third)), L"iron");
    multi->SetNumSubMtls(5);
    EXPECT_EQ(multi->NumSubMtls(), 5);
    EXPECT_EQ(multi->GetSubMtl(4), nullptr);
    EXPECT_EQ(multi->GetSubMtl(17), nullptr);
}

TEST_F(Materials, CyclesAndSharedMapsLoad) {
    OpenScene(
        R"("maps": {"a": {"class": "Checker", "params": {"map1": "b"}}, "b": {"class": "Noise", "params": {"map1": "a"}}},
      "materials": {"m": {"class": "Blend", "sub_materials": ["m", "m"], "params": {"mask": "a"}}},
      "nodes": [{"name": "n", "material": "m"}])");
    Mtl* mtl = MaterialOf(L"n");
    EXPECT_EQ(mtl->GetSubMtl(0), mtl);
    Texmap* a = mtl->GetSubTexmap(0);
    EXPECT_EQ(a->GetSubTexmap(0)->GetSubTexmap(0), a);
}

TEST_F(Materials, SlotsOfTheFilesOwn) {
    OpenScene(R"("maps": {"w": {"class": "Checker"}},
      "nodes": [{"name": "n", "material": {"class": "Third", "super_class": "material", "class_id": ["0x10", 5],
        "blocks": [null, {"name": "p", "descriptor": false}, {"name": "q", "id": 7, "params": [
          {"name": "amount", "type": "texmap"}, {"name": "list", "type": "texmap_tab", "value": [null, "w"]},
          {"name": "listOn", "type": "bool_tab", "value": [true, false]}]},
          {"name": "r", "params": [{"name": "amount", "type": "float", "value": 0.5}]}],
        "params": {"r|amount": 0.75},
        "slot_list": [{"name": "Free", "map": "w", "on": false}, {"name": null},
                      {"name": "Second", "param": "list", "index": 1, "on_param": "listOn", "on_index": 1}]}}])");
    Mtl* mtl = MaterialOf(L"n");
    EXPECT_EQ(mtl->ClassID(), Class_ID(0x10, 5));
    ASSERT_EQ(mtl->NumParamBlocks(), 4);
    EXPECT_EQ(mtl->GetParamBlock(0), nullptr);
    EXPECT_EQ(mtl->GetParamBlock(1)->GetDesc(), nullptr);
    Interval valid = FOREVER;
    float amount = 0;
    EXPECT_TRUE(mtl->GetParamBlock(3)->GetValue(0, 0, amount, valid));
    EXPECT_EQ(amount, 0.75f);
    ASSERT_EQ(mtl->NumSubTexmaps(), 3);
    EXPECT_TRUE(mtl->GetSubTexmap(0) && !mtl->SubTexmapOn(0));
    EXPECT_TRUE(!mtl->GetSubTexmap(1) && mtl->SubTexmapOn(1));
    EXPECT_TRUE(mtl->GetSubTexmapSlotName(1, false).isNull());
    EXPECT_TRUE(mtl->GetSubTexmap(2) && !mtl->SubTexmapOn(2));
}

TEST_F(Materials, BlocksOfTheFileExtendAClass) {
    OpenScene(R"("nodes": [{"name": "n", "material": {"class": "Physical Material", "blocks": [
       {"name": "Parameters", "params": [{"name": "Roughness", "type": "angle", "value": 0.3}, {"name": "new", "type": "int", "value": 4}]},
       {"name": "More", "params": [{"name": "roughness", "type": "float", "value": 0.9}]}]}}])");
    Mtl* mtl = MaterialOf(L"n");
    ASSERT_EQ(mtl->NumParamBlocks(), 2);
    ParamBlockDesc2* desc = mtl->GetParamBlock(0)->GetDesc();
    EXPECT_EQ(desc->NameToIndex(L"roughness"), -1);
    const int at = desc->NameToIndex(L"Roughness");
    ASSERT_GE(at, 0);
    EXPECT_EQ(desc->paramdefs[at].type, TYPE_ANGLE);
    EXPECT_EQ(desc->paramdefs[desc->count - 1].int_name, std::wstring(L"new"));
    EXPECT_EQ(mtl->GetSubTexmapSlotName(1, false), L"Base Color"); // the slots stay
    EXPECT_STREQ(mtl->GetParamBlock(1)->GetDesc()->int_name, L"More");
}

TEST_F(Materials, FaultsOnDemand) {
    OpenScene(
        R"("nodes": [{"name": "a", "material": {"class": "Checker2", "blocks": [{"name": "p", "throws": ["GetDesc"]}], "throws": ["GetName", "NumSubTexmaps"]}},
      {"name": "b", "material": {"class": "Physical Material", "throws": true, "throw_kind": "other"}}])");
    Mtl* some = MaterialOf(L"a");
    EXPECT_THROW((void)some->GetName(), std::runtime_error);
    EXPECT_THROW((void)some->NumSubTexmaps(), std::runtime_error);
    EXPECT_THROW((void)some->GetParamBlock(0)->GetDesc(), std::runtime_error);
    EXPECT_EQ(some->NumSubMtls(), 0);
    Mtl* all = MaterialOf(L"b");
    EXPECT_THROW((void)all->ClassName(false), int);
    EXPECT_THROW((void)all->NumParamBlocks(), int);
    EXPECT_THROW((void)all->SuperClassID(), int);
}

} // namespace
