// What scripts and users do to a scene: copies, groups, collapsing stacks, resetting transforms.
#include "simhost/scene/derived_object.h"
#include "simhost/scene/scene.h"

namespace simhost {

Object* Scene::CloneObject(Object* object) {
    if (auto* stack = dynamic_cast<DerivedObject*>(object)) {
        auto copy = std::make_unique<DerivedObject>(CloneObject(stack->Base()),
                                                    stack->InWorldSpace() ? WSM_DERIVOB_CLASS_ID
                                                                          : GEN_DERIVOB_CLASS_ID);
        for (const auto& modifier : stack->Modifiers())
            if (modifier.Get())
                copy->AddModifier(Own(modifier.Get()->CloneModifier()), -1);
        copy->faults = stack->faults;
        return Own(std::move(copy));
    }
    const auto* described = dynamic_cast<SceneObject*>(object);
    return described ? Own(described->Clone()) : object;
}

SceneNode* Scene::CopyNode(SceneNode& node) {
    SceneNode* twin =
        CreateNode(UniqueName(node.Name()), CloneObject(node.ObjectRef()), node.Parent());
    twin->flags = node.flags;
    twin->visibility = node.visibility;
    twin->layer = node.layer;
    twin->userProps = node.userProps;
    twin->faults = node.faults;
    twin->offset = node.offset;
    twin->SetLocalTM(node.LocalTM());
    twin->SetMtl(node.Material());
    twin->SetTarget(node.target_.Get());
    twin->SetWireColor(node.wireColor_);
    twin->SetSpaceStack(node.SpaceStack());
    return twin;
}

bool Scene::Ungroup(SceneNode* head) {
    if (!head || !head->flags.groupHead)
        return false;
    SceneNode* above = head->Parent();
    const std::vector<SceneNode*> members = head->Children();
    for (SceneNode* member : members) {
        SetParent(*member, above, true);
        // Within an outer group the members become its members.
        member->flags.groupMember = head->flags.groupMember;
    }
    DeleteNode(head);
    return true;
}

bool Scene::CollapseTo(SceneNode& node, std::wstring_view className) {
    Mesh mesh;
    Object* object = node.EvalWorldState(time).obj;
    if (!object || !object->CanConvertToType(triObjectClassID) || !MeshOf(object, mesh))
        return false;
    auto* made = Create(className, GEOMOBJECT_CLASS_ID);
    if (auto* plain = dynamic_cast<SceneMesh*>(made))
        plain->mesh = std::move(mesh);
    else if (auto* poly = dynamic_cast<SceneGeometry*>(made))
        poly->ownMesh = std::make_unique<Mesh>(std::move(mesh));
    else
        return false;
    node.SetObjectRef(dynamic_cast<Object*>(made));
    node.SetSpaceStack(nullptr);
    return true;
}

void Scene::ResetXForm(SceneNode& node) {
    auto* xform = dynamic_cast<SceneModifier*>(Create(L"XForm", OSM_CLASS_ID));
    if (!xform)
        return;
    std::vector<std::pair<SceneNode*, Matrix3>> places;
    for (SceneNode* child : node.Children())
        places.emplace_back(child, child->WorldTM());
    const Matrix3 object = node.GetObjectTM(time);
    Matrix3 straight; // the node keeps its place and loses turn and scale
    straight.SetTrans(node.WorldTM().GetTrans());
    xform->matrix = object * Inverse(straight);
    node.SetNodeTM(time, straight);
    node.offset = {};
    // A stack of this node's own: its instances keep their shape.
    auto* stack = Own(std::make_unique<DerivedObject>(node.ObjectRef()));
    stack->AddModifier(xform);
    node.SetObjectRef(stack);
    for (const auto& [child, place] : places)
        child->SetNodeTM(time, place);
}

} // namespace simhost
