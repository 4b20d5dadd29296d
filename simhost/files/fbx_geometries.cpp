#include "simhost/files/fbx_geometries.h"

#include "simhost/files/fbx_geometry.h"
#include "simhost/files/fbx_guard.h"

#include <triobj.h>

#include <algorithm>
#include <optional>

namespace simhost {

namespace {

/// The mesh that an object converts to, freed again when it was made for us.
class ConvertedMesh {
  public:
    ConvertedMesh(Object& object, TimeValue t) : source_(object) {
        result_ = FbxAsk<Object*>(nullptr, [&]() -> Object* {
            if (!object.CanConvertToType(triObjectClassID))
                return nullptr;
            return object.ConvertToType(t, triObjectClassID);
        });
    }
    ~ConvertedMesh() {
        if (result_ && result_ != &source_)
            result_->MaybeAutoDelete();
    }
    ConvertedMesh(const ConvertedMesh&) = delete;
    ConvertedMesh& operator=(const ConvertedMesh&) = delete;

    /// Null without faces.
    [[nodiscard]] Mesh* Get() const {
        auto* triangles = dynamic_cast<TriObject*>(result_);
        if (!triangles || triangles->mesh.getNumFaces() == 0 || triangles->mesh.getNumVerts() == 0)
            return nullptr;
        return &triangles->mesh;
    }

  private:
    Object& source_;
    Object* result_ = nullptr;
};

std::vector<MtlID> FaceIds(const Mesh& mesh) {
    std::vector<bool> occurs(std::size_t{1} << 16);
    for (int f = 0; f < mesh.getNumFaces(); ++f)
        occurs[mesh.faces[f].getMatID()] = true;
    std::vector<MtlID> ids;
    for (std::size_t id = 0; id < occurs.size(); ++id)
        if (occurs[id])
            ids.push_back(static_cast<MtlID>(id));
    return ids;
}

} // namespace

const FbxGeometryUse& FbxGeometries::Use(INode& node, Object& evaluated, const void* shared) {
    Mtl* mtl = FbxAsk<Mtl*>(nullptr, [&] { return node.GetMtl(); });
    const auto [place, added] = uses_.try_emplace({shared, mtl});
    if (added)
        place->second = Make(node, evaluated, mtl, shared_[shared]);
    return place->second;
}

FbxGeometryUse FbxGeometries::Make(INode& node, Object& evaluated, Mtl* mtl, Shared& shared) {
    FbxGeometryUse use;
    std::optional<ConvertedMesh> converted;
    if (!shared.known) {
        converted.emplace(evaluated, time_);
        if (Mesh* mesh = converted->Get())
            shared.faceIds = FaceIds(*mesh);
        shared.known = true;
    }
    if (shared.faceIds.empty())
        return use;
    const Arrangement arrangement = Arrange(mtl, shared.faceIds, use.materials);
    if (const auto found = shared.written.find(arrangement); found != shared.written.end()) {
        use.geometry = found->second;
        return use;
    }
    if (!converted)
        converted.emplace(evaluated, time_);
    if (Mesh* mesh = converted->Get()) {
        use.geometry = ids_.Next();
        Write(use.geometry, node, *mesh, shared.faceIds, arrangement);
        shared.written.emplace(arrangement, use.geometry);
    }
    return use;
}

FbxGeometries::Arrangement FbxGeometries::Arrange(Mtl* mtl, const std::vector<MtlID>& faceIds,
                                                  std::vector<std::int64_t>& materials) {
    Arrangement arrangement;
    std::unordered_map<Mtl*, std::int32_t> indices;
    for (const MtlID id : faceIds) {
        Mtl* own = FbxFaceMaterial(mtl, id);
        if (!own) {
            arrangement.push_back(-1);
            continue;
        }
        const auto [place, added] =
            indices.try_emplace(own, static_cast<std::int32_t>(materials.size()));
        if (added)
            materials.push_back(materials_.IdOf(*own));
        arrangement.push_back(place->second);
    }
    return arrangement;
}

void FbxGeometries::Write(std::int64_t id, INode& node, Mesh& mesh,
                          const std::vector<MtlID>& faceIds, const Arrangement& arrangement) {
    std::vector<std::int32_t> materials;
    if (std::any_of(arrangement.begin(), arrangement.end(), [](auto m) { return m >= 0; })) {
        std::unordered_map<MtlID, std::int32_t> ofId;
        for (std::size_t i = 0; i < faceIds.size(); ++i)
            ofId[faceIds[i]] = arrangement[i];
        for (int f = 0; f < mesh.getNumFaces(); ++f)
            materials.push_back(ofId[mesh.faces[f].getMatID()]);
    }
    const DWORD wireColor = FbxAsk(DWORD{0}, [&] { return node.GetWireColor(); });
    WriteFbxGeometry(writer_, id, mesh, wireColor, materials);
    counts_.Add(FbxObjectKind::Geometry);
}

} // namespace simhost
