// The `objects` and `nodes` of the scene file.
#pragma once

#include "sceneconv/materials.h"
#include "sceneconv/scene_json.h"
#include "sceneconv/source_scene.h"

#include <unordered_map>

namespace sceneconv {

/// Objects by what they hold: equal meshes are one object, since the host's FBX files (and most
/// others) repeat the mesh of an instance for every node.
class Objects {
  public:
    [[nodiscard]] Json AddMesh(const std::string& name, Json mesh);
    /// A light or camera; those of one source that came out equal are one object. -1: no source.
    [[nodiscard]] Json Add(const std::string& name, Json object, std::int64_t source = -1);
    [[nodiscard]] const Json& Entries() const { return objects_; }

  private:
    /// The one of the candidates that is equal to the object; a new one, added to them, if none.
    [[nodiscard]] std::string AddOnce(const std::string& name, Json object,
                                      std::vector<std::string>& candidates);

    Json objects_ = Json::object();
    Ids ids_;
    std::unordered_map<std::size_t, std::vector<std::string>> meshes_;
    std::map<std::int64_t, std::vector<std::string>> bySource_;
};

class Nodes {
  public:
    Nodes(const SourceScene& scene, Objects& objects, Materials& materials, Warnings& warnings);

    /// All nodes, parents before children.
    [[nodiscard]] Json Write();

  private:
    struct Placed {
        std::string id;
        Matrix world; ///< in the source's axes, frame of a light or camera included
        Matrix frame; ///< from the source node's own frame to the host's
    };

    [[nodiscard]] bool IsDropped(std::size_t index) const { return index == 0 && scene_.dropRoot; }
    [[nodiscard]] bool IsTop(const SourceNode& node) const {
        return !node.parent || IsDropped(*node.parent);
    }
    void Place();
    [[nodiscard]] Json WriteNode(std::size_t index);
    [[nodiscard]] Json LocalTransform(std::size_t index) const;
    /// Puts in the node's object; the others go into `extra`, nodes of their own.
    void AddObjects(Json& node, std::size_t index, Json& extra);
    [[nodiscard]] double TargetDistance(std::size_t index) const;

    const SourceScene& scene_;
    Objects& objects_;
    Materials& materials_;
    Warnings& warnings_;
    Ids ids_;
    std::vector<Placed> placed_;
    std::map<std::string, int> names_; ///< how many nodes of each name
    std::set<std::size_t> targets_;    ///< the host gives these their object
};

} // namespace sceneconv
