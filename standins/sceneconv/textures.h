// Texture files and the maps that use them.
#pragma once

#include "sceneconv/scene_json.h"
#include "sceneconv/source_scene.h"

#include <filesystem>
#include <map>
#include <set>
#include <string>

namespace sceneconv {

/// The last part of a path, whichever slashes it has.
[[nodiscard]] std::string FileName(const std::string& path);

/// Finds texture files, writes embedded ones beside the output and remembers the folders.
class TextureFiles {
  public:
    TextureFiles(const SourceScene& scene, const std::filesystem::path& output, Warnings& warnings)
        : scene_(scene), output_(output), warnings_(warnings) {}

    /// The path for the scene file: the stored text wherever it leads to a file name, found or
    /// not; a path of our own for an embedded picture without one. `relative` is where the
    /// source says the file is as seen from its own folder (may be empty).
    [[nodiscard]] std::string Place(const std::string& stored, const std::string& relative);

    /// Folders in which files were found, relative to the output's folder where possible.
    [[nodiscard]] Json MapPaths() const;

  private:
    [[nodiscard]] std::string PlaceNew(const std::string& stored, const std::string& relative);
    [[nodiscard]] bool FindOnDisk(const std::string& path);
    [[nodiscard]] std::string WriteEmbedded(const aiTexture& texture, const std::string& stored);

    const SourceScene& scene_;
    std::filesystem::path output_;
    Warnings& warnings_;
    std::map<std::pair<std::string, std::string>, std::string> placed_;
    std::set<std::filesystem::path> folders_;
    std::set<std::string> written_;
};

/// The `maps` of the scene file. The same picture with the same placement is one map.
class Maps {
  public:
    explicit Maps(TextureFiles& files) : files_(files) {}

    /// Id of the map for an FBX texture; null when it holds no file.
    [[nodiscard]] Json FromFbx(const FbxObject& texture);
    /// Id of the map for a texture of a library material; null when the material has none.
    [[nodiscard]] Json FromLibrary(const aiMaterial& material, aiTextureType type,
                                   unsigned index = 0);
    /// Id of a normal map that reads the given map; null when that is none.
    [[nodiscard]] Json NormalMap(const Json& map);

    [[nodiscard]] const Json& Entries() const { return maps_; }

  private:
    [[nodiscard]] std::string Add(const std::string& wantedId, Json entry);
    /// The id of an equal entry that was added so; of a new one if there is none.
    [[nodiscard]] std::string AddOnce(const std::string& wantedId, Json entry);

    TextureFiles& files_;
    Json maps_ = Json::object();
    Ids ids_;
    std::map<const FbxObject*, Json> fbx_;
    std::map<std::string, std::string> known_;
};

} // namespace sceneconv
