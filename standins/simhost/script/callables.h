#pragma once
// What can be called: functions, classes, structs; and the host's interfaces.
#include <functional>
#include <unordered_map>

#include "simhost/script/ast.h"
#include "simhost/script/heap.h"

namespace simhost::script {

class StructInstance;

/// The variables of one call, or of one top-level expression.
struct Frame : std::enable_shared_from_this<Frame> {
    Frame(Interpreter& in, size_t slotCount) : interpreter(in), slots(slotCount) {
        share.Set(slotCount * sizeof(Value));
    }

    /// Locals that begin their life.
    void Reset(const std::vector<uint32_t>& locals) {
        for (const uint32_t slot : locals)
            slots[slot] = Value();
    }

    Interpreter& interpreter;
    std::vector<Value> slots;
    bool isCall = false;
    std::shared_ptr<Frame> top;           // of a call: what the function was defined among
    std::shared_ptr<StructInstance> self; // of a member function's call
    MemoryShare share;
};

/// A function that a script defined. It knows the variables that it was defined among, but keeps
/// them only while it is a global variable's value (see Global::home): they hold it, in turn.
class FunctionObject final : public Object {
  public:
    FunctionObject(std::shared_ptr<FunctionBody> body, std::weak_ptr<Frame> home,
                   std::shared_ptr<StructInstance> self)
        : body_(std::move(body)), home_(std::move(home)), self_(std::move(self)) {}

    void Print(Printer& printer, bool nested) const override;
    [[nodiscard]] std::wstring ClassName() const override { return L"MAXScriptFunction"; }
    std::optional<Value> Call(Interpreter& interpreter, Arguments& arguments) override;
    [[nodiscard]] std::shared_ptr<Frame> Home() const override { return home_.lock(); }

  private:
    void PassArguments(Frame& frame, const Arguments& arguments) const;

    std::shared_ptr<FunctionBody> body_;
    std::weak_ptr<Frame> home_;
    std::shared_ptr<StructInstance> self_;
};

using Native = std::function<Value(Interpreter&, Arguments&)>;

/// A function of the host.
class NativeFunction final : public Object {
  public:
    static constexpr size_t anyCount = SIZE_MAX;
    /// `least`, `most`: positional arguments. `mapped`: applies to each item of a collection that
    /// it gets as first argument.
    NativeFunction(std::wstring name, size_t least, size_t most, Native native, bool mapped = false)
        : name_(std::move(name)), least_(least), most_(most), native_(std::move(native)),
          mapped_(mapped) {}

    void Print(Printer& printer, bool nested) const override;
    [[nodiscard]] std::wstring ClassName() const override;
    std::optional<Value> Call(Interpreter& interpreter, Arguments& arguments) override;

  private:
    std::wstring name_;
    size_t least_;
    size_t most_;
    Native native_;
    bool mapped_;
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
    std::optional<Value> Call(Interpreter& interpreter, Arguments& arguments) override;

  private:
    std::wstring name_;
    std::wstring super_;
};

/// A struct. Calling it makes an instance with the members' defaults.
class StructType final : public Object {
  public:
    StructType(std::shared_ptr<StructBody> body, std::weak_ptr<Frame> home)
        : body_(std::move(body)), home_(std::move(home)) {}
    [[nodiscard]] const StructBody& Body() const { return *body_; }

    void Print(Printer& printer, bool nested) const override;
    [[nodiscard]] std::wstring ClassName() const override { return L"StructDef"; }
    std::optional<Value> Call(Interpreter& interpreter, Arguments& arguments) override;
    [[nodiscard]] std::shared_ptr<Frame> Home() const override { return home_.lock(); }

  private:
    std::shared_ptr<StructBody> body_;
    std::weak_ptr<Frame> home_;
};

class StructInstance final : public Container {
  public:
    explicit StructInstance(std::shared_ptr<StructType> type);
    ~StructInstance() override { Release(std::move(members)); }

    /// A member; functions come bound to this instance.
    [[nodiscard]] Value ReadMember(size_t index);
    std::vector<Value> members; // functions: undefined

    void Print(Printer& printer, bool nested) const override;
    [[nodiscard]] std::wstring ClassName() const override { return type_->Body().name; }
    std::optional<Value> FindProperty(const std::wstring& name) override;
    bool SetProperty(const std::wstring& name, const Value& value) override;
    [[nodiscard]] std::shared_ptr<Frame> Home() const override { return type_->Home(); }

  private:
    std::vector<Value> TakeValues() override { return std::exchange(members, {}); }
    [[nodiscard]] size_t FindMember(const std::wstring& name) const;

    std::shared_ptr<StructType> type_;
    MemoryShare share_;
};

/// A part of the host with named functions and properties, such as `systemTools`.
class InterfaceObject final : public Object {
  public:
    struct Property {
        std::function<Value()> read;
        std::function<void(const Value&)> write; // empty: read-only
    };
    explicit InterfaceObject(std::wstring name) : name_(std::move(name)) {}

    void DefineFunction(std::wstring_view name, size_t least, size_t most, Native native);
    void DefineProperty(std::wstring_view name, Property property);
    void DefineConstant(std::wstring_view name, Value value);

    void Print(Printer& printer, bool nested) const override;
    [[nodiscard]] std::wstring ClassName() const override { return L"Interface"; }
    std::optional<Value> FindProperty(const std::wstring& name) override;
    bool SetProperty(const std::wstring& name, const Value& value) override;

  private:
    std::wstring name_;
    std::unordered_map<std::wstring, Property> properties_; // by lower-case name
};

} // namespace simhost::script
