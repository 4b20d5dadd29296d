#pragma once
#include "simhost/scene/entity.h"
#include "simhost/scene/scene_node.h"

#include <map>
#include <set>
#include <unordered_map>

namespace simhost {

class DerivedObject;
class SceneModifier;

/// The open scene: owner of all nodes, objects, materials, maps and modifiers in it. A thing stays
/// until it is deleted or the scene goes; references to what is deleted turn null.
class Scene {
  public:
    Scene();
    ~Scene();
    Scene(const Scene&) = delete;
    Scene& operator=(const Scene&) = delete;

    /// The scene that the core interface shows.
    static Scene& Current();
    /// Makes another scene the open one; the old one goes.
    static void Open(std::unique_ptr<Scene> scene);
    /// Opens an empty scene.
    static void Reset() { Open(std::make_unique<Scene>()); }

    // Settings of the scene and of the host around it.
    std::wstring filePath;   // as the host reports it; empty = never saved
    std::wstring baseFolder; // of relative search folders
    int unitType = 0;        // UNITS_INCHES
    float unitScale = 1;
    std::optional<float> unitScaleOverride;
    TimeValue time = 0;
    int renderWidth = 640;
    int renderHeight = 480;
    float pixelAspect = 1;
    std::map<int, std::wstring> directories;
    std::vector<std::wstring> mapPaths;
    Point3 background;
    Point3 ambient;
    bool useEnvironmentMap = false;
    Ref<Texmap> environmentMap;
    Ref<ReferenceTarget> renderer;
    struct ColorPipeline {
        Text mode, renderingSpace;
        std::optional<float> displayGamma;
    };
    std::optional<ColorPipeline> colorPipeline; // empty: this host has no such manager
    int hostRelease = 26000;
    int hostYear = 2024;

    enum class Exporter { Works, Absent, Refuses, WritesNothing, Throws };
    Exporter exporter = Exporter::Works;
    bool findsFiles = true;
    Faults faults; // of the host's own calls

    // Ownership.
    template <class T>
    T* Own(std::unique_ptr<T> thing) {
        T* kept = thing.get();
        things_[Animatable::GetHandleByAnim(kept)] = std::move(thing);
        return kept;
    }
    /// A new thing of a class of the catalogue, or null when the catalogue lacks it.
    ReferenceTarget* Create(std::wstring_view className, SClass_ID kind);
    /// Deletes a material, map, object or modifier; all references to it turn null.
    void Delete(ReferenceTarget* thing);
    /// All materials and maps that exist in the scene, used or not, in order of making.
    [[nodiscard]] std::vector<MtlBase*> AllMtlBases() const;

    // Nodes.
    [[nodiscard]] SceneNode& Root() { return *root_; }
    /// A node with exactly that name. Handle 0 takes the next free one.
    SceneNode* CreateNode(std::wstring_view name, Object* object, SceneNode* parent = nullptr,
                          ULONG handle = 0);
    /// The children of the node go to the root and keep their places.
    void DeleteNode(SceneNode* node);
    void SetParent(SceneNode& node, SceneNode* parent, bool keepPosition);
    /// Name followed by a number that no node has; "Line001" and "Line" both go on with "Line002".
    [[nodiscard]] std::wstring UniqueName(std::wstring_view name);
    [[nodiscard]] SceneNode* FindByName(std::wstring_view name) const;
    [[nodiscard]] SceneNode* FindByHandle(ULONG handle) const;
    [[nodiscard]] size_t NodeCount() const { return nodes_.size(); }
    /// Every node but the root, parents before children, children in order.
    [[nodiscard]] std::vector<SceneNode*> AllNodes() const;
    /// The nodes that hold the object, in order of their handles.
    [[nodiscard]] std::vector<SceneNode*> NodesOf(Object* object) const;
    /// The distinct materials of nodes, in tree order.
    [[nodiscard]] const std::vector<Mtl*>& MaterialsInUse() const;

    // Selection, in order of selecting.
    void Select(SceneNode* node);
    void ClearSelection();
    [[nodiscard]] std::vector<SceneNode*> Selection() const;

    // What scripts and users do (scene_edit.cpp).
    /// A node with a copy of the object and its stack; without children, with the parent.
    SceneNode* CopyNode(SceneNode& node);
    Object* CloneObject(Object* object);
    /// One level: the members go to the head's parent, the head goes. False for what is no head.
    bool Ungroup(SceneNode* head);
    /// Replaces the object by a mesh of its result; false when that has none.
    bool CollapseToMesh(SceneNode& node) { return CollapseTo(node, L"Editable Mesh"); }
    bool CollapseToPoly(SceneNode& node) { return CollapseTo(node, L"Editable Poly"); }
    /// Puts rotation, scale and object offset of the node into an XForm modifier.
    void ResetXForm(SceneNode& node);

    /// Another number whenever the tree, an object or a material of a node changes. No two scenes
    /// ever have the same one: what was kept for a scene that is gone is never taken for current.
    [[nodiscard]] unsigned long Revision() const { return revision_; }
    void Touch() { revision_ = NextRevision(); }

  private:
    friend class SceneNode;
    static unsigned long NextRevision();
    void Renamed(const SceneNode& node, const std::wstring& oldName);
    void ForgetName(const std::wstring& name, ULONG handle);
    void ObjectChanges(SceneNode& node, Object* object);
    bool CollapseTo(SceneNode& node, std::wstring_view className);

    std::map<AnimHandle, std::unique_ptr<ReferenceTarget>> things_; // in order of making
    std::map<ULONG, std::unique_ptr<SceneNode>> nodes_;
    std::unique_ptr<SceneNode> root_;
    std::unordered_map<std::wstring, std::set<ULONG>> byName_; // none empty
    std::unordered_map<AnimHandle, std::set<ULONG>> byObject_;
    std::unordered_map<std::wstring, int> nextNumber_;
    std::vector<AnimHandle> selection_;
    ULONG nextHandle_ = 1;
    unsigned long revision_ = NextRevision();
    mutable std::vector<Mtl*> materialsInUse_;
    mutable unsigned long materialsRevision_ = 0;
};

} // namespace simhost
