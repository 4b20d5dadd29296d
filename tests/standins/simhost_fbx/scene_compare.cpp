#include "tests/standins/simhost_fbx/scene_compare.h"

#include "tests/standins/simhost_fbx/round_trip.h"

#include <gtest/gtest.h>
#include <triobj.h>

#include <map>

namespace fbxtest {

namespace {

/// The importer puts parts of one transform on nodes of its own.
bool IsPart(const aiNode& node) {
    return std::string_view(node.mName.C_Str()).find("_$AssimpFbx$_") != std::string_view::npos;
}

aiMatrix4x4 World(const aiNode& node) {
    return node.mParent ? World(*node.mParent) * node.mTransformation : node.mTransformation;
}

/// Children in order, those of the importer's own nodes in the place of these.
void CollectChildren(const aiNode& node, std::vector<const aiNode*>& children) {
    for (unsigned i = 0; i < node.mNumChildren; ++i) {
        if (IsPart(*node.mChildren[i]))
            CollectChildren(*node.mChildren[i], children);
        else
            children.push_back(node.mChildren[i]);
    }
}

Point3 Transformed(const aiMatrix4x4& m, const aiVector3D& v) {
    const aiVector3D p = m * v;
    return {p.x, p.y, p.z};
}

struct Corner {
    Point3 position; // world
    Point3 coordinates;
    aiColor4D colour;
};
/// Corners of the faces in order, by material.
using Faces = std::map<std::string, std::vector<Corner>>;

Mtl* MaterialOf(Mtl* mtl, MtlID id) {
    while (mtl && mtl->IsMultiMtl())
        mtl = mtl->GetSubMtl(id % mtl->NumSubMtls());
    return mtl;
}

Faces FacesOf(INode& node, Mesh& mesh) {
    Faces faces;
    const Matrix3 place = node.GetObjTMAfterWSM(0);
    for (int f = 0; f < mesh.getNumFaces(); ++f) {
        Mtl* mtl = MaterialOf(node.GetMtl(), mesh.faces[f].getMatID());
        std::vector<Corner>& corners = faces[mtl ? Utf8(mtl->GetName().data()) : ""];
        for (int c = 0; c < 3; ++c) {
            Corner corner;
            corner.position = mesh.verts[mesh.faces[f].v[c]] * place;
            if (mesh.mapSupport(1))
                corner.coordinates = mesh.Map(1).tv[mesh.Map(1).tf[f].t[c]];
            if (mesh.mapSupport(0)) {
                const Point3 rgb = mesh.Map(0).tv[mesh.Map(0).tf[f].t[c]];
                corner.colour = {rgb.x, rgb.y, rgb.z, 1};
                if (mesh.mapSupport(MAP_ALPHA))
                    corner.colour.a = mesh.Map(MAP_ALPHA).tv[mesh.Map(MAP_ALPHA).tf[f].t[c]].x;
            }
            corners.push_back(corner);
        }
    }
    return faces;
}

Faces FacesOf(const aiScene& scene, const aiNode& node) {
    Faces faces;
    const aiMatrix4x4 place = World(node);
    for (unsigned i = 0; i < node.mNumMeshes; ++i) {
        const aiMesh& mesh = *scene.mMeshes[node.mMeshes[i]];
        const std::string name = scene.mMaterials[mesh.mMaterialIndex]->GetName().C_Str();
        std::vector<Corner>& corners = faces[name == AI_DEFAULT_MATERIAL_NAME ? "" : name];
        for (unsigned f = 0; f < mesh.mNumFaces; ++f) {
            for (unsigned c = 0; c < mesh.mFaces[f].mNumIndices; ++c) {
                const unsigned v = mesh.mFaces[f].mIndices[c];
                Corner corner;
                corner.position = Transformed(place, mesh.mVertices[v]);
                if (mesh.mTextureCoords[0])
                    corner.coordinates = {mesh.mTextureCoords[0][v].x, mesh.mTextureCoords[0][v].y,
                                          0};
                if (mesh.mColors[0])
                    corner.colour = mesh.mColors[0][v];
                corners.push_back(corner);
            }
        }
    }
    return faces;
}

double Apart(const Point3& a, const Point3& b) {
    return Length(a - b) / (1 + Length(a));
}

void ExpectSameFaces(const Faces& expected, const Faces& imported, const std::string& node) {
    ASSERT_EQ(expected.size(), imported.size()) << node;
    for (const auto& [material, corners] : expected) {
        ASSERT_TRUE(imported.contains(material)) << node << ": " << material;
        const std::vector<Corner>& others = imported.at(material);
        ASSERT_EQ(corners.size(), others.size()) << node << ": " << material;
        for (std::size_t i = 0; i < corners.size(); ++i) {
            ASSERT_LT(Apart(corners[i].position, others[i].position), 1e-4) << node << ' ' << i;
            Point3 coordinates = corners[i].coordinates;
            coordinates.z = 0;
            ASSERT_LT(Apart(coordinates, others[i].coordinates), 1e-6) << node << ' ' << i;
            ASSERT_EQ(corners[i].colour, others[i].colour) << node << ' ' << i;
        }
    }
}

/// The mesh that the file should carry; shapes go without.
Mesh* MeshOf(INode& node, Object*& converted) {
    Object* object = node.EvalWorldState(0).obj;
    converted = nullptr;
    if (!object || node.IsTarget() || object->SuperClassID() != GEOMOBJECT_CLASS_ID ||
        !object->CanConvertToType(triObjectClassID))
        return nullptr;
    Object* result = object->ConvertToType(0, triObjectClassID);
    if (result != object)
        converted = result;
    auto* triangles = dynamic_cast<TriObject*>(result);
    return triangles && triangles->mesh.getNumFaces() ? &triangles->mesh : nullptr;
}

void ExpectSameNode(INode& node, const aiScene& scene, const aiNode& imported) {
    const std::string name = Utf8(node.GetName());
    // The importer numbers equal names.
    EXPECT_TRUE(std::string_view(imported.mName.C_Str()).starts_with(name)) << name;
    Object* converted = nullptr;
    Mesh* mesh = MeshOf(node, converted);
    if (mesh) {
        ExpectSameFaces(FacesOf(node, *mesh), FacesOf(scene, imported), name);
    } else {
        EXPECT_EQ(imported.mNumMeshes, 0u) << name;
        const Point3 at = Transformed(World(imported), {0, 0, 0});
        EXPECT_LT(Apart(node.GetNodeTM(0).GetTrans(), at), 1e-4) << name;
    }
    if (converted)
        converted->MaybeAutoDelete();
}

} // namespace

void ExpectSameScene(const aiScene& imported) {
    struct Pair {
        INode* node;
        const aiNode* imported;
    };
    std::vector<Pair> waiting{{GetCOREInterface()->GetRootNode(), imported.mRootNode}};
    while (!waiting.empty()) {
        const Pair pair = waiting.back();
        waiting.pop_back();
        std::vector<const aiNode*> children;
        CollectChildren(*pair.imported, children);
        ASSERT_EQ(static_cast<std::size_t>(pair.node->NumberOfChildren()), children.size())
            << Utf8(pair.node->GetName());
        for (int i = 0; i < pair.node->NumberOfChildren(); ++i) {
            ExpectSameNode(*pair.node->GetChildNode(i), imported, *children[i]);
            waiting.push_back({pair.node->GetChildNode(i), children[i]});
        }
    }
}

} // namespace fbxtest
