#include "tests/standins/simhost_fbx/round_trip.h"

#include "simhost/files/fbx_export.h"
#include "simhost/files/scene_file.h"
#include "text/utf8.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <fstream>
#include <iterator>

namespace fbxtest {

TempFolder::TempFolder() {
    static int count = 0;
    path_ = std::filesystem::temp_directory_path() /
            ("simhost_fbx_" + std::to_string(getpid()) + "_" + std::to_string(++count));
    std::filesystem::create_directories(path_);
}

TempFolder::~TempFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

RoundTrip::RoundTrip(std::string_view members) {
    const std::filesystem::path file = folder_.Path() / "scene.json";
    std::ofstream(file) << R"({"format": "simhost-scene", "version": 1, )" << members << "}";
    Export(file);
}

RoundTrip::RoundTrip(const SceneFile& file) {
    Export(file.path);
}

void RoundTrip::Export(const std::filesystem::path& sceneFile) {
    path_ = folder_.Path() / "scene.fbx";
    const simhost::LoadResult loaded = simhost::LoadSceneFile(Wide(sceneFile));
    if (!loaded) {
        ADD_FAILURE() << loaded.error;
        return;
    }
    const simhost::FbxExportResult result = simhost::ExportFbx(Wide(path_).c_str());
    if (!result.ok) {
        ADD_FAILURE() << Utf8(result.error.c_str());
        return;
    }
    std::ifstream stream(path_, std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(stream)), {});
    try {
        file_ = ReadFbx(bytes);
    } catch (const std::exception& e) {
        ADD_FAILURE() << e.what();
    }
}

const aiScene& RoundTrip::Read() {
    const aiScene* scene = importer_.ReadFile(path_.string(), 0);
    if (!scene || !scene->mRootNode) {
        ADD_FAILURE() << importer_.GetErrorString();
        if (!empty_.mRootNode)
            empty_.mRootNode = new aiNode("RootNode");
        return empty_;
    }
    return *scene;
}

std::wstring Wide(const std::filesystem::path& path) {
    return utf8::ToWide(path.string());
}

std::string Utf8(const wchar_t* text) {
    return text ? utf8::FromWide(text) : std::string();
}

} // namespace fbxtest
