#include "simhost/files/fbx_geometries.h"

#include "simhost/files/fbx_geometry.h"
#include "simhost/files/fbx_guard.h"

#include <triobj.h>

#include <optional>
#include <set>
#include <unordered_set>

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
    std::set<MtlID> ids;
    for (int f = 0; f < mesh.getNumFaces(); ++f)
        ids.insert(mesh.faces[f].getMatID());
    return {ids.begin(), ids.end()};
}

/// The materials in order of their first use.
std::vector<std::int64_t> Distinct(const std::vector<std::int64_t>& arrangement) {
    std::vector<std::int64_t> materials;
    std::unordered_set<std::int64_t> seen{0};
    for (const std::int64_t material : arrangement)
        if (seen.insert(material).second)
            materials.push_back(material);
    return materials;
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
    const Arrangement arrangement = Arrange(mtl, shared.faceIds);
    use.materials = Distinct(arrangement);
    if (const auto found = shared.written.find(arrangement); found != shared.written.end()) {
        use.geometry = found->second;
        return use;
    }
    if (!converted)
        converted.emplace(evaluated, time_);
    if (Mesh* mesh = converted->Get()) {
        use.geometry = ids_.Next();
        Write(use, node, *mesh, shared.faceIds, arrangement);
        shared.written.emplace(arrangement, use.geometry);
    }
    return use;
}

FbxGeometries::Arrangement FbxGeometries::Arrange(Mtl* mtl, const std::vector<MtlID>& faceIds) {
    Arrangement arrangement;
    for (const MtlID id : faceIds) {
        Mtl* own = FbxFaceMaterial(mtl, id);
        arrangement.push_back(own ? materials_.IdOf(*own) : 0);
    }
    return arrangement;
}

void FbxGeometries::Write(const FbxGeometryUse& use, INode& node, Mesh& mesh,
                          const std::vector<MtlID>& faceIds, const Arrangement& arrangement) {
    std::vector<std::int32_t> ofFaces;
    if (!use.materials.empty()) {
        std::unordered_map<std::int64_t, std::int32_t> places;
        for (const std::int64_t material : use.materials)
            places.emplace(material, static_cast<std::int32_t>(places.size()));
        std::unordered_map<MtlID, std::int32_t> ofIds;
        for (std::size_t i = 0; i < faceIds.size(); ++i)
            ofIds[faceIds[i]] = arrangement[i] ? places[arrangement[i]] : -1;
        for (int f = 0; f < mesh.getNumFaces(); ++f)
            ofFaces.push_back(ofIds[mesh.faces[f].getMatID()]);
    }
    const DWORD wireColor = FbxAsk(DWORD{0}, [&] { return node.GetWireColor(); });
    WriteFbxGeometry(writer_, use.geometry, mesh, wireColor, ofFaces);
    counts_.Add(FbxObjectKind::Geometry);
}

} // namespace simhost
