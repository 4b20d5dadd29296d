#include "tests/standins/simhost_fbx/round_trip.h"

#include "simhost/files/fbx_texture.h"

#include <gmock/gmock.h>

#include <map>

namespace {

using namespace fbxtest;
using testing::ElementsAre;
using testing::Pair;
using testing::UnorderedElementsAre;

const Record& MaterialOf(const Record& file, std::string_view name) {
    for (const Record* material : file["Objects"].All("Material"))
        if (material->ObjectName() == name)
            return *material;
    throw std::runtime_error("no material " + std::string(name));
}

/// File names of the textures on a material, by property.
std::multimap<std::string, std::string> TexturesOf(const Record& file, std::string_view name) {
    std::map<std::int64_t, std::string> files;
    for (const Record* texture : file["Objects"].All("Texture"))
        files[texture->Int(0)] = (*texture)["FileName"].Text();
    std::multimap<std::string, std::string> found;
    for (const Record* c : file["Connections"].All("C"))
        if (c->Text() == "OP" && c->Int(2) == MaterialOf(file, name).Int(0) &&
            files.contains(c->Int(1)))
            found.emplace(c->Text(3), files[c->Int(1)]);
    return found;
}

std::string TypeOf(const Record& material, const char* property) {
    const Record* p = material.Property(property);
    return p ? p->Text(1) : "absent";
}

constexpr const char* materials = R"(
    "maps": {
      "wood": {"class": "Bitmap", "name": "Wood", "file": "C:\\maps\\дерево.jpg"},
      "corona": {"class": "CoronaBitmap", "name": "cb", "params": {"filename": "d:/x/y.png"}},
      "noise": {"class": "Noise", "name": "noise"},
      "mix": {"class": "Mix", "name": "mix", "slots": ["noise", "wood"]}},
    "materials": {
      "plain": {"class": "Physical Material", "name": "plain",
                "params": {"base_color": [0.8,0.4,0.2,1], "roughness": 0.35,
                           "base_color_map": "wood", "bump_map": "noise",
                           "emit_color_map": "corona"}},
      "corona": {"class": "\rCoronaPhysicalMtl", "name": "Ко\"рона",
                 "params": {"baseColor": [1,0.5,0.25], "baseTexmap": "mix"}},
      "odd": {"class": "Oddity", "name": "odd", "super_class": "material",
              "class_id": ["0x11", "0x22"],
              "blocks": [{"name": "", "params": [
                {"name": "glow", "type": "float", "value": 0.5},
                {"name": null, "type": "int", "value": 3},
                {"name": "on", "type": "bool", "value": 1},
                {"name": "tint", "type": "rgba", "value": [1,2,3]},
                {"name": "path", "type": "filename", "value": "\\\\server\\a b.exr"},
                {"name": "nothing", "type": "string", "value": null},
                {"name": "layers", "type": "texmap_tab", "value": ["wood", null]},
                {"name": "amounts", "type": "pcnt_frac_tab", "value": [0.25, 0.75]},
                {"name": "base", "type": "mtl", "value": "hidden one"}]}]},
      "hidden one": {"class": "Physical Material", "name": "hidden one"}},
    "objects": {"box": {"class": "Box"}},
    "nodes": [{"name": "1", "object": "box", "material": "plain"},
              {"name": "2", "object": "box", "material": "corona"},
              {"name": "3", "object": "box", "material": "odd"},
              {"name": "4", "object": "box", "material": "plain"}])";

TEST(FbxMaterials, CarryTheHostsParameters) {
    RoundTrip trip{std::string_view(materials)};
    const Record& file = trip.File();
    EXPECT_EQ(file["Objects"].All("Material").size(), 4u); // the part of another one included
    const Record& plain = MaterialOf(file, "plain");
    EXPECT_EQ(plain["ShadingModel"].Text(), "unknown");
    EXPECT_EQ(plain.Property("3dsMax|ClassIDa")->Int(4), 0x3d6b1cec);
    EXPECT_EQ(plain.Property("3dsMax|ClassIDb")->Int(4), static_cast<std::int32_t>(0xdeadc001u));
    EXPECT_EQ(plain.Property("3dsMax|SuperClassID")->Int(4), 3072);
    EXPECT_EQ(TypeOf(plain, "3dsMax|Parameters|base_color"), "ColorAndAlpha");
    EXPECT_EQ(TypeOf(plain, "3dsMax|Parameters|roughness"), "Float");
    EXPECT_EQ(TypeOf(plain, "3dsMax|Parameters|roughness_inv"), "Bool");
    EXPECT_EQ(TypeOf(plain, "3dsMax|Parameters|material_mode"), "Integer");
    EXPECT_EQ(TypeOf(plain, "3dsMax|Parameters|base_color_map"), "Reference");
    EXPECT_NEAR(std::get<double>(plain.Property("DiffuseColor")->values[5]), 0.4, 1e-6);

    const Record& odd = MaterialOf(file, "odd");
    EXPECT_EQ(odd.Property("3dsMax|ClassIDb")->Int(4), 0x22);
    EXPECT_EQ(std::get<double>(odd.Property("3dsMax|ParamBlock_0|glow")->values[4]), 0.5);
    EXPECT_EQ(odd.Property("3dsMax|ParamBlock_0|_Unnamed_Parameter_1")->Int(4), 3);
    EXPECT_EQ(odd.Property("3dsMax|ParamBlock_0|path")->Text(4), "\\\\server\\a b.exr");
    EXPECT_EQ(odd.Property("3dsMax|ParamBlock_0|nothing")->Text(4), "");
    EXPECT_EQ(TypeOf(odd, "3dsMax|ParamBlock_0|tint"), "Color");
    EXPECT_EQ(std::get<double>(odd.Property("3dsMax|ParamBlock_0|amounts|1")->values[4]), 0.75);
}

