#include "pipeline/mesh_source.h"

#include "host/sdk_compat.h"

namespace brimwave {
namespace {

/// Calls `visit` with every stack from the top down; gives what they stand on.
template <class Visit>
Object* WalkStacks(Object* object, Visit visit) {
    while (object && IsStack(*object)) {
        auto* const stack = static_cast<IDerivedObject*>(object);
        visit(*stack);
        object = stack->GetObjRef();
    }
    return object;
}

/// The node's result in its own space; null when only the result in the world is to be had.
Object* EvaluatedObject(INode& node, Object* object, TimeValue time) {
    if (!object || !IsStack(*object))
        return object;
    return node.GetWSMDerivedObject() ? nullptr : node.EvalWorldState(time).obj;
}

} // namespace

bool IsStack(Object& object) {
    return object.SuperClassID() == GEN_DERIVOB_CLASS_ID;
}

MeshSource::MeshSource(INode& node, TimeValue time) : object_(node.GetObjectRef()) {
    Object* const evaluated = EvaluatedObject(node, object_, time);
    if (!evaluated || !evaluated->CanConvertToType(triObjectClassID))
        return;
    className_ = ClassNameOf(*evaluated);
    Object* const converted = evaluated->ConvertToType(time, triObjectClassID);
    if (converted != evaluated)
        made_ = converted;
    triangles_ = dynamic_cast<TriObject*>(converted);
}

MeshSource::~MeshSource() {
    if (made_)
        made_->MaybeAutoDelete();
}

void MeshSource::TellOfChange() const {
    Interval always = FOREVER;
    object_->NotifyDependents(always, PART_ALL, REFMSG_CHANGE);
}

Object* BaseObjectOf(Object* object) {
    return WalkStacks(object, [](IDerivedObject&) {});
}

std::vector<std::wstring> ModifierNamesOf(Object* object) {
    std::vector<std::wstring> names;
    WalkStacks(object, [&](IDerivedObject& stack) {
        const int count = stack.NumModifiers();
        for (int i = 0; i < count; ++i)
            if (Modifier* const modifier = stack.GetModifier(i))
                names.push_back(ClassNameOf(*modifier));
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
