// The `materials` of the scene file.
#pragma once

#include "sceneconv/scene_json.h"
#include "sceneconv/source_scene.h"
#include "sceneconv/textures.h"

#include <map>

namespace sceneconv {

class Materials {
  public:
    Materials(const SourceScene& scene, Maps& maps, Warnings& warnings)
        : scene_(scene), maps_(maps), warnings_(warnings) {}

    /// The reference for a node: its one material, a Multi/Sub-Object of several, or null.
    [[nodiscard]] Json OfNode(const SourceNode& node);
    /// The reference for a material or texture that an FBX object's parameter holds.
    [[nodiscard]] Json OfFbx(const FbxObject& object);

    [[nodiscard]] const Json& Entries() const { return materials_; }

  private:
    /// The reference for one material, converted when it comes up first; null for none.
    [[nodiscard]] Json One(const MaterialSource& source);
    [[nodiscard]] Json Add(const std::string& name, Json entry);

    const SourceScene& scene_;
    Maps& maps_;
    Warnings& warnings_;
    Json materials_ = Json::object();
    Ids ids_;
    std::map<MaterialSource, Json> known_;
    std::map<std::string, Json> multis_; ///< by the list of their sub-materials
};

/// The host's Physical Material for a material of any other origin.
[[nodiscard]] Json PhysicalMaterial(const aiMaterial& from, const std::string& name, Maps& maps);
/// The host's glTF Material for a material of a glTF file.
[[nodiscard]] Json GltfMaterial(const aiMaterial& from, const std::string& name, Maps& maps);

} // namespace sceneconv
