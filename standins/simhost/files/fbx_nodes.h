#pragma once
// The scene's nodes as FBX models, with what hangs on them.
#include "simhost/files/fbx_geometries.h"
#include "simhost/files/fbx_transform.h"

namespace simhost {

class FbxNodes {
  public:
    FbxNodes(FbxRecordWriter& writer, FbxObjectCounts& counts, FbxIds& ids,
             FbxGeometries& geometries, TimeValue t)
        : writer_(writer), counts_(counts), ids_(ids), geometries_(geometries), time_(t) {}

    /// Visits all nodes below the root, parents first, and writes their geometries, lights and
    /// cameras. Shapes, helpers, targets and what has no mesh become nulls: of a spline the
    /// file carries the place alone.
    void Collect(INode& root);
    void WriteModels();
    void WriteConnections() const;

  private:
    struct Entry {
        INode* node = nullptr;
        std::int64_t id = 0;
        std::int64_t parentId = 0;
        std::string_view kind = "Null";
        std::int64_t attribute = 0; // geometry or node attribute
        std::vector<std::int64_t> materials;
        FbxPlacement placement;
        FbxAffine world; // as the file's readers will find it
        bool hidden = false;
        bool parentHidden = false;
    };
    void AddAttribute(Entry& entry);
    [[nodiscard]] std::int64_t SharedAttribute(std::string_view kind, Object& object,
                                               const void* shared);
    void Place(Entry& entry, const FbxAffine& parent) const;
    void WriteModel(const Entry& entry);

    FbxRecordWriter& writer_;
    FbxObjectCounts& counts_;
    FbxIds& ids_;
    FbxGeometries& geometries_;
    TimeValue time_;
    std::vector<Entry> entries_;
    std::unordered_map<const void*, std::int64_t> attributes_;
};

} // namespace simhost
