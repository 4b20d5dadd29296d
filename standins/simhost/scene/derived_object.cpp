#include "simhost/scene/derived_object.h"

namespace simhost {

void DerivedObject::AddModifier(SceneModifier* modifier, int before) {
    const auto at = before < 0 ? modifiers_.end() : modifiers_.begin() + before;
    modifiers_.insert(at, Ref<SceneModifier>(modifier));
    result_.reset();
}

void DerivedObject::SetBase(Object* base) {
    base_ = base;
    result_.reset();
}

unsigned long DerivedObject::Version() const {
    unsigned long sum = 0;
    for (const auto& ref : modifiers_)
        if (const SceneModifier* modifier = ref.Get())
            sum += modifier->Version() + (modifier->enabled ? 1000003ul : 0);
    if (const Entity* entity = EntityOf(BaseOf(base_.Get())))
        sum += entity->Version();
    return sum;
}

bool DerivedObject::MakesMesh(Object& below) const {
    bool extrudes = false, any = false;
    for (const auto& ref : modifiers_) {
        const SceneModifier* modifier = ref.Get();
        if (!modifier || !modifier->enabled)
            continue;
        any = true;
        extrudes = extrudes || modifier->Class().behaviour == L"extrude";
    }
    if (dynamic_cast<SceneShape*>(&below))
        return extrudes; // other modifiers leave a shape a shape
    if (dynamic_cast<ResultMesh*>(&below))
        return any;
    const auto* mesh = dynamic_cast<SceneMesh*>(&below);
    const auto* geometry = dynamic_cast<SceneGeometry*>(&below);
    return any && ((mesh && mesh->HasMesh()) || (geometry && geometry->HasMesh()));
}

void DerivedObject::Apply(Object& below, Mesh& mesh) const {
    const auto* shape = dynamic_cast<SceneShape*>(&below);
    if (const auto* made = dynamic_cast<ResultMesh*>(&below))
        mesh = made->mesh;
    else if (!shape)
        dynamic_cast<SceneObject&>(below).BuildMesh(mesh);
    for (auto it = modifiers_.rbegin(); it != modifiers_.rend(); ++it) {
        const SceneModifier* modifier = it->Get();
        if (!modifier || !modifier->enabled)
            continue;
        if (shape && modifier->Class().behaviour == L"extrude") {
            mesh = Mesh();
            for (const Spline& spline : shape->Splines())
                AddExtrusion(mesh, spline.Points(), spline.closed, modifier->Float(L"amount", 1));
        } else if (modifier->Class().behaviour == L"xform") {
            for (int i = 0; i < mesh.getNumVerts(); ++i)
                mesh.setVert(i, mesh.getVert(i) * modifier->matrix);
        }
    }
}

Object* DerivedObject::Evaluate() {
    Object* below = Evaluated(base_.Get());
    if (!below || !MakesMesh(*below))
        return below;
    const unsigned long version = Version();
    if (!result_ || version != resultVersion_) {
        result_ = std::make_unique<ResultMesh>(ResultMesh::Life::Kept);
        Apply(*below, result_->mesh);
        resultVersion_ = version;
    }
    return result_.get();
}

SClass_ID DerivedObject::SuperClassID() {
    faults.Check(Call::SuperClassID);
    return superClass_;
}

void DerivedObject::GetClassName(MSTR& s, bool /*localized*/) const {
    faults.Check(Call::GetClassName);
    s = L"Derived Object";
}

const MCHAR* DerivedObject::GetObjectName(bool localized) {
    Object* base = base_.Get();
    return base ? base->GetObjectName(localized) : L"";
}

int DerivedObject::NumModifiers() const {
    faults.Check(Call::NumModifiers);
    return static_cast<int>(modifiers_.size());
}

Modifier* DerivedObject::GetModifier(int i) {
    faults.Check(Call::GetModifier);
    const bool inside = i >= 0 && i < static_cast<int>(modifiers_.size());
    return inside ? modifiers_[static_cast<size_t>(i)].Get() : nullptr;
}

Object* DerivedObject::GetObjRef() {
    faults.Check(Call::GetObjRef);
    return base_.Get();
}

int DerivedObject::IsRenderable() {
    Object* result = Evaluate();
    return result ? result->IsRenderable() : 0;
}

int DerivedObject::CanConvertToType(Class_ID id) {
    faults.Check(Call::CanConvertToType);
    Object* result = Evaluate();
    return result ? result->CanConvertToType(id) : 0;
}

Object* DerivedObject::ConvertToType(TimeValue t, Class_ID id) {
    faults.Check(Call::ConvertToType);
    Object* result = Evaluate();
    return result ? result->ConvertToType(t, id) : nullptr;
}

Object* BaseOf(Object* object) {
    while (auto* derived = dynamic_cast<DerivedObject*>(object))
        object = derived->Base();
    return object;
}

Object* Evaluated(Object* object) {
    auto* stack = dynamic_cast<DerivedObject*>(object);
    return stack ? stack->Evaluate() : object;
}

bool MeshOf(Object* object, Mesh& mesh) {
    object = Evaluated(object);
    if (const auto* made = dynamic_cast<ResultMesh*>(object)) {
        mesh = made->mesh;
        return true;
    }
    const auto* described = dynamic_cast<SceneObject*>(object);
    return described && described->BuildMesh(mesh);
}

} // namespace simhost
