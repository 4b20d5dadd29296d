// Nodes, cameras and lights as the import library sees them.
#include "sceneconv/source_scene.h"

#include <algorithm>
#include <map>

namespace sceneconv {

namespace {

/// A mesh without a material gets one of the library's own. (Of FBX files the overlay knows
/// better.)
MaterialSource LibraryMaterial(const SourceScene& scene, unsigned index) {
    const aiScene& library = *scene.imported;
    const bool none =
        index >= library.mNumMaterials ||
        (!scene.fbx && library.mMaterials[index]->GetName() == aiString(AI_DEFAULT_MATERIAL_NAME));
    return {nullptr, none ? -1 : static_cast<int>(index)};
}

void AddMaterialPieces(SourceNode& node, const aiNode& from, const SourceScene& scene) {
    const aiScene& library = *scene.imported;
    for (unsigned i = 0; i < from.mNumMeshes; ++i) {
        if (from.mMeshes[i] >= library.mNumMeshes)
            continue;
        const MaterialSource material =
            LibraryMaterial(scene, library.mMeshes[from.mMeshes[i]]->mMaterialIndex);
        auto place = std::find(node.materials.begin(), node.materials.end(), material);
        if (place == node.materials.end())
            place = node.materials.insert(place, material);
        node.pieces.push_back({from.mMeshes[i], static_cast<int>(place - node.materials.begin())});
    }
}

// Depth first without recursion: the depth of a hostile file is not bounded.
void AddNodes(SourceScene& scene) {
    std::vector<std::pair<const aiNode*, int>> open{{scene.imported->mRootNode, -1}};
    while (!open.empty()) {
        const auto [from, parent] = open.back();
        open.pop_back();
        SourceNode node;
        node.name = from->mName.C_Str();
        node.parent = parent;
        node.local = ToMatrix(from->mTransformation);
        AddMaterialPieces(node, *from, scene);
        const int index = static_cast<int>(scene.nodes.size());
        scene.nodes.push_back(std::move(node));
        for (unsigned i = from->mNumChildren; i > 0; --i)
            open.emplace_back(from->mChildren[i - 1], index);
    }
}

Camera FromLibrary(const aiCamera& from) {
    Camera camera;
    camera.frame = LookFrame(ToVector(from.mPosition), ToVector(from.mLookAt), ToVector(from.mUp));
    camera.fov = from.mHorizontalFOV;
    camera.ortho = from.mOrthographicWidth > 0;
    camera.orthoWidth = 2.0 * from.mOrthographicWidth; // the library keeps half of it
    camera.nearClip = from.mClipPlaneNear;
    camera.farClip = from.mClipPlaneFar;
    return camera;
}

Light FromLibrary(const aiLight& from) {
    Light light;
    switch (from.mType) {
    case aiLightSource_DIRECTIONAL:
        light.kind = LightKind::Directional;
        break;
    case aiLightSource_SPOT:
        light.kind = LightKind::Spot;
        break;
    case aiLightSource_AREA:
        light.kind = LightKind::Area;
        break;
    case aiLightSource_AMBIENT:
        light.kind = LightKind::Ambient;
        break;
    default:
        break;
    }
    light.frame =
        LookFrame(ToVector(from.mPosition), ToVector(from.mDirection), ToVector(from.mUp));
    const aiColor3D& c = from.mColorDiffuse.IsBlack() ? from.mColorAmbient : from.mColorDiffuse;
    light.intensity = std::max({c.r, c.g, c.b});
    if (light.intensity > 0)
        light.color = {c.r / light.intensity, c.g / light.intensity, c.b / light.intensity};
    light.outerCone = from.mAngleOuterCone / (light.kind == LightKind::Spot ? 2.0 : 1.0);
    light.width = from.mSize.x;
    light.height = from.mSize.y;
    return light;
}

} // namespace

void BuildFromLibrary(SourceScene& scene, Warnings& warnings) {
    AddNodes(scene);
    const SourceNode& root = scene.nodes.front();
    scene.dropRoot = root.pieces.empty() && scene.nodes.size() > 1;

    std::map<std::string, SourceNode*> byName;
    for (SourceNode& node : scene.nodes)
        byName.try_emplace(node.name, &node);
    const auto holder = [&](const aiString& name) -> SourceNode* {
        const auto found = byName.find(name.C_Str());
        if (found == byName.end()) {
            warnings.Add("a light or camera stands in no node: " + std::string(name.C_Str()));
            return nullptr;
        }
        if (found->second == &scene.nodes.front())
            scene.dropRoot = false;
        return found->second;
    };
    for (unsigned i = 0; i < scene.imported->mNumCameras; ++i) {
        const aiCamera& camera = *scene.imported->mCameras[i];
        if (SourceNode* node = holder(camera.mName))
            node->camera = FromLibrary(camera);
    }
    for (unsigned i = 0; i < scene.imported->mNumLights; ++i) {
        const aiLight& light = *scene.imported->mLights[i];
        if (SourceNode* node = holder(light.mName))
            node->light = FromLibrary(light);
    }
}

void LinkTargetsByName(SourceScene& scene) {
    constexpr std::string_view suffix = ".Target";
    std::map<std::string, int> targets;
    std::vector<Matrix> world(scene.nodes.size());
    for (std::size_t i = 0; i < scene.nodes.size(); ++i) {
        const SourceNode& node = scene.nodes[i];
        world[i] = node.parent < 0 ? node.local
                                   : world[static_cast<std::size_t>(node.parent)] * node.local;
        if (node.name.ends_with(suffix) && !node.camera && !node.light)
            targets.try_emplace(node.name, static_cast<int>(i));
    }
    for (std::size_t i = 0; i < scene.nodes.size(); ++i) {
        SourceNode& node = scene.nodes[i];
        const auto found = targets.find(node.name + std::string(suffix));
        if (found == targets.end() || node.target >= 0 || (!node.camera && !node.light))
            continue;
        // The name alone proves nothing: a target is what the node looks at.
        const Matrix frame = world[i] * (node.camera ? node.camera->frame : node.light->frame);
        Vector aim = Position(world[static_cast<std::size_t>(found->second)]) - Position(frame);
        Vector look{-frame.a3, -frame.b3, -frame.c3};
        if (aim.Normalize() * look.Normalize() > 0.9999)
            node.target = found->second;
    }
}

} // namespace sceneconv
