#include "pipeline/vertex_color_bake.h"

#include "host/attempt.h"
#include "host/material_ids.h"
#include "host/modifier_stack.h"
#include "host/params.h"
#include "host/scene_walk.h"
#include "host/sdk_compat.h"
#include "pipeline/choice_maps.h"
#include "pipeline/mesh_source.h"

#include <algorithm>
#include <map>

namespace brimwave {
namespace {

void Log(DWORD type, const std::wstring& line) {
    Attempt([&] {
        if (LogSys* const log = GetCOREInterface()->Log())
            log->LogEntry(type, NO_DIALOG, L"Brimwave Platform", L"%ls",
                          (L"[Brimwave VC] " + line).c_str());
    });
}

/// A geometry node whose material holds a map that chooses.
struct ChoosingNode {
    INode* node;
    Mtl* material;
    std::uint32_t handle;
};

/// The nodes that hold one object, in the order of the scene.
struct ObjectUsers {
    Object* object;
    std::vector<ChoosingNode> nodes;
};

/// Nodes of one object that get the same colours; the first stands for all.
using ColorGroup = std::vector<ChoosingNode>;

class SceneBake {
  public:
    void Run() {
        for (INode* const node : CollectNodes(FindRootNode(), NodeOrder::ParentFirst))
            Count(*node);
        for (const ObjectUsers& users : objects_) {
            if (!Attempt([&] { Bake(users); }))
                Skip(users.nodes, L"the host failed over it");
            for (const std::wstring& note : maps_.TakeNotes())
                Log(SYSLOG_WARN, note);
        }
        Log(SYSLOG_INFO, meshes_ + skipped_ == 0
                             ? L"Nothing to bake."
                             : L"Baked " + std::to_wstring(meshes_) + L" mesh(es) of " +
                                   std::to_wstring(nodes_) + L" object(s); " +
                                   std::to_wstring(skipped_) + L" object(s) skipped.");
    }

  private:
    /// Every node counts as a user of the object at the bottom of its stacks, whatever it shows.
    void Count(INode& node) {
        Object* object = nullptr;
        Mtl* material = nullptr;
        Attempt([&] { object = node.GetObjectRef(); });
        Attempt([&] { material = node.GetMtl(); });
        if (object)
            Attempt([&] { ++users_[BaseObjectOf(object)]; });
        if (!object || !material || !maps_.Any(*material))
            return;
        const ChoosingNode user{&node, material, static_cast<std::uint32_t>(node.GetHandle())};
        if (!Attempt([&] { material = FindGeometryMaterial(node, params_.Time()); }))
            Skip({user}, L"the host failed over it");
        else if (material)
            Add(object, user);
    }

    void Add(Object* object, const ChoosingNode& user) {
        const auto [at, fresh] = places_.try_emplace(object, objects_.size());
        if (fresh)
            objects_.push_back({object, {}});
        objects_[at->second].nodes.push_back(user);
    }

    void Bake(const ObjectUsers& users) {
        const MeshSource source(Representative(users), params_.Time());
        Mesh* const mesh = source.Get();
        if (!mesh) {
            Skip(users.nodes, L"it cannot become a mesh");
            return;
        }
        const std::vector<ColorGroup> groups = GroupByColors(users, idFinder_.Collect(*mesh));
        const std::vector<std::wstring> modifiers = ModifierNamesOf(users.object);
        const bool displaced =
            std::any_of(modifiers.begin(), modifiers.end(), [](const std::wstring& name) {
                return DisplacementKindOf(name) != DisplacementKind::None;
            });
        const bool inPlace = source.IsTheObject() && groups.size() == 1 &&
                             users_[users.object] == static_cast<int>(groups[0].size());
        for (const ColorGroup& group : groups)
            if (displaced)
                Skip(group, L"a mesh of its own would lose its displacement");
            else if (!Attempt([&] { BakeGroup(source, modifiers, group, inPlace); }))
                Skip(group, L"the host failed over it");
    }

    /// A node without space warps where there is one: only it shows the object's own result.
    static INode& Representative(const ObjectUsers& users) {
        for (const ChoosingNode& user : users.nodes)
            if (!user.node->GetWSMDerivedObject())
                return *user.node;
        return *users.nodes.front().node;
    }

    /// The nodes that show a map that chooses on any face, by what they get.
    std::vector<ColorGroup> GroupByColors(const ObjectUsers& users, const std::vector<MtlID>& ids) {
        using Key = std::pair<Mtl*, std::vector<std::uint32_t>>;
        std::map<Key, size_t> places;
        std::vector<ColorGroup> groups;
        for (const ChoosingNode& user : users.nodes) {
            Key key{user.material, {}};
            if (!AddOwn(user, ids, key.second))
                continue;
            const auto [at, fresh] = places.try_emplace(std::move(key), groups.size());
            if (fresh)
                groups.emplace_back();
            groups[at->second].push_back(user);
        }
        return groups;
    }

