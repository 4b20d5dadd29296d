#include "sceneconv/mesh_data.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <set>
#include <string_view>
#include <unordered_map>

namespace sceneconv {

namespace {

/// Values of up to four floats, each kept once, and an index for every corner of every face.
class Channel {
  public:
    explicit Channel(std::size_t size) : size_(size) {}

    void AddCorner(const float* value) {
        std::array<float, 4> key{};
        for (std::size_t i = 0; i < size_; ++i)
            key[i] = std::isfinite(value[i]) ? value[i] + 0.0F : 0.0F; // -0 becomes 0
        const auto next = static_cast<std::uint32_t>(places_.size());
        const auto [place, isNew] = places_.try_emplace(key, next);
        if (isNew)
            values_.insert(values_.end(), key.data(), key.data() + size_);
        corners_.push_back(place->second);
    }

    [[nodiscard]] const std::vector<float>& Values() const { return values_; }
    [[nodiscard]] const std::vector<std::uint32_t>& Corners() const { return corners_; }
    [[nodiscard]] std::size_t Size() const { return size_; }

  private:
    struct Hash {
        std::size_t operator()(const std::array<float, 4>& key) const {
            return std::hash<std::string_view>()(
                {reinterpret_cast<const char*>(key.data()), sizeof key});
        }
    };

    std::size_t size_;
    std::unordered_map<std::array<float, 4>, std::uint32_t, Hash> places_;
    std::vector<float> values_;
    std::vector<std::uint32_t> corners_;
};

using Triangle = std::array<unsigned, 3>;

class MeshBuilder {
  public:
    MeshBuilder(const SourceNode& node, const aiScene& library, Warnings& warnings)
        : node_(node), library_(library), warnings_(warnings) {}

    Json Build() {
        FindChannels();
        for (const MeshPiece& piece : node_.pieces)
            AddPiece(*library_.mMeshes[piece.mesh], piece.materialId);
        return materialIds_.empty() ? Json() : Write();
    }

  private:
    /// A channel that one piece has all have: corners without a value get zeros.
    void FindChannels() {
        for (const MeshPiece& piece : node_.pieces) {
            const aiMesh& mesh = *library_.mMeshes[piece.mesh];
            hasNormals_ = hasNormals_ || mesh.HasNormals();
            hasColors_ = hasColors_ || mesh.HasVertexColors(0);
            if (mesh.GetNumColorChannels() > 1)
                warnings_.Add("vertex colours beyond the first set are left out");
            for (unsigned i = 0; i < AI_MAX_NUMBER_OF_TEXTURECOORDS; ++i) {
                if (mesh.HasTextureCoords(i)) {
                    const std::size_t size = mesh.mNumUVComponents[i] == 3 ? 3 : 2;
                    const auto place = uvs_.try_emplace(UvChannel(i), size).first;
                    if (place->second.Size() < size)
                        place->second = Channel(size);
                }
            }
        }
    }

    unsigned UvChannel(unsigned index) const {
        const auto channel = node_.uvChannels.find(index);
        return channel == node_.uvChannels.end() ? index + 1 : channel->second;
    }

    void AddPiece(const aiMesh& mesh, std::uint32_t materialId) {
        const std::vector<Triangle> triangles = Triangles(mesh);
        materialIds_.insert(materialIds_.end(), triangles.size(), materialId);
        if ((mesh.mPrimitiveTypes & aiPrimitiveType_NGONEncodingFlag) != 0)
            AddVisibleEdges(triangles);
        else
            visibleEdges_.insert(visibleEdges_.end(), triangles.size(), 7U);
        for (const Triangle& triangle : triangles) {
            for (const unsigned corner : triangle)
                AddCorner(mesh, corner);
        }
    }

    std::vector<Triangle> Triangles(const aiMesh& mesh) {
        std::vector<Triangle> triangles;
        triangles.reserve(mesh.mNumFaces);
        for (unsigned i = 0; i < mesh.mNumFaces; ++i) {
            const aiFace& face = mesh.mFaces[i];
            if (face.mNumIndices != 3) {
                warnings_.Add("points and lines are left out (a scene file holds triangles)");
                continue;
            }
            const Triangle t{face.mIndices[0], face.mIndices[1], face.mIndices[2]};
            if (*std::max_element(t.begin(), t.end()) >= mesh.mNumVertices) {
                warnings_.Add("faces with vertices that do not exist are left out");
                continue;
            }
            triangles.push_back(t);
        }
        return triangles;
    }

