#include "pipeline/export_sequence.h"
#include "sceneconv/write_scene.h"
#include "simhost/files/scene_file.h"
#include "tests/standins/simhost_fbx/round_trip.h"
#include "tests/standins/simhost_fbx/scene_compare.h"
#include "tests/support/fake_http.h"
#include "tests/support/places.h"
#include "tests/support/recording_panel.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <set>

namespace {

using namespace fbxtest;

std::vector<std::filesystem::path> SharedScenes() {
    std::vector<std::filesystem::path> scenes;
    const char* shared = std::getenv("BRIMWAVE_SHARED");
    if (!shared || !std::filesystem::is_directory(std::filesystem::path(shared) / "scenes"))
        return scenes;
    for (const auto& entry :
         std::filesystem::recursive_directory_iterator(std::filesystem::path(shared) / "scenes")) {
        std::string kind = entry.path().extension().string();
        std::transform(kind.begin(), kind.end(), kind.begin(),
                       [](char c) { return static_cast<char>(std::tolower(c)); });
        if (kind == ".fbx" || kind == ".gltf" || kind == ".glb")
            scenes.push_back(entry.path());
    }
    return scenes;
}

void AddSolidNodes(const aiNode& node, std::set<std::string>& names) {
    if (node.mNumMeshes > 0)
        names.insert(node.mName.C_Str());
    for (unsigned i = 0; i < node.mNumChildren; ++i)
        AddSolidNodes(*node.mChildren[i], names);
}

/// What an export of the open scene leaves as FBX, read while the scene is as it was written: the
/// splines have their twins, and the materials the names of the export. Gives the names of the
/// nodes that have faces in the file.
std::set<std::string> ExpectExportComesBack() {
    const TempFolder exchange;
    brimwave::testing::FakeHttp service;
    service.Answer(200, L"{\"balance\": 1, \"daily_limit\": 0}").Answer(200, L"");
    brimwave::testing::RecordingPanel panel;
    panel.folder = Wide(exchange.Path());
    int compared = 0;
    std::set<std::string> solid;
    panel.onCall = [&](const std::wstring& line) {
        if (!line.starts_with(L"status 40 "))
            return;
        const std::filesystem::directory_iterator job(exchange.Path());
        for (const auto& file : std::filesystem::directory_iterator(job->path())) {
            if (file.path().extension() != ".fbx")
                continue;
            Assimp::Importer importer;
            const aiScene* const scene = importer.ReadFile(file.path().string(), 0);
            ASSERT_TRUE(scene) << importer.GetErrorString();
            ExpectSameScene(*scene);
            AddSolidNodes(*scene->mRootNode, solid);
            ++compared;
        }
    };
    brimwave::ExportAndSend(panel);
    EXPECT_EQ(compared, 1);
    EXPECT_TRUE(panel.status.starts_with(L"Done  OK")) << Utf8(panel.status.c_str());
    return solid;
}

// All that an export carries and a plain scene file does not show: twins of splines (hidden, in
// groups, below others), instances, colours, names of any kind, materials of one name.
TEST(FbxRealScenes, AnExportComesBackWithTwinsAndNamesOfItsOwn) {
    const simhost::LoadResult loaded = simhost::LoadSceneText(R"({
        "format": "simhost-scene", "version": 1, "file_name": "C:\\кухня \"1\".max",
        "materials": {
          "a": {"class": "Physical Material", "name": "Дерево \"дуб\""},
          "b": {"class": "Physical Material", "name": "Дерево  дуб"},
          "two": {"class": "Multi/Sub-Object", "name": "both", "sub_materials": ["a", "b"]}},
        "objects": {
          "cable": {"class": "Line", "params": {"render_renderable": true},
                    "splines": [{"points": [[0,0,0], [10,0,0], [10,10,5]]}]},
          "path": {"class": "Line", "params": {"render_renderable": false},
                   "splines": [{"points": [[0,0,0], [1,0,0]]}]},
          "pair": {"class": "Editable Mesh", "mesh": {
              "positions": [0,0,0, 1,0,0, 0,1,0, 1,1,0], "triangles": [0,1,2, 2,1,3],
              "material_ids": [0, 1], "colors": {"values": [1,0,0, 0,1,0, 0,0,1, 1,1,1]}}}},
        "nodes": [
          {"name": "Группа", "group_head": true, "transform": {"position": [1, 2, 3]},
           "children": [
             {"name": "Кабель \"а\" \\n", "object": "cable", "group_member": true,
              "material": "a", "transform": {"rotation": [0, 30, 60], "scale": [-1, 2, 1]}},
             {"name": "pair", "object": "pair", "group_member": true, "material": "two"}]},
          {"name": "hidden", "object": "cable", "hidden": true, "material": "b", "children": [
             {"name": "below", "object": "cable", "object_offset": {"position": [0, 0, 7]}}]},
          {"name": "path", "object": "path"},
          {"name": "instance", "object": "pair", "material": "two", "hidden": true}]})");
    ASSERT_TRUE(loaded) << loaded.error;
    const std::set<std::string> expected = {"Кабель \"а\" \\n", "pair", "hidden", "below",
                                            "instance"};
    EXPECT_EQ(ExpectExportComesBack(), expected);
}

TEST(FbxRealScenes, TheSampleComesBack) {
    const std::filesystem::path sample = brimwave::testing::SourcePath("samples/room/room.json");
    if (!std::filesystem::exists(sample))
        GTEST_SKIP() << "no sample scene";
    RoundTrip trip{SceneFile{sample}};
    ExpectSameScene(trip.Read());
    ExpectExportComesBack();
}

TEST(FbxRealScenes, ScenesOfTheWildComeBack) {
    const std::vector<std::filesystem::path> scenes = SharedScenes();
    if (scenes.empty())
        GTEST_SKIP() << "BRIMWAVE_SHARED names no folder with scenes";
    const TempFolder folder;
    for (const std::filesystem::path& scene : scenes) {
        SCOPED_TRACE(scene.filename().string());
        sceneconv::Warnings warnings;
        const std::filesystem::path converted = folder.Path() / "scene.json";
        (void)sceneconv::Convert(scene, converted, warnings);
        RoundTrip trip{SceneFile{converted}};
        ExpectSameScene(trip.Read());
        ExpectExportComesBack();
    }
}

} // namespace
