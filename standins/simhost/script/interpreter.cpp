#include "simhost/script/interpreter.h"

#include "simhost/script/builtins.h"
#include "simhost/script/convert.h"
#include "simhost/script/parser.h"
#include "simhost/script/raise.h"
#include "simhost/script/text.h"

namespace simhost::script {

Interpreter::Interpreter(InterpreterOptions options) : options_(std::move(options)) {
    RegisterBuiltins(*this);
}

Interpreter::~Interpreter() {
    globals_.Clear();
    Container::EmptyAllOf(this);
}

Value Interpreter::Run(std::wstring text) {
    const StackGuard stack;
    stack_ = &stack;
    steps_ = 0;
    callDepth_ = 0;
    caught.clear();
    MemoryMeter::SetLimit(options_.limits.liveBytes);
    Container::engine = this;
    return RunNested(std::move(text));
}

Value Interpreter::RunNested(std::wstring text) {
    try {
        return RunExpressions(std::move(text));
    } catch (ScriptError& error) {
        error.SetPositionIfUnknown(position);
        throw;
    } catch (const JumpSignal& signal) {
        if (signal.kind == JumpKind::Return)
            return signal.value;
        throw ScriptError(ScriptError::Kind::Runtime,
                          L"Runtime error: exit or continue outside of a loop", position);
    } catch (const std::bad_alloc&) {
        throw ScriptError(ScriptError::Kind::Limit, L"Out of script memory", position);
    } catch (...) { // scene things may throw anything
        throw ScriptError(ScriptError::Kind::Runtime, L"Runtime error: System exception", position);
    }
}

// Each expression is compiled when the ones before it have run: a later one sees their globals,
// and one that does not compile does not undo them.
Value Interpreter::RunExpressions(std::wstring text) {
    const TokenList tokens(std::move(text));
    Parser parser(tokens, globals_);
    Value result;
    while (const ExprPtr expr = parser.Next())
        result = expr->Run(*std::make_shared<Frame>(*this, parser.SlotCount()));
    return result;
}

std::optional<ScriptError> Interpreter::Check(std::wstring text) {
    try {
        const TokenList tokens(std::move(text));
        Parser parser(tokens, globals_);
        while (parser.Next()) {
        }
        return std::nullopt;
    } catch (const ScriptError& error) {
        return error;
    }
}

void Interpreter::Charge(uint64_t steps) {
    steps_ += steps;
    if (steps_ > options_.limits.steps)
        throw ScriptError(ScriptError::Kind::Limit, L"The script runs too long");
}

void Interpreter::CheckStack() const {
    if (stack_ && stack_->Exhausted())
        RaiseRuntime(L"Runtime error: Stack overflow");
}

Interpreter::CallLevel::CallLevel(Interpreter& interpreter) : interpreter_(interpreter) {
    if (++interpreter.callDepth_ > interpreter.options_.limits.callDepth) {
        --interpreter.callDepth_;
        RaiseRuntime(L"Runtime error: Stack overflow");
    }
}

void Interpreter::Print(std::wstring_view text) {
    if (options_.listener)
        options_.listener(text);
}

void Interpreter::Define(std::wstring_view name, size_t least, size_t most, Native native) {
    globals_.Declare(name).value = {
        std::make_shared<NativeFunction>(std::wstring(name), least, most, std::move(native))};
}

void Interpreter::DefineMapped(std::wstring_view name, size_t least, size_t most, Native native) {
    globals_.Declare(name).value = {
        std::make_shared<NativeFunction>(std::wstring(name), least, most, std::move(native), true)};
}

void Interpreter::DefineVariable(std::wstring_view name, std::function<Value()> read) {
    globals_.Declare(name).read = std::move(read);
}

InterfaceObject& Interpreter::DefineInterface(std::wstring_view name) {
    auto made = std::make_shared<InterfaceObject>(std::wstring(name));
    globals_.Declare(name).value = {made};
    return *made;
}

ClassObject& Interpreter::DefineClass(std::wstring_view name, std::wstring_view super) {
    std::shared_ptr<ClassObject>& entry = classes_[Lower(name)];
    if (!entry) {
        entry = std::make_shared<ClassObject>(std::wstring(name), std::wstring(super));
        Global& global = globals_.Declare(name);
        if (global.value.IsUndefined() && !global.read)
            global.value = {entry};
    }
    return *entry;
}

std::shared_ptr<ClassObject> Interpreter::FindClass(std::wstring_view name) const {
    const auto found = classes_.find(Lower(name));
    return found == classes_.end() ? nullptr : found->second;
}

std::shared_ptr<ClassObject> Interpreter::ClassOf(const Value& value) {
    const std::wstring name = ClassNameOf(value);
    if (!FindClass(name))
        DefineClass(name, value.AsObject() ? value.AsObject()->SuperClassName() : L"Value");
    return FindClass(name);
}

void Interpreter::SetGlobal(Global& global, const Value& value) {
    if (global.read)
        RaiseRuntime(L"Runtime error: Cannot assign to read-only variable: " + global.name);
    global.home = value.AsObject() ? value.AsObject()->Home() : nullptr;
    global.value = value;
}

Value Interpreter::Call(const Value& callee, Arguments& arguments) {
    Charge(1);
    const ObjectRef keptAlive = callee.AsObject();
    auto result = keptAlive ? keptAlive->Call(*this, arguments) : std::nullopt;
    if (!result)
        RaiseNotCallable(callee);
    return std::move(*result);
}

Value Interpreter::ReadProperty(const Value& object, const std::wstring& name) {
    Charge(1);
    auto result = object.AsObject() ? object.AsObject()->FindProperty(Lower(name)) : std::nullopt;
    if (!result)
        RaiseUnknownProperty(name, object);
    return std::move(*result);
}

void Interpreter::SetProperty(const Value& object, const std::wstring& name, const Value& value) {
    Charge(1);
    if (!object.AsObject() || !object.AsObject()->SetProperty(Lower(name), value))
        RaiseUnknownProperty(name, object);
}

Value Interpreter::ReadElement(const Value& object, const Value& index) {
    auto result = object.AsObject() ? object.AsObject()->FindElement(index) : std::nullopt;
    if (!result)
        RaiseNoFunction(L"get", object);
    return std::move(*result);
}

void Interpreter::SetElement(const Value& object, const Value& index, const Value& value) {
    if (!object.AsObject() || !object.AsObject()->SetElement(index, value))
        RaiseNoFunction(L"put", object);
}

Value Interpreter::Convert(const Value& value, const Value& toClass) {
    const auto* target = toClass.As<ClassObject>();
    if (!target || !target->convert)
        RaiseConversion(value, TextOf(toClass));
    return target->convert(*this, value);
}

void Interpreter::ForEach(const Value& collection, const std::function<bool(const Value&)>& each) {
    if (!IsCollection(collection))
        RaiseNoFunction(L"map", collection);
    const ObjectRef keptAlive = collection.AsObject();
    for (size_t i = 0; const auto item = keptAlive->FindItem(i); ++i) {
        if (!each(*item))
            return;
    }
}

std::vector<Value> Interpreter::CollectItems(const Value& collection) {
    std::vector<Value> items;
    ForEach(collection, [&](const Value& item) {
        Charge(1);
        items.push_back(item);
        return true;
    });
    return items;
}

} // namespace simhost::script
