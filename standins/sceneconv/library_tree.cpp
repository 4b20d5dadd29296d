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
        node.pieces.push_back(
            {from.mMeshes[i], static_cast<std::uint32_t>(place - node.materials.begin())});
    }
}

// Depth first without recursion: the depth of a hostile file is not bounded.
void AddNodes(SourceScene& scene) {
    std::vector<std::pair<const aiNode*, std::optional<std::size_t>>> open{
        {scene.imported->mRootNode, std::nullopt}};
    while (!open.empty()) {
        const auto [from, parent] = open.back();
        open.pop_back();
        const std::size_t index = scene.nodes.size();
        SourceNode& node = scene.nodes.emplace_back();
        node.name = from->mName.C_Str();
        node.parent = parent;
        node.local = from->mTransformation;
        AddMaterialPieces(node, *from, scene);
        for (unsigned i = from->mNumChildren; i > 0; --i)
            open.emplace_back(from->mChildren[i - 1], index);
    }
}

Camera FromLibrary(const aiCamera& from) {
    Camera camera;
    camera.frame = LookFrame(from.mPosition, from.mLookAt, from.mUp);
    camera.fov = from.mHorizontalFOV;
    camera.ortho = from.mOrthographicWidth > 0;
    camera.orthoWidth = 2.0 * from.mOrthographicWidth; // the library keeps half of it
    camera.nearClip = from.mClipPlaneNear;
    camera.farClip = from.mClipPlaneFar;
    return camera;
}

LightKind KindOf(aiLightSourceType type) {
    switch (type) {
    case aiLightSource_DIRECTIONAL:
        return LightKind::Directional;
    case aiLightSource_SPOT:
        return LightKind::Spot;
    case aiLightSource_AREA:
        return LightKind::Area;
    case aiLightSource_AMBIENT:
        return LightKind::Ambient;
    default:
        return LightKind::Point;
    }
}

Light FromLibrary(const aiLight& from) {
    Light light;
    light.kind = KindOf(from.mType);
    light.frame = LookFrame(from.mPosition, from.mDirection, from.mUp);
    const aiColor3D& c = from.mColorDiffuse.IsBlack() ? from.mColorAmbient : from.mColorDiffuse;
    light.intensity = std::max({c.r, c.g, c.b});
    if (light.intensity > 0)
        light.color = {c.r / light.intensity, c.g / light.intensity, c.b / light.intensity};
    light.outerCone = from.mAngleOuterCone / (light.kind == LightKind::Spot ? 2.0 : 1.0);
    light.width = from.mSize.x;
    light.height = from.mSize.y;
    return light;
}

/// Puts cameras or lights, `count` of them, into the nodes of their names.
template <typename Attribute, typename Item>
void AddAttributes(SourceScene& scene, std::optional<Attribute> SourceNode::*member, Item** items,
                   unsigned count, Warnings& warnings) {
    std::map<std::string, SourceNode*> byName;
    for (SourceNode& node : scene.nodes)
        byName.try_emplace(node.name, &node);
    for (unsigned i = 0; i < count; ++i) {
        const std::string name = items[i]->mName.C_Str();
        const auto found = byName.find(name);
        if (found == byName.end()) {
            warnings.Add("a light or camera stands in no node: " + name);
            continue;
        }
        found->second->*member = FromLibrary(*items[i]);
        scene.dropRoot = scene.dropRoot && found->second != &scene.nodes.front();
    }
}

} // namespace

void BuildFromLibrary(SourceScene& scene, Warnings& warnings) {
    AddNodes(scene);
    scene.dropRoot = scene.nodes.front().pieces.empty() && scene.nodes.size() > 1;
    const aiScene& library = *scene.imported;
    AddAttributes(scene, &SourceNode::camera, library.mCameras, library.mNumCameras, warnings);
    AddAttributes(scene, &SourceNode::light, library.mLights, library.mNumLights, warnings);
}

void LinkTargetsByName(SourceScene& scene) {
    const std::string suffix = ".Target";
    std::map<std::string, std::size_t> targets;
    std::vector<Matrix> world;
    for (const SourceNode& node : scene.nodes) {
        if (node.name.ends_with(suffix) && !node.camera && !node.light)
            targets.try_emplace(node.name, world.size());
        world.push_back(node.parent ? world[*node.parent] * node.local : node.local);
    }
    for (std::size_t i = 0; i < scene.nodes.size(); ++i) {
        SourceNode& node = scene.nodes[i];
        const auto found = targets.find(node.name + suffix);
        if (found == targets.end() || node.target || (!node.camera && !node.light))
            continue;
        // The name alone proves nothing: a target is what the node looks at.
        const Matrix frame = world[i] * (node.camera ? node.camera->frame : node.light->frame);
        Vector aim = Position(world[found->second]) - Position(frame);
        Vector look{-frame.a3, -frame.b3, -frame.c3};
        if (aim.Normalize() * look.Normalize() > 0.9999)
            node.target = found->second;
    }
}

} // namespace sceneconv
