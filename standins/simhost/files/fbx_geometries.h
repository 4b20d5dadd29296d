#pragma once
// Meshes of the scene, each written once for all nodes that show the same object with the same
// materials. (Instances with other materials get a geometry of their own: the format would let
// them share, but common readers keep the materials with the geometry.)
#include "simhost/files/fbx_frame.h"
#include "simhost/files/fbx_ids.h"
#include "simhost/files/fbx_material.h"

#include <max.h>

#include <map>
#include <unordered_map>

namespace simhost {

/// What a node shows.
struct FbxGeometryUse {
    std::int64_t geometry = 0;           // 0: the object makes no mesh with faces
    std::vector<std::int64_t> materials; // ids, in the order that the geometry's faces count in
};

class FbxGeometries {
  public:
    FbxGeometries(FbxRecordWriter& writer, FbxObjectCounts& counts, FbxIds& ids,
                  FbxMaterials& materials, TimeValue t)
        : writer_(writer), counts_(counts), ids_(ids), materials_(materials), time_(t) {}

    /// `shared`: what instances have in common. Writes the geometry where it is new.
    [[nodiscard]] const FbxGeometryUse& Use(INode& node, Object& evaluated, const void* shared);

  private:
    /// The material's id in the file for each material id that occurs on the faces, 0 for none.
    using Arrangement = std::vector<std::int64_t>;
    struct Shared {
        bool known = false;
        std::vector<MtlID> faceIds; // that occur on the faces, ascending
        std::map<Arrangement, std::int64_t> written;
    };
    struct KeyHash {
        std::size_t operator()(const std::pair<const void*, Mtl*>& key) const {
            return std::hash<const void*>()(key.first) * 31 + std::hash<const void*>()(key.second);
        }
    };
    [[nodiscard]] FbxGeometryUse Make(INode& node, Object& evaluated, Mtl* mtl, Shared& shared);
    [[nodiscard]] Arrangement Arrange(Mtl* mtl, const std::vector<MtlID>& faceIds);
    void Write(const FbxGeometryUse& use, INode& node, Mesh& mesh,
               const std::vector<MtlID>& faceIds, const Arrangement& arrangement);

    FbxRecordWriter& writer_;
    FbxObjectCounts& counts_;
    FbxIds& ids_;
    FbxMaterials& materials_;
    TimeValue time_;
    std::unordered_map<const void*, Shared> shared_;
    std::unordered_map<std::pair<const void*, Mtl*>, FbxGeometryUse, KeyHash> uses_;
};

} // namespace simhost
