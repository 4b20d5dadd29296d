#pragma once
#include "simhost/scene/objects.h"

namespace simhost {

/// An object with modifiers on it. Nodes that hold the same one share the stack. Base and
/// modifiers belong to the scene.
class DerivedObject final : public IDerivedObject {
  public:
    /// `superClass` is GEN_DERIVOB_CLASS_ID, or WSM_DERIVOB_CLASS_ID for world-space modifiers.
    explicit DerivedObject(Object* base, SClass_ID superClass = GEN_DERIVOB_CLASS_ID)
        : base_(base), superClass_(superClass) {}
    /// 0 is the top of the stack; -1 is below all others.
    void AddModifier(SceneModifier* modifier, int before = 0);
    void SetBase(Object* base);
    [[nodiscard]] bool InWorldSpace() const { return superClass_ == WSM_DERIVOB_CLASS_ID; }
    [[nodiscard]] Object* Base() const { return base_.Get(); }
    [[nodiscard]] const std::vector<Ref<SceneModifier>>& Modifiers() const { return modifiers_; }
    /// The result of the stack; null without a base. Kept until a parameter of the base or of a
    /// modifier changes.
    [[nodiscard]] Object* Evaluate();
    Faults faults;

    SClass_ID SuperClassID() override;
    Class_ID ClassID() override { return Class_ID(superClass_, 0); }
    void GetClassName(MSTR& s, bool localized = true) const override;
    const MCHAR* GetObjectName(bool localized) override;
    int NumModifiers() const override;
    Modifier* GetModifier(int i) override;
    Object* GetObjRef() override;
    int IsRenderable() override;
    int CanConvertToType(Class_ID id) override;
    Object* ConvertToType(TimeValue t, Class_ID id) override;

  private:
    [[nodiscard]] unsigned long Version() const;
    /// Whether the result is a mesh of its own rather than the base as it is.
    [[nodiscard]] bool MakesMesh(Object& below) const;
    void Apply(Object& below, Mesh& mesh) const;

    Ref<Object> base_;
    SClass_ID superClass_;
    std::vector<Ref<SceneModifier>> modifiers_;
    std::unique_ptr<ResultMesh> result_;
    unsigned long resultVersion_ = 0;
};

/// The object at the bottom of all stacks.
[[nodiscard]] Object* BaseOf(Object* object);
/// The result of the stack, or the object itself when it has none.
[[nodiscard]] Object* Evaluated(Object* object);
/// A mesh of the object's result; false when it has none.
[[nodiscard]] bool MeshOf(Object* object, Mesh& mesh);

} // namespace simhost
