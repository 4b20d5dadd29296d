#pragma once
// Scene things as script values. A value holds the thing's handle, never a pointer: what was
// deleted meanwhile raises the host's error.
#include "simhost/scene/scene.h"
#include "simhost/script/object.h"

namespace simhost::script {

class SceneValue : public Object {
  public:
    explicit SceneValue(Animatable* thing) : handle_(Animatable::GetHandleByAnim(thing)) {}

    [[nodiscard]] AnimHandle Handle() const { return handle_; }
    [[nodiscard]] bool Exists() const { return Animatable::GetAnimByHandle(handle_) != nullptr; }
    /// Throws when the thing was deleted.
    [[nodiscard]] Animatable& Thing() const;
    [[nodiscard]] bool Equals(const Object& other) const override;

  private:
    AnimHandle handle_;
};

/// A node of the scene.
class NodeValue final : public SceneValue {
  public:
    explicit NodeValue(SceneNode* node) : SceneValue(node) {}
    [[nodiscard]] SceneNode& Node() const;

    void Print(Printer& printer, bool nested) const override;
    [[nodiscard]] std::wstring ClassName() const override;
    [[nodiscard]] std::wstring SuperClassName() const override;
    bool GetProperty(Interpreter&, const std::wstring& name, Value& result) override;
    bool SetProperty(Interpreter&, const std::wstring& name, const Value& value) override;
    bool Copy(Interpreter&, const std::wstring& how, Arguments&, Value& result) override;
    void PropertyNames(std::vector<std::wstring>& names) const override;
};

/// A material, map, object, modifier, renderer or sub-object.
class ThingValue final : public SceneValue {
  public:
    explicit ThingValue(Animatable* thing) : SceneValue(thing) {}

    void Print(Printer& printer, bool nested) const override;
    [[nodiscard]] std::wstring ClassName() const override;
    [[nodiscard]] std::wstring SuperClassName() const override;
    bool GetProperty(Interpreter&, const std::wstring& name, Value& result) override;
    bool SetProperty(Interpreter&, const std::wstring& name, const Value& value) override;
    bool GetIndex(Interpreter&, const Value& index, Value& result) override;
    bool SetIndex(Interpreter&, const Value& index, const Value& value) override;
    bool Copy(Interpreter&, const std::wstring& how, Arguments&, Value& result) override;
    void PropertyNames(std::vector<std::wstring>& names) const override;
};

/// The value of a thing; undefined for null.
[[nodiscard]] Value WrapThing(Animatable* thing);
/// The thing of a value; null when it is no scene thing. Throws when it was deleted.
[[nodiscard]] Animatable* ThingOf(const Value& value);
/// The node of a value. Others raise: No "<function>" function for <value>.
[[nodiscard]] SceneNode& NodeOf(const wchar_t* function, const Value& value);

/// What scripts call the class of a thing, and its superclass.
[[nodiscard]] std::wstring ScriptClassName(Animatable& thing);
[[nodiscard]] std::wstring ScriptSuperClassName(Animatable& thing);
[[nodiscard]] std::wstring SuperClassNameOf(SClass_ID superClass);

// Parameters by name, in any case. False: the thing has none of that name.
bool GetThingProperty(Entity& entity, const std::wstring& name, Value& result);
bool SetThingProperty(Entity& entity, const std::wstring& name, const Value& value);
void ThingPropertyNames(const Entity& entity, std::vector<std::wstring>& names);

} // namespace simhost::script
