#pragma once
// Materials: the host's own parameters under the host's names, and beside them a few plain
// properties so that a reader that knows nothing of the host still shows a colour.
#include "simhost/files/fbx_frame.h"
#include "simhost/files/fbx_ids.h"
#include "simhost/files/fbx_texture.h"

#include <max.h>

#include <unordered_map>

namespace simhost {

class FbxMaterials {
  public:
    FbxMaterials(FbxIds& ids, FbxTextures& textures, TimeValue t)
        : ids_(ids), textures_(textures), time_(t) {}

    /// The material's id. Each material is written once, whoever uses it.
    [[nodiscard]] std::int64_t IdOf(Mtl& mtl);

    /// Writes what was asked for, and the materials that those are made of.
    void Write(FbxRecordWriter& writer, FbxObjectCounts& counts);
    void WriteConnections(FbxRecordWriter& writer) const;

  private:
    struct Link {
        std::int64_t from = 0;
        std::int64_t to = 0;
        std::string property;
    };
    void WriteOne(FbxRecordWriter& writer, Mtl& mtl, std::int64_t id);

    FbxIds& ids_;
    FbxTextures& textures_;
    TimeValue time_;
    std::vector<Mtl*> order_;
    std::unordered_map<Mtl*, std::int64_t> known_;
    std::vector<Link> links_;
};

/// The material of a face: that of the face's material id where the material is a
/// multi-material, else the material itself. May be null.
[[nodiscard]] Mtl* FbxFaceMaterial(Mtl* mtl, MtlID id);

} // namespace simhost
