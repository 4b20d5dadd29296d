#pragma once
// The inside of the scene file's reader. A load goes in four passes over the parsed text: things
// are made, then nodes, then values and references are filled in (so cycles and any order work),
// then the settings of the scene.
#include "simhost/classes/json_value.h"
#include "simhost/scene/derived_object.h"
#include "simhost/scene/scene.h"

#include <deque>

namespace simhost {

/// What stands at a place of the file decides which classes can be meant.
enum class Context { Map, Material, Object, Modifier, SpaceModifier, Renderer, SubObject };

/// A class as one or more entries of the file have it.
struct ClassVariant {
    ClassPtr info;
    /// The place of each parameter of the entry's "blocks", in their order there.
    std::vector<std::vector<ParamPlace>> explicitParams;
    std::vector<int> explicitBlocks; // index of each of the entry's blocks in the class
};

class SceneLoader {
  public:
    SceneLoader(Scene& scene, const JsonView& root) : scene_(scene), root_(root) {}
    void Load();

  private:
    struct Made {
        ReferenceTarget* thing = nullptr; // for objects what nodes hold: a stack when there is one
        Entity* entity = nullptr;         // null for a stack on another object
        const ClassVariant* variant = nullptr;
    };
    using Dictionary = std::unordered_map<std::string, Made>;
    struct NodeEntry {
        JsonView view;
        std::string id; // empty: can't be referred to
        int parent;     // index of the entry, -1 for the root
        std::vector<int> children;
        SceneNode* node = nullptr;
    };

    // scene_file_loader.cpp
    void MakeAll(const char* member, Context context, Dictionary& made);
    void FillAll(const char* member, Context context, const Dictionary& made);
    void CheckStacks() const;
    [[nodiscard]] ReferenceTarget* Resolve(const JsonView& view, ParamType2 type);
    [[nodiscard]] ReferenceTarget* ResolveAny(const JsonView& view);
    [[nodiscard]] ReferenceTarget* Named(const JsonView& view, const Dictionary& dictionary,
                                         const char* what) const;
    [[nodiscard]] Made MakeInline(const JsonView& view, Context context);
    [[nodiscard]] Object* ResolveObject(const JsonView& view);
    [[nodiscard]] SceneModifier* ResolveModifier(const JsonView& view, Context context);
    [[nodiscard]] SceneNode* ResolveNode(const JsonView& view) const;
    static void ReadFaults(const JsonView& view, Faults& faults);

    // scene_file_classes.cpp
    [[nodiscard]] const ClassVariant& ClassOf(const JsonView& entry, Context context);

    // scene_file_entries.cpp
    [[nodiscard]] Made Make(const JsonView& entry, Context context);
    void Fill(const JsonView& entry, Context context, const Made& made);
    void FillParams(const JsonView& entry, Entity& entity);
    void FillBlocks(const JsonView& entry, const Made& made);
    void FillSlots(const JsonView& entry, Entity& entity);
    void FillSubMaterials(const JsonView& entry, const Made& made);
    void FillSubObjects(const JsonView& entry, Entity& entity);
    void SetParam(const JsonView& value, Entity& entity, ParamPlace place);
    void SetSlot(Entity& entity, int slot, const JsonView& map);
    [[nodiscard]] static int SlotIndex(const JsonView& which, const Entity& entity);

    // scene_file_objects.cpp
    void FillObject(const JsonView& entry, const Made& made);
    void FillStack(const JsonView& entry, const char* member, DerivedObject& stack,
                   Context context);

    // scene_file_nodes.cpp
    void LoadNodes();
    void CollectNodes(const JsonView& list, int parent, int depth);
    void NameNodes();
    void MakeNodes();
    void FillNode(const NodeEntry& entry);
    void FillNodeObject(const JsonView& view, SceneNode& node);

    // scene_file_settings.cpp
    void LoadSettings();
    void LoadUnits();
    void LoadEnvironment();
    void LoadColorPipeline();
    void LoadFaults();

    Scene& scene_;
    const JsonView& root_;
    Dictionary maps_, materials_, objects_, modifiers_;
    std::deque<NodeEntry> nodes_;
    std::deque<JsonView> nodeLists_;
    std::unordered_map<std::string, int> nodeIds_; // -1: several nodes have that name
    std::unordered_map<std::string, ClassVariant> variants_;
    int depth_ = 0; // of inline entries
};

/// The class of an entry that brings definitions of its own. `base` is the catalogue's class, null
/// for a class that only the file knows; `kind` is then its super class. scene_file_variant.cpp
[[nodiscard]] ClassVariant BuildVariant(const JsonView& entry, const ClassPtr& base,
                                        SClass_ID kind);
/// Fills the mesh from the member "mesh" of an entry. scene_file_mesh.cpp
void ReadMesh(const JsonView& view, Mesh& mesh);
/// A transform as scene files write it. scene_file_nodes.cpp
[[nodiscard]] Matrix3 ReadTransform(const JsonView& view);

} // namespace simhost
