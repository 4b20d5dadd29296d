#pragma once
// What can be called or holds variables: functions, classes, structs, references, interfaces.
#include <functional>
#include <unordered_map>

#include "simhost/script/ast.h"
#include "simhost/script/heap.h"
#include "simhost/script/object.h"

namespace simhost::script {

class StructInstance;

/// The variables of one call, or of one top-level expression.
class FrameObject final : public Object, public Traceable {
  public:
    explicit FrameObject(size_t slotCount) : slots(slotCount) {
        share_.Set(slotCount * sizeof(Value));
    }
    ~FrameObject() override { ReleaseValues(std::move(slots)); }

    std::vector<Value> slots;
    std::shared_ptr<StructInstance> self; // of a member function's call

    [[nodiscard]] const Traceable* AsTraceable() const override { return this; }
    void Trace(Marker& marker) const override;
    void DropReferences(std::vector<Value>& garbage) override;
    void Print(Printer&, bool) const override {}
    [[nodiscard]] std::wstring ClassName() const override { return L"Frame"; }

  private:
    MemoryShare share_;
};
using FramePtr = std::shared_ptr<FrameObject>;

/// A function that a script defined.
class FunctionObject final : public Object, public Traceable {
  public:
    FunctionObject(std::shared_ptr<FunctionBody> body_, FramePtr top_,
                   std::shared_ptr<StructInstance> self_)
        : body(std::move(body_)), top(std::move(top_)), self(std::move(self_)) {}
    ~FunctionObject() override;

    const std::shared_ptr<FunctionBody> body;
    FramePtr top; // variables of the expression that defined it
    std::shared_ptr<StructInstance> self;

    [[nodiscard]] const Traceable* AsTraceable() const override { return this; }
    void Trace(Marker& marker) const override;
    void DropReferences(std::vector<Value>& garbage) override;
    void Print(Printer& printer, bool nested) const override;
    [[nodiscard]] std::wstring ClassName() const override;
    [[nodiscard]] bool Equals(const Object& other) const override;
    bool Call(Interpreter& interpreter, Arguments& arguments, Value& result) override;
};

using Native = std::function<Value(Interpreter&, Arguments&)>;

/// A function of the host.
class NativeFunction final : public Object {
  public:
    static constexpr int anyCount = -1;
    NativeFunction(std::wstring name, int least, int most, Native native, bool mapped = false)
        : name_(std::move(name)), least_(least), most_(most), native_(std::move(native)),
          mapped_(mapped) {}

    [[nodiscard]] const std::wstring& Name() const { return name_; }
    void Print(Printer& printer, bool nested) const override;
    [[nodiscard]] std::wstring ClassName() const override;
    bool Call(Interpreter& interpreter, Arguments& arguments, Value& result) override;

  private:
    std::wstring name_;
    int least_; // positional arguments
    int most_;  // anyCount: no bound
    Native native_;
    bool mapped_; // applies to each item of a collection that it gets as first argument
};

/// A class. Calling it makes an instance, `as` converts to it.
class ClassObject final : public Object {
  public:
    ClassObject(std::wstring name, std::wstring super)
        : name_(std::move(name)), super_(std::move(super)) {}

    std::function<Value(Interpreter&, Arguments&)> create;
    std::function<Value(Interpreter&, const Value&)> convert; // throws what cannot be converted

    [[nodiscard]] const std::wstring& Name() const { return name_; }
    /// Name of the superclass; empty at the top.
    [[nodiscard]] const std::wstring& Super() const { return super_; }
    void Print(Printer& printer, bool nested) const override;
    [[nodiscard]] std::wstring ClassName() const override;
    bool Call(Interpreter& interpreter, Arguments& arguments, Value& result) override;

  private:
    std::wstring name_;
    std::wstring super_;
};

class StructType final : public Object, public Traceable {
  public:
    StructType(std::shared_ptr<StructBody> body_, FramePtr top_)
        : body(std::move(body_)), top(std::move(top_)) {}
    ~StructType() override;

    const std::shared_ptr<StructBody> body;
    FramePtr top;

    /// Index of the member of that lower-case name; -1 when there is none. Events are none.
    [[nodiscard]] int Find(const std::wstring& name) const;

    [[nodiscard]] const Traceable* AsTraceable() const override { return this; }
    void Trace(Marker& marker) const override;
    void DropReferences(std::vector<Value>& garbage) override;
    void Print(Printer& printer, bool nested) const override;
    [[nodiscard]] std::wstring ClassName() const override { return L"StructDef"; }
    bool GetProperty(Interpreter&, const std::wstring& name, Value& result) override;
    bool Call(Interpreter& interpreter, Arguments& arguments, Value& result) override;
};

class StructInstance final : public Object, public Traceable {
  public:
    explicit StructInstance(std::shared_ptr<StructType> type);
    ~StructInstance() override { ReleaseValues(std::move(members_)); }

    [[nodiscard]] const StructType& Type() const { return *type_; }
    /// A member as code of the struct sees it: functions come bound to this instance.
    [[nodiscard]] Value Member(uint32_t index);
    void SetMember(uint32_t index, Value value) { members_[index] = std::move(value); }

    [[nodiscard]] const Traceable* AsTraceable() const override { return this; }
    void Trace(Marker& marker) const override;
    void DropReferences(std::vector<Value>& garbage) override;
    void Print(Printer& printer, bool nested) const override;
    [[nodiscard]] std::wstring ClassName() const override { return type_->body->name; }
    bool GetProperty(Interpreter&, const std::wstring& name, Value& result) override;
    bool SetProperty(Interpreter&, const std::wstring& name, const Value& value) override;

  private:
    std::shared_ptr<StructType> type_;
    std::vector<Value> members_; // functions: Unsupplied unless overwritten
    MemoryShare share_;
};

/// &x: something that can be read and written from elsewhere.
class ReferenceObject : public Object {
  public:
    virtual Value Read(Interpreter& interpreter) = 0;
    virtual void Write(Interpreter& interpreter, const Value& value) = 0;
    void Print(Printer& printer, bool nested) const override;
    [[nodiscard]] std::wstring ClassName() const override { return L"ValueRef"; }
};

/// A part of the host with named functions and properties, such as `systemTools`.
class InterfaceObject final : public Object {
  public:
    struct Property {
        std::function<Value(Interpreter&)> read;
        std::function<void(Interpreter&, const Value&)> write; // empty: read-only
    };
    explicit InterfaceObject(std::wstring name) : name_(std::move(name)) {}

    InterfaceObject& Function(std::wstring_view name, int least, int most, Native native);
    InterfaceObject& Add(std::wstring_view name, Property property);
    InterfaceObject& Constant(std::wstring_view name, Value value);

    void Print(Printer& printer, bool nested) const override;
    [[nodiscard]] std::wstring ClassName() const override { return L"Interface"; }
    bool GetProperty(Interpreter& interpreter, const std::wstring& name, Value& result) override;
    bool SetProperty(Interpreter&, const std::wstring& name, const Value& value) override;

  private:
    std::wstring name_;
    std::unordered_map<std::wstring, Property> properties_;
};

} // namespace simhost::script
