#include "sceneconv/write_scene.h"
#include "tests/simhost_fbx/round_trip.h"
#include "tests/simhost_fbx/scene_compare.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

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

TEST(FbxRealScenes, TheSampleComesBack) {
    const std::filesystem::path sample =
        std::filesystem::path(BRIMWAVE_SOURCE_DIR) / "samples" / "room" / "room.json";
    if (!std::filesystem::exists(sample))
        GTEST_SKIP() << "no sample scene";
    RoundTrip trip{SceneFile{sample}};
    ExpectSameScene(trip.Read());
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
    }
}

} // namespace