    /// The set of texture coordinates that is this channel of the host; null if the mesh has none.
    const aiVector3D* FindUvs(const aiMesh& mesh, unsigned channel) const {
        const aiVector3D* uvs = nullptr;
        for (unsigned i = 0; i < AI_MAX_NUMBER_OF_TEXTURECOORDS; ++i) {
            if (mesh.HasTextureCoords(i) && UvChannel(i) == channel)
                uvs = mesh.mTextureCoords[i];
        }
        return uvs;
    }

    /// Triangles of one polygon follow each other and begin with the same vertex; an edge that
    /// runs both ways within them lies inside of it.
    void AddVisibleEdges(const std::vector<Triangle>& triangles) {
        std::size_t end = 0;
        for (std::size_t start = 0; start < triangles.size(); start = end) {
            std::set<std::pair<unsigned, unsigned>> edges;
            for (end = start; end < triangles.size() && triangles[end][0] == triangles[start][0];
                 ++end) {
                for (std::size_t i = 0; i < 3; ++i)
                    edges.emplace(triangles[end][i], triangles[end][(i + 1) % 3]);
            }
            for (std::size_t t = start; t < end; ++t) {
                std::uint32_t visible = 0;
                for (std::size_t i = 0; i < 3; ++i) {
                    const bool inside =
                        edges.contains({triangles[t][(i + 1) % 3], triangles[t][i]});
                    visible |= inside ? 0U : 1U << i;
                }
                visibleEdges_.push_back(visible);
            }
        }
    }

    void AddCorner(const aiMesh& mesh, unsigned corner) {
        const aiVector3D zero;
        positions_.AddCorner(&mesh.mVertices[corner].x);
        if (hasNormals_)
            normals_.AddCorner(mesh.HasNormals() ? &mesh.mNormals[corner].x : &zero.x);
        if (hasColors_) {
            static const aiColor4D white(1, 1, 1, 1);
            const aiColor4D& color = mesh.HasVertexColors(0) ? mesh.mColors[0][corner] : white;
            colors_.AddCorner(&color.r);
            const float alpha[3] = {color.a, color.a, color.a};
            alphas_.AddCorner(alpha);
        }
        for (auto& [number, channel] : uvs_) {
            const aiVector3D* uvs = FindUvs(mesh, number);
            channel.AddCorner(uvs ? &uvs[corner].x : &zero.x);
        }
    }

    Json Write() const {
        Json mesh;
        mesh["positions"] = ListJson(positions_.Values());
        mesh["triangles"] = ListJson(positions_.Corners());
        if (std::all_of(materialIds_.begin(), materialIds_.end(),
                        [&](std::uint32_t id) { return id == materialIds_[0]; })) {
            mesh["material_ids"] = materialIds_[0];
        } else {
            mesh["material_ids"] = ListJson(materialIds_);
        }
        if (std::any_of(visibleEdges_.begin(), visibleEdges_.end(),
                        [](std::uint32_t edges) { return edges != 7; })) {
            mesh["visible_edges"] = ListJson(visibleEdges_);
        }
        if (hasNormals_)
            mesh["normals"] = ChannelJson(normals_);
        for (const auto& [number, channel] : uvs_) {
            Json entry = ChannelJson(channel);
            entry["size"] = channel.Size();
            mesh["uvs"][std::to_string(number)] = std::move(entry);
        }
        if (hasColors_) {
            mesh["colors"] = ChannelJson(colors_);
            if (alphas_.Values() != std::vector<float>{1, 1, 1})
                mesh["alpha"] = ChannelJson(alphas_);
        }
        return mesh;
    }

    static Json ChannelJson(const Channel& channel) {
        return {{"values", ListJson(channel.Values())}, {"triangles", ListJson(channel.Corners())}};
    }

    const SourceNode& node_;
    const aiScene& library_;
    Warnings& warnings_;
    Channel positions_{3};
    Channel normals_{3};
    Channel colors_{3};
    Channel alphas_{3};
    std::map<unsigned, Channel> uvs_;
    bool hasNormals_ = false;
    bool hasColors_ = false;
    std::vector<std::uint32_t> materialIds_;
    std::vector<std::uint32_t> visibleEdges_;
};

} // namespace

Json MeshJson(const SourceNode& node, const aiScene& library, Warnings& warnings) {
    return MeshBuilder(node, library, warnings).Build();
}

} // namespace sceneconv
