#include "simhost/script/interpreter.h"

#include "simhost/script/builtins.h"
#include "simhost/script/convert.h"
#include "simhost/script/evaluator.h"
#include "simhost/script/lexer.h"
#include "simhost/script/parser.h"
#include "simhost/script/raise.h"
#include "simhost/script/scope.h"
#include "simhost/script/text.h"

namespace simhost::script {
namespace {

constexpr int deepestRun = 40; // scripts that run scripts

class Counted {
  public:
    explicit Counted(int& count) : count_(count) { ++count_; }
    ~Counted() { --count_; }
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;

  private:
    int& count_;
};

} // namespace

Interpreter::Interpreter(InterpreterOptions options) : options_(std::move(options)) {
    RegisterBuiltins(*this);
}

Interpreter::~Interpreter() {
    for (const auto& [name, global] : globals_.All())
        global->value = Value();
    ClearUnreachable({});
}

Value Interpreter::Run(std::wstring text) {
    if (runDepth_ > 0)
        return RunNested(std::move(text));
    const StackGuard stack;
    stack_ = &stack;
    steps_ = 0;
    callDepth_ = 0;
    caught.clear();
    jump = {};
    MemoryMeter::SetLimit(options_.limits.liveBytes);
    struct Cleanup {
        Interpreter& interpreter;
        ~Cleanup() {
            interpreter.stack_ = nullptr;
            interpreter.jump = {};
            interpreter.caught.clear();
        }
    } cleanup{*this};
    try {
        Value result = RunNested(std::move(text));
        CollectGarbage(result);
        return result;
    } catch (...) {
        CollectGarbage({});
        throw;
    }
}

Value Interpreter::RunNested(std::wstring text) {
    const Counted depth(runDepth_);
    if (runDepth_ > deepestRun)
        RaiseRuntime(L"Runtime error: scripts run each other too deeply");
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
    Parser parser(tokens, frameRate_);
    Value result;
    while (const ExprPtr expr = parser.Next()) {
        const uint32_t slots = BindScopes(*expr, globals_);
        const auto frame = std::make_shared<FrameObject>(slots);
        result = Evaluator(*this, *frame, frame).Run(*expr);
        if (jump.pending) {
            result = jump.value;
            jump = {};
        }
    }
    return result;
}

void Interpreter::CollectGarbage(const Value& result) {
    std::vector<Value> roots;
    roots.push_back(result);
    for (const auto& [name, global] : globals_.All())
        roots.push_back(global->value);
    ClearUnreachable(roots);
}

void Interpreter::OutOfSteps() {
    throw ScriptError(ScriptError::Kind::Limit, L"The script runs too long");
}

void Interpreter::CheckStack() const {
    if (stack_ && stack_->Exhausted())
        RaiseRuntime(L"Runtime error: Stack overflow");
}

std::wstring Interpreter::CurrentException() const {
    return caught.empty() ? std::wstring() : L"-- " + caught.back().Message();
}

void Interpreter::Print(std::wstring_view text) {
    if (options_.listener)
        options_.listener(text);
}

void Interpreter::Define(std::wstring_view name, int least, int most, Native native) {
    DefineConstant(name, {std::make_shared<NativeFunction>(std::wstring(name), least, most,
                                                           std::move(native))});
}

void Interpreter::DefineMapped(std::wstring_view name, int least, int most, Native native) {
    DefineConstant(name, {std::make_shared<NativeFunction>(std::wstring(name), least, most,
                                                           std::move(native), true)});
}

void Interpreter::DefineConstant(std::wstring_view name, Value value) {
    globals_.Declare(name).value = std::move(value);
}

void Interpreter::DefineVariable(std::wstring_view name, std::function<Value(Interpreter&)> read,
                                 std::function<void(Interpreter&, const Value&)> write) {
    Global& global = globals_.Declare(name);
    global.read = std::move(read);
    global.write = std::move(write);
}

InterfaceObject& Interpreter::DefineInterface(std::wstring_view name) {
    auto made = std::make_shared<InterfaceObject>(std::wstring(name));
    DefineConstant(name, {made});
    return *made;
}

std::shared_ptr<ClassObject> Interpreter::DefineClass(std::wstring_view name,
                                                      std::wstring_view super) {
    std::shared_ptr<ClassObject>& entry = classes_[Lower(name)];
    if (!entry) {
        entry = std::make_shared<ClassObject>(std::wstring(name), std::wstring(super));
        Global& global = globals_.Declare(name);
        if (global.value.IsUndefined() && !global.read)
            global.value = {entry};
    }
    return entry;
}

std::shared_ptr<ClassObject> Interpreter::FindClass(std::wstring_view name) const {
    const auto found = classes_.find(Lower(name));
    return found == classes_.end() ? nullptr : found->second;
}

std::shared_ptr<ClassObject> Interpreter::ClassOf(const Value& value) {
    const std::wstring name = ClassNameOf(value);
    if (auto known = FindClass(name))
        return known;
    return DefineClass(name, value.AsObject() ? value.AsObject()->SuperClassName() : L"Value");
}

Value Interpreter::ReadGlobal(const Global& global) {
    return global.read ? global.read(*this) : global.value;
}

void Interpreter::WriteGlobal(Global& global, const Value& value) {
    if (!global.read) {
        global.value = value;
        return;
    }
    if (!global.write)
        RaiseRuntime(L"Runtime error: Cannot assign to read-only variable: " + global.name);
    global.write(*this, value);
}

Value Interpreter::ResolvePath(const std::wstring& pattern) {
    return paths ? paths(*this, pattern) : Value();
}

Value Interpreter::Call(const Value& callee, Arguments& arguments) {
    Charge(1);
    if (!callee.AsObject())
        RaiseNotCallable(callee);
    const ObjectRef keptAlive = callee.AsObject();
    Value result;
    if (!keptAlive->Call(*this, arguments, result))
        RaiseNotCallable(callee);
    return result;
}

Value Interpreter::CallFunction(FunctionObject& function, Arguments& arguments) {
    const Counted depth(callDepth_);
    if (callDepth_ > options_.limits.callDepth)
        RaiseRuntime(L"Runtime error: Stack overflow");
    CheckStack();
    const FunctionBody& body = *function.body;
    const auto frame = std::make_shared<FrameObject>(body.slotCount);
    frame->self = function.self;
    Evaluator evaluator(*this, *frame, function.top);

    size_t wanted = 0;
    for (const Parameter& parameter : body.parameters)
        wanted += parameter.keyword ? 0 : 1;
    if (arguments.items.size() != wanted)
        RaiseArgumentCount(body.name, wanted, arguments.items.size());
    size_t used = 0;
    size_t next = 0;
    for (const Parameter& parameter : body.parameters) {
        Value& slot = frame->slots[parameter.slot];
        if (!parameter.keyword) {
            slot = arguments.items[next++];
        } else if (const Value* given = arguments.Keyword(Lower(parameter.name))) {
            slot = *given;
            ++used;
        } else {
            Value value = parameter.value ? evaluator.Run(*parameter.value) : Value::Unsupplied();
            frame->slots[parameter.slot] = std::move(value);
        }
    }
    if (used < arguments.keywords.size())
        RaiseRuntime(L"Runtime error: " + body.name + L" got an unexpected keyword argument");
    try {
        Value result = evaluator.Run(*body.body);
        if (jump.pending) {
            result = jump.value;
            jump = {};
        }
        return result;
    } catch (const JumpSignal& signal) {
        if (signal.kind != JumpKind::Return)
            RaiseRuntime(L"Runtime error: exit or continue outside of a loop");
        return signal.value;
    }
}

Value Interpreter::GetProperty(const Value& object, const std::wstring& name) {
    Charge(1);
    Value result;
    if (!object.AsObject() || !object.AsObject()->GetProperty(*this, Lower(name), result))
        RaiseUnknownProperty(name, object);
    return result;
}

void Interpreter::SetProperty(const Value& object, const std::wstring& name, const Value& value) {
    Charge(1);
    if (!object.AsObject() || !object.AsObject()->SetProperty(*this, Lower(name), value))
        RaiseUnknownProperty(name, object);
}

Value Interpreter::GetIndex(const Value& object, const Value& index) {
    Value result;
    if (!object.AsObject() || !object.AsObject()->GetIndex(*this, index, result))
        RaiseNoFunction(L"get", object);
    return result;
}

void Interpreter::SetIndex(const Value& object, const Value& index, const Value& value) {
    if (!object.AsObject() || !object.AsObject()->SetIndex(*this, index, value))
        RaiseNoFunction(L"put", object);
}

Value Interpreter::Convert(const Value& value, const Value& toClass) {
    const auto* target = toClass.As<ClassObject>();
    if (!target || !target->convert)
        RaiseConversion(value, TextOf(toClass));
    return target->convert(*this, value);
}

void Interpreter::ForEach(const Value& collection, const std::function<bool(const Value&)>& each) {
    if (!collection.AsObject() || !collection.AsObject()->IsCollection())
        RaiseNoFunction(L"map", collection);
    const ObjectRef keptAlive = collection.AsObject();
    Value item;
    for (size_t i = 0; keptAlive->Item(*this, i, item); ++i) {
        if (!each(item))
            return;
    }
}

std::vector<Value> Interpreter::Items(const Value& collection) {
    std::vector<Value> items;
    ForEach(collection, [&](const Value& item) {
        Charge(1);
        items.push_back(item);
        return true;
    });
    return items;
}

} // namespace simhost::script
