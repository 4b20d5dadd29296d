// Struct definitions and their instances.
#include "simhost/script/callables.h"
#include "simhost/script/convert.h"
#include "simhost/script/evaluator.h"
#include "simhost/script/interpreter.h"
#include "simhost/script/raise.h"
#include "simhost/script/text.h"

namespace simhost::script {

StructType::~StructType() {
    std::vector<Value> references;
    references.emplace_back(std::move(top));
    ReleaseValues(std::move(references));
}

int StructType::Find(const std::wstring& name) const {
    for (size_t i = 0; i < body->members.size(); ++i) {
        const StructMember& member = body->members[i];
        if (!member.isEvent && EqualNoCase(member.name, name))
            return static_cast<int>(i);
    }
    return -1;
}

void StructType::Trace(Marker& marker) const {
    marker.Visit(top.get());
}

void StructType::DropReferences(std::vector<Value>& garbage) {
    garbage.emplace_back(std::move(top));
}

void StructType::Print(Printer& printer, bool) const {
    printer.Put(L"#Struct:" + body->name + L"(");
    bool first = true;
    for (const StructMember& member : body->members) {
        if (member.isEvent)
            continue;
        printer.Put(first ? L"" : L"; ");
        first = false;
        printer.Put(member.name + (member.function ? L":<fn>" : L":<data>"));
    }
    printer.Put(L")");
}

// A member function can be called without an instance as long as it uses no member.
bool StructType::GetProperty(Interpreter&, const std::wstring& name, Value& result) {
    const int index = Find(name);
    if (index < 0)
        return false;
    const StructMember& member = body->members[static_cast<size_t>(index)];
    if (!member.function)
        return false;
    result = {std::make_shared<FunctionObject>(member.function, top, nullptr)};
    return true;
}

bool StructType::Call(Interpreter& interpreter, Arguments& arguments, Value& result) {
    result =
        interpreter.Construct(std::static_pointer_cast<StructType>(shared_from_this()), arguments);
    return true;
}

Value Interpreter::Construct(const std::shared_ptr<StructType>& type, Arguments& arguments) {
    auto instance = std::make_shared<StructInstance>(type);
    const std::vector<StructMember>& members = type->body->members;
    std::vector<bool> given(members.size());
    size_t next = 0;
    for (const Value& argument : arguments.items) {
        while (next < members.size() && members[next].function)
            ++next;
        if (next == members.size())
            RaiseArgumentCount(type->body->name, next, arguments.items.size());
        instance->SetMember(static_cast<uint32_t>(next), argument);
        given[next++] = true;
    }
    for (const auto& [name, value] : arguments.keywords) {
        const int index = type->Find(name);
        if (index < 0)
            RaiseUnknownProperty(name, {type});
        instance->SetMember(static_cast<uint32_t>(index), value);
        given[static_cast<size_t>(index)] = true;
    }
    for (size_t i = 0; i < members.size(); ++i) {
        if (given[i] || !members[i].value)
            continue;
        const auto frame = std::make_shared<FrameObject>(members[i].slotCount);
        frame->self = instance;
        instance->SetMember(static_cast<uint32_t>(i),
                            Evaluator(*this, *frame, type->top).Run(*members[i].value));
    }
    for (const StructMember& member : members) {
        if (member.isEvent && member.name == L"create") {
            Arguments none;
            FunctionObject handler(member.function, type->top, instance);
            CallFunction(handler, none);
        }
    }
    return {instance};
}

StructInstance::StructInstance(std::shared_ptr<StructType> type)
    : type_(std::move(type)), members_(type_->body->members.size()) {
    share_.Set(members_.size() * sizeof(Value));
    for (size_t i = 0; i < members_.size(); ++i) {
        if (type_->body->members[i].function)
            members_[i] = Value::Unsupplied();
    }
}

Value StructInstance::Member(uint32_t index) {
    const StructMember& member = type_->body->members[index];
    if (!member.function || !members_[index].Is(Type::Unsupplied))
        return members_[index];
    return {std::make_shared<FunctionObject>(
        member.function, type_->top, std::static_pointer_cast<StructInstance>(shared_from_this()))};
}

void StructInstance::Trace(Marker& marker) const {
    marker.Visit(type_.get());
    for (const Value& member : members_)
        marker.Visit(member);
}

void StructInstance::DropReferences(std::vector<Value>& garbage) {
    for (Value& member : members_)
        garbage.push_back(std::exchange(member, Value()));
}

void StructInstance::Print(Printer& printer, bool) const {
    printer.Put(L"(" + type_->body->name);
    for (size_t i = 0; i < members_.size(); ++i) {
        const StructMember& member = type_->body->members[i];
        if (member.function)
            continue;
        printer.Put(L" " + member.name + L":");
        printer.Put(members_[i], true);
    }
    printer.Put(L")");
}

bool StructInstance::GetProperty(Interpreter&, const std::wstring& name, Value& result) {
    const int index = type_->Find(name);
    if (index < 0 || type_->body->members[static_cast<size_t>(index)].isPrivate)
        return false;
    result = Member(static_cast<uint32_t>(index));
    return true;
}

bool StructInstance::SetProperty(Interpreter&, const std::wstring& name, const Value& value) {
    const int index = type_->Find(name);
    if (index < 0 || type_->body->members[static_cast<size_t>(index)].isPrivate)
        return false;
    SetMember(static_cast<uint32_t>(index), value);
    return true;
}

} // namespace simhost::script