    /// Adds what makes the node's colours its own: the few that it can have when it is chosen for
    /// by object alone, else its handle. False when no face shows a map that chooses.
    bool AddOwn(const ChoosingNode& user, const std::vector<MtlID>& ids,
                std::vector<std::uint32_t>& own) {
        bool any = false;
        for (const MtlID id : ids) {
            const FaceChoice* const choice = maps_.For(*user.material, id);
            any = any || choice;
            if (!choice || !choice->rule.scope.object)
                continue;
            const ChoiceScope& scope = choice->rule.scope;
            if (scope.element || scope.face) {
                own.assign(1, user.handle);
                return true;
            }
            const ChoiceColor color = Choose(*choice, {.object = user.handle, .materialId = id});
            own.insert(own.end(), {color.choice, color.count, color.variation});
        }
        return any;
    }

    void BakeGroup(const MeshSource& source, const std::vector<std::wstring>& modifiers,
                   const ColorGroup& group, bool inPlace) {
        Mesh& mesh = *source.Get();
        const ChoosingNode& first = group.front();
        const PaintedFaces painted = PaintFaces(
            mesh, first.handle, [&](MtlID id) { return maps_.For(*first.material, id); });
        const std::wstring name = Described(group);
        if (inPlace && CarriesColors(mesh, painted)) {
            Log(SYSLOG_INFO, name + L": carries its colours already.");
            Succeeded(group);
            return;
        }
        const bool replaces = HasColors(mesh);
        if (replaces && maps_.ShowsVertexColors(*first.material)) {
            Skip(group, L"its material shows the vertex colours that it has");
            return;
        }
        if (!(inPlace ? WriteInPlace(source, painted) : WriteCopy(mesh, painted, group))) {
            Skip(group, L"the host refused the colours");
            return;
        }
        if (!inPlace)
            LogCopied(name, source, modifiers);
        if (replaces)
            Log(SYSLOG_WARN, name + L": the vertex colours that it had are lost.");
        LogBaked(name, painted);
        Succeeded(group);
    }

    /// Nodes may keep a shallow copy of the mesh: they have to hear of the change.
    static bool WriteInPlace(const MeshSource& source, const PaintedFaces& painted) {
        const bool written = WriteColors(*source.Get(), painted);
        source.TellOfChange();
        return written;
    }

    static bool WriteCopy(const Mesh& mesh, const PaintedFaces& painted, const ColorGroup& group) {
        const NewTriObject copy = CopyToObject(mesh);
        if (!copy || !WriteColors(copy->GetMesh(), painted))
            return false;
        for (const ChoosingNode& user : group)
            user.node->SetObjectRef(copy.get());
        return true;
    }

    static void LogCopied(const std::wstring& name, const MeshSource& source,
                          const std::vector<std::wstring>& collapsed) {
        std::wstring line =
            name + (source.IsTheObject()
                        ? L": has a mesh of its own from now on"
                        : L": is an Editable Mesh from now on, was " + source.ClassName());
        for (size_t i = 0; i < collapsed.size(); ++i)
            line += (i == 0 ? L"; collapsed: " : L", ") + collapsed[i];
        Log(SYSLOG_INFO, line + L".");
    }

    static void LogBaked(const std::wstring& name, const PaintedFaces& painted) {
        std::wstring line = name + L": " + std::to_wstring(painted.ofFace.size()) + L" faces";
        if (painted.elements > 0)
            line += L" in " + std::to_wstring(painted.elements) + L" elements";
        Log(SYSLOG_INFO,
            line + L", " + std::to_wstring(painted.colors.size()) + L" different colours.");
    }

    static std::wstring Described(const ColorGroup& nodes) {
        const std::wstring name = L"\"" + NodeNameOrEmpty(*nodes.front().node) + L"\"";
        return nodes.size() == 1 ? name
                                 : name + L" and " + std::to_wstring(nodes.size() - 1) +
                                       L" more that share its mesh";
    }

    void Succeeded(const ColorGroup& nodes) {
        ++meshes_;
        nodes_ += nodes.size();
    }

    void Skip(const std::vector<ChoosingNode>& nodes, const std::wstring& why) {
        skipped_ += nodes.size();
        Attempt([&] { Log(SYSLOG_WARN, Described(nodes) + L": skipped, " + why + L"."); });
    }

    ParamReader params_;
    ChoiceMaps maps_{params_};
    MaterialIdFinder idFinder_;
    std::unordered_map<Object*, int> users_;
    std::unordered_map<Object*, size_t> places_;
    std::vector<ObjectUsers> objects_;
    size_t meshes_ = 0, nodes_ = 0, skipped_ = 0;
};

} // namespace

void BakeMultiTextureVC() {
    if (!Attempt([] { SceneBake().Run(); }))
        Log(SYSLOG_WARN, L"Nothing was baked: the host failed over it.");
}

} // namespace brimwave
