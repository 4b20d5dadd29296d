#include "package/scene_nodes.h"

#include "host/attempt.h"
#include "host/scene_walk.h"

namespace brimwave {
namespace {

SceneNode Classify(INode& node, TimeValue time, PackageLog& log) {
    SceneNode entry{&node, 0};
    const bool evaluated = Attempt([&] {
        if (Object* const object = node.EvalWorldState(time, TRUE).obj)
            entry.superClass = object->SuperClassID();
    });
    if (!evaluated)
        log.Add(L"WARNING: Object of '" + NodeNameOrEmpty(node) + L"' could not be evaluated");
    return entry;
}

bool HasMaterial(INode& node, PackageLog& log) {
    const Mtl* material = nullptr;
    if (!Attempt([&] { material = node.GetMtl(); }))
        log.Add(L"WARNING: Material of '" + NodeNameOrEmpty(node) + L"' could not be read");
    return material != nullptr;
}

} // namespace

std::vector<SceneNode> CollectSceneNodes(Interface& host, TimeValue time, PackageLog& log) {
    std::vector<SceneNode> nodes;
    for (INode* const node : CollectNodes(host.GetRootNode(), NodeOrder::ChildrenFirst))
        nodes.push_back(Classify(*node, time, log));
    return nodes;
}

std::vector<INode*> CollectObjects(const std::vector<SceneNode>& nodes, PackageLog& log) {
    std::vector<INode*> objects;
    for (const SceneNode& entry : nodes)
        if (entry.superClass == GEOMOBJECT_CLASS_ID && HasMaterial(*entry.node, log))
            objects.push_back(entry.node);
    log.Add(L"Geometry objects with materials: " + std::to_wstring(objects.size()));
    return objects;
}

} // namespace brimwave
