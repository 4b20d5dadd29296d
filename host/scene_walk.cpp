#include "host/scene_walk.h"

#include "host/attempt.h"
#include "host/sdk_compat.h"

#include <algorithm>

namespace brimwave {
namespace {

/// Appends `child(i)` for each of the `count()` children; one that the host fails over is null.
template <class Object, class Count, class Child>
void AppendChildren(std::vector<Object*>& children, Count count, Child child) {
    const int size = AttemptOr(0, count);
    for (int i = 0; i < size; ++i)
        children.push_back(AttemptOr<Object*>(nullptr, [&] { return child(i); }));
}

} // namespace

INode* FindRootNode() noexcept {
    INode* root = nullptr;
    Attempt([&] {
        if (Interface* const core = GetCOREInterface())
            root = core->GetRootNode();
    });
    return root;
}

std::vector<INode*> CollectNodes(INode* root, NodeOrder order) {
    std::vector<INode*> nodes, pending{root}, children; // pending: last first
    while (!pending.empty()) {
        INode* const node = pending.back();
        pending.pop_back();
        if (!node)
            continue;
        nodes.push_back(node);
        children.clear();
        AppendChildren(
            children, [&] { return node->NumberOfChildren(); },
            [&](int i) { return node->GetChildNode(i); });
        // With the children backwards, the whole walk turned round has parents last.
        if (order == NodeOrder::ParentFirst)
            std::reverse(children.begin(), children.end());
        pending.insert(pending.end(), children.begin(), children.end());
    }
    if (root)
        nodes.erase(nodes.begin());
    if (order == NodeOrder::ChildrenFirst)
        std::reverse(nodes.begin(), nodes.end());
    return nodes;
}

std::wstring NodeNameOrEmpty(INode& node) noexcept {
    return AttemptOr(std::wstring(), [&] { return HostText(node.GetName()); });
}

Mtl* FindGeometryMaterial(INode& node, TimeValue now) {
    Mtl* const material = node.GetMtl();
    if (!material)
        return nullptr;
    Object* const object = node.EvalWorldState(now).obj;
    return object && object->SuperClassID() == GEOMOBJECT_CLASS_ID ? material : nullptr;
}

std::vector<Mtl*> CollectGeometryMaterials() {
    std::vector<Mtl*> materials;
    Interface* const core = GetCOREInterface();
    if (!core)
        return materials;
    const TimeValue now = core->GetTime();
    for (INode* const node : CollectNodes(FindRootNode(), NodeOrder::ParentFirst)) {
        const auto find = [&] { return FindGeometryMaterial(*node, now); };
        if (Mtl* const material = AttemptOr<Mtl*>(nullptr, find))
            materials.push_back(material);
    }
    return materials;
}

SClass_ID SuperClassOf(Animatable& object) noexcept {
    return AttemptOr(SClass_ID{0}, [&] { return object.SuperClassID(); });
}

void AppendSubMaps(MtlBase& object, MaterialParts& parts) {
    AppendChildren(
        parts, [&] { return object.NumSubTexmaps(); },
        [&](int i) { return object.GetSubTexmap(i); });
}

void AppendSubMaterials(Mtl& material, MaterialParts& parts) {
    AppendChildren(
        parts, [&] { return material.NumSubMtls(); }, [&](int i) { return material.GetSubMtl(i); });
}

std::vector<Texmap*> CollectSceneMaps() {
    std::vector<Texmap*> maps;
    MaterialWalk walk;
    const auto visit = [&](MtlBase& object, MaterialParts& parts) {
        const SClass_ID kind = SuperClassOf(object);
        if (kind == TEXMAP_CLASS_ID)
            maps.push_back(static_cast<Texmap*>(&object));
        AppendSubMaps(object, parts);
        if (kind == MATERIAL_CLASS_ID)
            AppendSubMaterials(static_cast<Mtl&>(object), parts);
    };
    for (Mtl* const material : CollectGeometryMaterials())
        walk.From(material, visit);
    Texmap* environment = nullptr;
    Attempt([&] {
        if (Interface* const core = GetCOREInterface())
            environment = core->GetEnvironmentMap();
    });
    walk.From(environment, visit);
    return maps;
}

} // namespace brimwave
