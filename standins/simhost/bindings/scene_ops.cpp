#include "simhost/bindings/scene_ops.h"

#include "simhost/scene/derived_object.h"
#include "simhost/script/callables.h"
#include "simhost/script/convert.h"

namespace simhost::script {

::Object* ResultOf(SceneNode& node) {
    return node.EvalWorldState(node.Owner().time).obj;
}

std::vector<SceneModifier*> ModifiersOf(SceneNode& node) {
    std::vector<SceneModifier*> modifiers;
    ::Object* object = node.GetObjectRef();
    while (auto* stack = dynamic_cast<DerivedObject*>(object)) {
        for (const auto& modifier : stack->Modifiers()) {
            if (modifier.Get())
                modifiers.push_back(modifier.Get());
        }
        object = stack->Base();
    }
    return modifiers;
}

const Mesh* EditableMeshOf(SceneNode& node) {
    ::Object* result = ResultOf(node);
    if (auto* mesh = dynamic_cast<TriObject*>(result))
        return &mesh->GetMesh();
    auto* geometry = dynamic_cast<SceneGeometry*>(result);
    return geometry ? geometry->ownMesh.get() : nullptr;
}

Value LayerOf(SceneNode& node) {
    auto layer = std::make_shared<InterfaceObject>(L"LayerProperties");
    layer->Constant(L"name", MakeString(node.layer));
    return {layer};
}

void SelectNode(SceneNode& node, bool on) {
    Scene& scene = node.Owner();
    if (on) {
        scene.Select(&node);
        return;
    }
    const std::vector<SceneNode*> selected = scene.Selection();
    scene.ClearSelection();
    for (SceneNode* other : selected) {
        if (other != &node)
            scene.Select(other);
    }
}

} // namespace simhost::script