TEST(FbxMaterials, PointAtTheirTextures) {
    RoundTrip trip{std::string_view(materials)};
    const Record& file = trip.File();
    const std::string wood = "C:\\maps\\дерево.jpg";
    EXPECT_EQ(file["Objects"].All("Texture").size(), 2u);
    EXPECT_EQ(file["Objects"].All("Video").size(), 2u);
    EXPECT_THAT(TexturesOf(file, "plain"),
                UnorderedElementsAre(Pair("3dsMax|Parameters|base_color_map", wood),
                                     Pair("3dsMax|Parameters|emit_color_map", "d:/x/y.png"),
                                     Pair("DiffuseColor", wood)));
    // A map that is no file shows through the file below it.
    EXPECT_THAT(TexturesOf(file, "Ко\"рона"), UnorderedElementsAre(Pair("DiffuseColor", wood)));
    EXPECT_THAT(TexturesOf(file, "odd"),
                UnorderedElementsAre(Pair("3dsMax|ParamBlock_0|layers|0", wood)));
}

TEST(FbxMaterials, ReachTheImporter) {
    RoundTrip trip{std::string_view(materials)};
    const aiScene& scene = trip.Read();
    std::vector<std::string> names;
    for (unsigned i = 0; i < scene.mNumMaterials; ++i)
        names.emplace_back(scene.mMaterials[i]->GetName().C_Str());
    ASSERT_THAT(names, UnorderedElementsAre("plain", "Ко\"рона", "odd"));
    for (unsigned i = 0; i < scene.mNumMaterials; ++i) {
        if (names[i] != "plain")
            continue;
        aiColor4D colour;
        EXPECT_EQ(scene.mMaterials[i]->Get("$raw.3dsMax|Parameters|base_color", 0, 0, colour),
                  aiReturn_SUCCESS);
        EXPECT_NEAR(colour.r, 0.8f, 1e-6f);
        aiString file;
        EXPECT_EQ(scene.mMaterials[i]->GetTexture(aiTextureType_DIFFUSE, 0, &file),
                  aiReturn_SUCCESS);
        EXPECT_STREQ(file.C_Str(), "C:\\maps\\дерево.jpg");
    }
}

TEST(FbxTextures, AreNamedFromTheFileThatUsesThem) {
    const struct {
        const char *folder, *file, *relative;
    } rows[] = {
        {"C:\\jobs\\one\\", "C:\\jobs\\one\\a.png", "a.png"},
        {"C:\\jobs\\one", "C:\\jobs\\one\\maps\\a.png", "maps\\a.png"},
        {"C:\\jobs\\one\\", "C:\\maps\\a.png", "..\\..\\maps\\a.png"},
        {"C:\\jobs\\one\\", "D:\\maps\\a.png", "D:\\maps\\a.png"},
        {"/jobs/one/", "/maps/a.png", "..\\..\\maps\\a.png"},
        {"/jobs/one/", "/jobs/two/a.png", "..\\two\\a.png"},
        {"C:\\jobs\\one\\", "a.png", "a.png"},
        {"", "C:\\maps\\a.png", "C:\\maps\\a.png"},
        {"\\\\server\\share\\job\\", "\\\\server\\share\\maps\\a.png", "..\\maps\\a.png"},
        {"\\\\server\\share\\job\\", "\\\\server\\other\\a.png", "\\\\server\\other\\a.png"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(simhost::FbxRelativeName(row.folder, row.file), row.relative) << row.folder;
}

} // namespace
