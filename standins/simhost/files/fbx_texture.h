#pragma once
// Bitmap files as FBX textures, one for each map of the scene that a material uses.
#include "simhost/files/fbx_frame.h"
#include "simhost/files/fbx_ids.h"

#include <max.h>

#include <unordered_map>

namespace simhost {

class FbxTextures {
  public:
    /// `folder`: where the FBX file will stand, UTF-8; relative names count from there.
    FbxTextures(FbxIds& ids, std::string folder, TimeValue t)
        : ids_(ids), folder_(std::move(folder)), time_(t) {}

    /// The texture's id; 0 for a map that is no bitmap file, which FBX can't hold.
    [[nodiscard]] std::int64_t IdOf(Texmap& map);
    /// The first bitmap at or below a map; 0 without one.
    [[nodiscard]] std::int64_t IdBelow(Texmap& map);

    void Write(FbxRecordWriter& writer, FbxObjectCounts& counts) const;
    void WriteConnections(FbxRecordWriter& writer) const;

  private:
    struct Entry {
        std::int64_t texture = 0;
        std::int64_t video = 0;
        std::string name;
        std::string file;
        std::string relativeFile;
        FbxProperties placement;
        std::array<double, 2> translation{0, 0};
        std::array<double, 2> scaling{1, 1};
    };
    [[nodiscard]] bool ReadFile(Texmap& map, Entry& entry) const;
    void WriteTexture(FbxRecordWriter& writer, const Entry& entry) const;
    void WriteVideo(FbxRecordWriter& writer, const Entry& entry) const;

    FbxIds& ids_;
    std::string folder_;
    TimeValue time_;
    std::vector<Entry> entries_;
    std::unordered_map<Texmap*, std::int64_t> known_; // 0: no bitmap
};

/// The file's name as seen from a folder; the name itself when they share no root.
[[nodiscard]] std::string FbxRelativeName(std::string_view folder, std::string_view file);

} // namespace simhost
