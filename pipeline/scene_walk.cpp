#include "pipeline/scene_walk.h"

#include "host/attempt.h"

#include <unordered_set>
#include <vector>

namespace brimwave {
namespace {

// The walks keep what is still to come on a stack of their own, last first: trees of any depth
// are walked, in the order of a recursive walk.

void PushChildren(INode& node, std::vector<INode*>& pending) {
    for (int i = node.NumberOfChildren() - 1; i >= 0; --i)
        pending.push_back(node.GetChildNode(i));
}

class MapWalk {
  public:
    explicit MapWalk(const std::function<void(Texmap&)>& visit) : visit_(visit) {}

    void From(MtlBase* root) {
        pending_.push_back(root);
        while (!pending_.empty()) {
            MtlBase* const next = pending_.back();
            pending_.pop_back();
            if (next && visited_.insert(next).second)
                Visit(*next);
        }
    }

  private:
    void Visit(MtlBase& object) {
        SClass_ID kind = 0;
        Attempt([&] { kind = object.SuperClassID(); });
        if (kind == TEXMAP_CLASS_ID)
            visit_(static_cast<Texmap&>(object));
        if (kind == MATERIAL_CLASS_ID)
            Attempt([&] { PushSubMaterials(static_cast<Mtl&>(object)); });
        Attempt([&] { PushSubMaps(object); });
    }

    void PushSubMaterials(Mtl& material) {
        for (int i = material.NumSubMtls() - 1; i >= 0; --i)
            pending_.push_back(material.GetSubMtl(i));
    }

    void PushSubMaps(MtlBase& object) {
        for (int i = object.NumSubTexmaps() - 1; i >= 0; --i)
            pending_.push_back(object.GetSubTexmap(i));
    }

    const std::function<void(Texmap&)>& visit_;
    std::unordered_set<const MtlBase*> visited_;
    std::vector<MtlBase*> pending_;
};

} // namespace

Mtl* GeometryMaterial(INode& node, TimeValue now) {
    Mtl* const material = node.GetMtl();
    if (!material)
        return nullptr;
    Object* const object = node.EvalWorldState(now).obj;
    return object && object->SuperClassID() == GEOMOBJECT_CLASS_ID ? material : nullptr;
}

void ForEachNode(const std::function<void(INode&)>& visit) {
    std::vector<INode*> pending;
    Attempt([&] {
        Interface* const core = GetCOREInterface();
        if (INode* const root = core ? core->GetRootNode() : nullptr)
            PushChildren(*root, pending);
    });
    while (!pending.empty()) {
        INode* const node = pending.back();
        pending.pop_back();
        if (!node)
            continue;
        Attempt([&] { PushChildren(*node, pending); });
        visit(*node);
    }
}

void ForEachGeometryMaterial(const std::function<void(Mtl&)>& visit) {
    Interface* const core = GetCOREInterface();
    if (!core)
        return;
    const TimeValue now = core->GetTime();
    ForEachNode([&](INode& node) {
        Mtl* material = nullptr;
        Attempt([&] { material = GeometryMaterial(node, now); });
        if (material)
            visit(*material);
    });
}

void ForEachSceneMap(const std::function<void(Texmap&)>& visit) {
    MapWalk walk(visit);
    ForEachGeometryMaterial([&](Mtl& material) { walk.From(&material); });
    Texmap* environment = nullptr;
    Attempt([&] {
        if (Interface* core = GetCOREInterface())
            environment = core->GetEnvironmentMap();
    });
    walk.From(environment);
}

} // namespace brimwave
