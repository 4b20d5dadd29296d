#pragma once
// Scene things as script values. A value holds the thing's handle, never a pointer: what was
// deleted meanwhile raises the host's error.
#include "simhost/scene/scene.h"
#include "simhost/script/object.h"

namespace simhost::script {

class SceneValue : public Object {
  public:
    explicit SceneValue(Animatable* thing) : handle_(Animatable::GetHandleByAnim(thing)) {}

    [[nodiscard]] bool Exists() const { return Animatable::GetAnimByHandle(handle_) != nullptr; }
    /// Throws when the thing was deleted.
    [[nodiscard]] Animatable& Thing() const;
    [[nodiscard]] bool Equals(const Object& other) const override;

  private:
    AnimHandle handle_;
};

/// A node of the scene. It shows its object's parameters as its own.
class NodeValue final : public SceneValue {
  public:
    explicit NodeValue(SceneNode* node) : SceneValue(node) {}
    [[nodiscard]] SceneNode& Node() const { return static_cast<SceneNode&>(Thing()); }

    void Print(Printer& printer, bool nested) const override;
    [[nodiscard]] std::wstring ClassName() const override;
    [[nodiscard]] std::wstring SuperClassName() const override;
    std::optional<Value> FindProperty(const std::wstring& name) override;
    bool SetProperty(const std::wstring& name, const Value& value) override;
    void CollectPropertyNames(std::vector<std::wstring>& names) const override;
    std::optional<Value> Copy() override;
};

/// A material, map, object, modifier, renderer or sub-object.
class ThingValue final : public SceneValue {
  public:
    explicit ThingValue(Animatable* thing) : SceneValue(thing) {}

    void Print(Printer& printer, bool nested) const override;
    [[nodiscard]] std::wstring ClassName() const override;
    [[nodiscard]] std::wstring SuperClassName() const override;
    std::optional<Value> FindProperty(const std::wstring& name) override;
    bool SetProperty(const std::wstring& name, const Value& value) override;
    void CollectPropertyNames(std::vector<std::wstring>& names) const override;
};

/// The value of a thing; undefined for null.
[[nodiscard]] Value WrapThing(Animatable* thing);
/// The thing of a value; null when it is no scene thing. Throws when it was deleted.
[[nodiscard]] Animatable* ThingOf(const Value& value);
/// The node of a value. Others raise: No "<function>" function for <value>.
[[nodiscard]] SceneNode& NodeOf(const wchar_t* function, const Value& value);
/// The result of a node's stack at the scene's time; null when it has none.
[[nodiscard]] ::Object* ResultOf(SceneNode& node);

/// What scripts call the class of a thing, and a superclass.
[[nodiscard]] std::wstring ScriptClassName(Animatable& thing);
[[nodiscard]] std::wstring SuperClassNameOf(SClass_ID superClass);

} // namespace simhost::script
