#pragma once
// The nodes of the open scene, and the materials and maps that they show. Nothing here recurses:
// trees of any depth are walked.
#include <max.h>

#include <string>
#include <unordered_set>
#include <vector>

namespace brimwave {

/// The root of the open scene; null when the host has none or fails over it.
[[nodiscard]] INode* FindRootNode() noexcept;

enum class NodeOrder { ParentFirst, ChildrenFirst };

/// All nodes below `root`, which may be null; children of one parent in the host's order. A child
/// that the host fails over is left out together with what is below it.
[[nodiscard]] std::vector<INode*> CollectNodes(INode* root, NodeOrder order);

/// The node's name; empty when it has none or the host fails over it.
[[nodiscard]] std::wstring NodeNameOrEmpty(INode& node) noexcept;

/// The node's material when the node shows geometry at `now`, else null. What the host throws
/// passes through.
[[nodiscard]] Mtl* FindGeometryMaterial(INode& node, TimeValue now);

/// The materials of all geometry nodes of the open scene, parents first. A material used by several
/// nodes comes once for each. Nodes whose evaluation fails are passed over.
[[nodiscard]] std::vector<Mtl*> CollectGeometryMaterials();

/// Super class of the object; 0 when the host fails over it.
[[nodiscard]] SClass_ID SuperClassOf(Animatable& object) noexcept;

/// Parts of a material or map, in the order in which a walk goes into them; may hold nulls.
using MaterialParts = std::vector<MtlBase*>;

/// Appends all maps and all sub-materials; what the host fails over is null.
void AppendSubMaps(MtlBase& object, MaterialParts& parts);
void AppendSubMaterials(Mtl& material, MaterialParts& parts);

/// Walks materials and maps depth first, an object before its parts, each object once in the life
/// of the walk. Costs time in proportion to what is walked, whatever is shared.
class MaterialWalk {
  public:
    /// `visit(object, parts)` appends the parts of the object that the walk goes into.
    template <class Visit>
    void From(MtlBase* root, Visit visit) {
        pending_.push_back(root); // last first
        while (!pending_.empty()) {
            MtlBase* const next = pending_.back();
            pending_.pop_back();
            if (!next || !visited_.insert(next).second)
                continue;
            parts_.clear();
            visit(*next, parts_);
            pending_.insert(pending_.end(), parts_.rbegin(), parts_.rend());
        }
    }

  private:
    std::unordered_set<const MtlBase*> visited_;
    MaterialParts pending_, parts_;
};

/// Every map that the materials of geometry nodes or the environment reach, once: a material's maps
/// before its sub-materials.
[[nodiscard]] std::vector<Texmap*> CollectSceneMaps();

} // namespace brimwave
