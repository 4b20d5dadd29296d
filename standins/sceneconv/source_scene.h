// What was read, before it becomes a scene file: one node list for every input format.
#pragma once

#include "sceneconv/fbx_document.h"
#include "sceneconv/matrix.h"
#include "sceneconv/warnings.h"

#include <assimp/Importer.hpp>
#include <assimp/scene.h>

#include <array>
#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace sceneconv {

enum class Format { Fbx, Gltf, Other };

/// A material as the source knows it: an FBX object, a material of the import library, or both.
struct MaterialSource {
    const FbxObject* fbx = nullptr;
    int importedIndex = -1; ///< in aiScene::mMaterials

    auto operator<=>(const MaterialSource&) const = default;
};

/// One of the meshes into which the library split a node's mesh, one for each material.
struct MeshPiece {
    unsigned mesh = 0;            ///< index in aiScene::mMeshes
    std::uint32_t materialId = 0; ///< index in SourceNode::materials
};

/// What a camera and a light have in common.
struct NodeAttribute {
    Matrix frame;             ///< in the node: where it stands; it looks or shines along -z
    std::int64_t source = -1; ///< equal for nodes that share one attribute of the source
    const FbxObject* fbx = nullptr;
};

struct Camera : NodeAttribute {
    double fov = 0; ///< horizontal, radians
    bool ortho = false;
    double orthoWidth = 0; ///< source units
    double nearClip = 0;   ///< source units; clipping is manual when farClip > nearClip
    double farClip = 0;
};

enum class LightKind { Point, Spot, Directional, Area, Ambient };
enum class LightUnit { Factor, Candela, Lux };

struct Light : NodeAttribute {
    LightKind kind = LightKind::Point;
    std::array<double, 3> color = {1, 1, 1};
    double intensity = 1;
    LightUnit unit = LightUnit::Factor;
    double outerCone = 0; ///< half angle, radians
    double width = 0;     ///< source units, area lights
    double height = 0;
    bool on = true;
};

struct SourceNode {
    std::string name;
    std::optional<std::size_t> parent; ///< index in SourceScene::nodes
    Matrix local;
    Matrix objectOffset; ///< of the mesh in the node, not passed on to children
    std::vector<MeshPiece> pieces;
    std::vector<MaterialSource> materials;   ///< by material id
    std::map<unsigned, unsigned> uvChannels; ///< the host's number of a set; else index + 1
    std::optional<Camera> camera;
    std::optional<Light> light;
    bool hidden = false;
    std::optional<std::size_t> target; ///< index in SourceScene::nodes
    std::string userProperties;
    std::optional<std::array<int, 3>> wireColor;
};

/// Name and size of a unit as the scene file writes them.
struct Unit {
    std::string type = "centimeters";
    double scale = 1;

    [[nodiscard]] double Metres() const;
};

struct SourceScene {
    std::filesystem::path file;
    Format format = Format::Other;
    Unit unit;
    Matrix toHost;                 ///< source axes to the host's (z up)
    bool dropRoot = false;         ///< node 0 is the library's own, not the file's
    std::vector<SourceNode> nodes; ///< parents before their children; node 0 is the root

    std::unique_ptr<Assimp::Importer> importer; ///< owns the library's scene
    const aiScene* imported = nullptr;
    std::unique_ptr<FbxDocument> fbx; ///< null for other formats
};

/// The unit of that size; with a warning, centimeters for one that makes no sense.
[[nodiscard]] Unit UnitOf(double centimeters, Warnings& warnings);

/// Node indices of every node's children, in order.
[[nodiscard]] std::vector<std::vector<std::size_t>>
ChildLists(const std::vector<SourceNode>& nodes);

/// Reads a file. Throws ConvertError with one clear line.
[[nodiscard]] SourceScene ReadSource(const std::filesystem::path& file, Warnings& warnings);

/// Nodes, cameras and lights as the library sees them.
void BuildFromLibrary(SourceScene& scene, Warnings& warnings);
/// Puts back what the library loses of an FBX file: exact names, pivots, object offsets, materials
/// by id, targets, cameras and lights.
void OverlayFbx(SourceScene& scene, Warnings& warnings);
/// Puts back what the library loses of a glTF file: cameras and lights used by several nodes.
void OverlayGltf(SourceScene& scene, std::string_view bytes, Warnings& warnings);
/// Connects cameras and lights with the node named "<name>.Target" at which they look.
void LinkTargetsByName(SourceScene& scene);

} // namespace sceneconv
