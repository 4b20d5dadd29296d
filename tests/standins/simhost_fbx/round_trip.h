#pragma once
// A scene of the stand-in host, exported and read back.
#include "tests/standins/simhost_fbx/fbx_reader.h"

#include <max.h>

#include <assimp/Importer.hpp>
#include <assimp/scene.h>

#include <filesystem>
#include <string>
#include <string_view>

namespace fbxtest {

/// A folder of one test that goes with it.
class TempFolder {
  public:
    TempFolder();
    ~TempFolder();
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;
    [[nodiscard]] const std::filesystem::path& Path() const { return path_; }

  private:
    std::filesystem::path path_;
};

struct SceneFile {
    std::filesystem::path path;
};

/// Opens the scene of a scene file's text (the members beside "format" and "version"), exports
/// it and parses the file strictly. A failure on the way fails the test and leaves it empty.
class RoundTrip {
  public:
    explicit RoundTrip(std::string_view members);
    explicit RoundTrip(const SceneFile& file);

    [[nodiscard]] const Record& File() const { return file_; }
    [[nodiscard]] const std::filesystem::path& Path() const { return path_; }
    /// What the importer makes of it; fails the test and returns an empty scene when nothing.
    [[nodiscard]] const aiScene& Read();

  private:
    void Export(const std::filesystem::path& sceneFile);
    TempFolder folder_;
    std::filesystem::path path_;
    Record file_;
    Assimp::Importer importer_;
    aiScene empty_;
};

/// A path as the host takes it.
[[nodiscard]] std::wstring Wide(const std::filesystem::path& path);
/// UTF-8 of a host text that may be null.
[[nodiscard]] std::string Utf8(const wchar_t* text);

} // namespace fbxtest
