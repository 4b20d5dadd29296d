#include "pipeline/mesh_source.h"

#include "host/modifier_stack.h"
#include "host/sdk_compat.h"

namespace brimwave {
namespace {

/// The node's result in its own space; null when only the result in the world is to be had.
Object* EvaluatedObject(INode& node, Object* object, TimeValue time) {
    if (!object || !IsStack(*object))
        return object;
    return node.GetWSMDerivedObject() ? nullptr : node.EvalWorldState(time).obj;
}

} // namespace

MeshSource::MeshSource(INode& node, TimeValue time)
    : object_(node.GetObjectRef()), mesh_(EvaluatedObject(node, object_, time), time) {
    if (Get())
        className_ = ClassNameOf(*mesh_.Source()); // which may be gone when it is asked for
}

void MeshSource::TellOfChange() const {
    Interval always = FOREVER;
    object_->NotifyDependents(always, PART_ALL, REFMSG_CHANGE);
}

std::vector<std::wstring> ModifierNamesOf(Object* object) {
    std::vector<std::wstring> names;
    AnyModifier(object, [&](Modifier& modifier) {
        names.push_back(ClassNameOf(modifier));
        return false;
    });
    return names;
}

NewTriObject CopyToObject(const Mesh& mesh) {
    NewTriObject object(CreateNewTriObject());
    if (object)
        object->GetMesh() = mesh;
    return object;
}

} // namespace brimwave
