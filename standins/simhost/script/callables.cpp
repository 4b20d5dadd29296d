#include "simhost/script/callables.h"

#include <algorithm>

#include "simhost/script/convert.h"
#include "simhost/script/interpreter.h"
#include "simhost/script/raise.h"
#include "simhost/script/text.h"

namespace simhost::script {

void FunctionObject::Print(Printer& printer, bool) const {
    printer.Append(body_->name + L"()");
}

std::optional<Value> FunctionObject::Call(Interpreter& interpreter, Arguments& arguments) {
    const Interpreter::CallLevel level(interpreter);
    const auto body = body_; // the function may be replaced while it runs
    const auto frame = std::make_shared<Frame>(interpreter, body->slotCount);
    frame->isCall = true;
    frame->top = home_.lock();
    frame->self = self_;
    PassArguments(*frame, arguments);
    try {
        return body->body->Run(*frame);
    } catch (const JumpSignal& signal) {
        if (signal.kind != JumpKind::Return)
            RaiseRuntime(L"Runtime error: exit or continue outside of a loop");
        return signal.value;
    }
}

void FunctionObject::PassArguments(Frame& frame, const Arguments& arguments) const {
    const auto& parameters = body_->parameters;
    const auto wanted = static_cast<size_t>(
        std::count_if(parameters.begin(), parameters.end(),
                      [](const Parameter& parameter) { return parameter.keyword.empty(); }));
    if (arguments.items.size() != wanted)
        RaiseArgumentCount(body_->name, wanted, arguments.items.size());
    size_t usedKeywords = 0;
    size_t next = 0;
    for (const Parameter& parameter : parameters) {
        Value value = Value::Unsupplied();
        if (parameter.keyword.empty()) {
            value = arguments.items[next++];
        } else if (const Value* given = arguments.FindKeyword(parameter.keyword)) {
            value = *given;
            ++usedKeywords;
        } else if (parameter.value) {
            value = parameter.value->Run(frame);
        }
        frame.slots[parameter.slot] = std::move(value);
    }
    if (usedKeywords < arguments.keywords.size())
        RaiseRuntime(L"Runtime error: " + body_->name + L" got an unexpected keyword argument");
}

void NativeFunction::Print(Printer& printer, bool) const {
    printer.Append(name_ + L"()");
}

std::wstring NativeFunction::ClassName() const {
    return mapped_ ? L"MappedPrimitive" : L"Primitive";
}

std::optional<Value> NativeFunction::Call(Interpreter& interpreter, Arguments& arguments) {
    const size_t got = arguments.items.size();
    if (got < least_ || got > most_)
        RaiseArgumentCount(name_, got < least_ ? least_ : most_, got);
    if (!mapped_ || got == 0 || !script::IsCollection(arguments.items[0]))
        return native_(interpreter, arguments);
    for (const Value& item : interpreter.CollectItems(arguments.items[0])) {
        arguments.items[0] = item;
        Call(interpreter, arguments);
    }
    return Value::Ok();
}

void ClassObject::Print(Printer& printer, bool) const {
    printer.Append(name_);
}

std::wstring ClassObject::ClassName() const {
    return super_.empty() ? L"MAXClass" : super_;
}

std::optional<Value> ClassObject::Call(Interpreter& interpreter, Arguments& arguments) {
    if (!create)
        RaiseRuntime(L"Class not creatable: " + name_);
    return create(interpreter, arguments);
}

void StructType::Print(Printer& printer, bool) const {
    printer.Append(L"#Struct:" + body_->name);
}

std::optional<Value> StructType::Call(Interpreter& interpreter, Arguments& arguments) {
    if (!arguments.items.empty() || !arguments.keywords.empty()) {
        RaiseRuntime(L"Runtime error: members of a new " + body_->name +
                     L" can only be set behind its making");
    }
    const auto made =
        std::make_shared<StructInstance>(std::static_pointer_cast<StructType>(shared_from_this()));
    for (size_t i = 0; i < body_->members.size(); ++i) {
        const StructBody::Member& member = body_->members[i];
        if (member.function && !member.isFunction) {
            made->members[i] =
                *FunctionObject(member.function, home_, made).Call(interpreter, arguments);
        }
    }
    return Value(made);
}

StructInstance::StructInstance(std::shared_ptr<StructType> type)
    : members(type->Body().members.size()), type_(std::move(type)) {
    share_.Set(members.size() * sizeof(Value));
}

size_t StructInstance::FindMember(const std::wstring& name) const {
    const auto& all = type_->Body().members;
    const auto found = std::find_if(all.begin(), all.end(),
                                    [&](const auto& m) { return EqualNoCase(m.name, name); });
    return static_cast<size_t>(found - all.begin());
}

Value StructInstance::ReadMember(size_t index) {
    const StructBody::Member& member = type_->Body().members[index];
    if (!member.isFunction)
        return members[index];
    return {std::make_shared<FunctionObject>(
        member.function, type_->Home(),
        std::static_pointer_cast<StructInstance>(shared_from_this()))};
}

void StructInstance::Print(Printer& printer, bool) const {
    printer.Append(L"(" + type_->Body().name);
    for (size_t i = 0; i < members.size(); ++i) {
        const StructBody::Member& member = type_->Body().members[i];
        if (member.isFunction)
            continue;
        printer.Append(L" " + member.name + L":");
        printer.Append(members[i], true);
    }
    printer.Append(L")");
}

std::optional<Value> StructInstance::FindProperty(const std::wstring& name) {
    const size_t index = FindMember(name);
    return index < members.size() ? std::optional(ReadMember(index)) : std::nullopt;
}

bool StructInstance::SetProperty(const std::wstring& name, const Value& value) {
    const size_t index = FindMember(name);
    if (index == members.size() || type_->Body().members[index].isFunction)
        return false;
    members[index] = value;
    return true;
}

void InterfaceObject::DefineFunction(std::wstring_view name, size_t least, size_t most,
                                     Native native) {
    DefineConstant(name, {std::make_shared<NativeFunction>(std::wstring(name), least, most,
                                                           std::move(native))});
}

void InterfaceObject::DefineProperty(std::wstring_view name, Property property) {
    properties_[Lower(name)] = std::move(property);
}

void InterfaceObject::DefineConstant(std::wstring_view name, Value value) {
    DefineProperty(name, {[value = std::move(value)] { return value; }, {}});
}

void InterfaceObject::Print(Printer& printer, bool) const {
    printer.Append(L"<Interface:" + name_ + L">");
}

std::optional<Value> InterfaceObject::FindProperty(const std::wstring& name) {
    const auto found = properties_.find(name);
    return found == properties_.end() ? std::nullopt : std::optional(found->second.read());
}

bool InterfaceObject::SetProperty(const std::wstring& name, const Value& value) {
    const auto found = properties_.find(name);
    if (found == properties_.end())
        return false;
    if (!found->second.write)
        RaiseRuntime(L"Property is read-only: " + name);
    found->second.write(value);
    return true;
}

} // namespace simhost::script
