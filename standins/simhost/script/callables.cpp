#include "simhost/script/callables.h"

#include "simhost/script/convert.h"
#include "simhost/script/interpreter.h"
#include "simhost/script/raise.h"
#include "simhost/script/text.h"

namespace simhost::script {

void FrameObject::Trace(Marker& marker) const {
    for (const Value& value : slots)
        marker.Visit(value);
    marker.Visit(self.get());
}

void FrameObject::DropReferences(std::vector<Value>& garbage) {
    for (Value& value : slots)
        garbage.push_back(std::exchange(value, Value()));
    garbage.emplace_back(std::move(self));
}

FunctionObject::~FunctionObject() {
    std::vector<Value> references;
    references.reserve(2);
    DropReferences(references);
    ReleaseValues(std::move(references));
}

void FunctionObject::Trace(Marker& marker) const {
    marker.Visit(top.get());
    marker.Visit(self.get());
}

void FunctionObject::DropReferences(std::vector<Value>& garbage) {
    garbage.emplace_back(std::move(top));
    garbage.emplace_back(std::move(self));
}

void FunctionObject::Print(Printer& printer, bool) const {
    printer.Put(body->name + L"()");
}

std::wstring FunctionObject::ClassName() const {
    return body->mapped ? L"MappedFunction" : L"MAXScriptFunction";
}

bool FunctionObject::Equals(const Object& other) const {
    const auto* function = dynamic_cast<const FunctionObject*>(&other);
    return function && function->body == body && function->self == self;
}

bool FunctionObject::Call(Interpreter& interpreter, Arguments& arguments, Value& result) {
    if (body->mapped && !arguments.items.empty() && arguments.items[0].AsObject() &&
        arguments.items[0].AsObject()->IsCollection()) {
        for (const Value& item : interpreter.Items(arguments.items[0])) {
            Arguments each = arguments;
            each.items[0] = item;
            interpreter.CallFunction(*this, each);
        }
        result = Value::Ok();
        return true;
    }
    result = interpreter.CallFunction(*this, arguments);
    return true;
}

void NativeFunction::Print(Printer& printer, bool) const {
    printer.Put(name_ + L"()");
}

std::wstring NativeFunction::ClassName() const {
    return mapped_ ? L"MappedPrimitive" : L"Primitive";
}

bool NativeFunction::Call(Interpreter& interpreter, Arguments& arguments, Value& result) {
    const size_t got = arguments.items.size();
    if (got < static_cast<size_t>(least_))
        RaiseArgumentCount(name_, static_cast<size_t>(least_), got);
    if (most_ != anyCount && got > static_cast<size_t>(most_))
        RaiseArgumentCount(name_, static_cast<size_t>(most_), got);
    if (mapped_ && got > 0 && arguments.items[0].AsObject() &&
        arguments.items[0].AsObject()->IsCollection()) {
        for (const Value& item : interpreter.Items(arguments.items[0])) {
            Arguments each = arguments;
            each.items[0] = item;
            Call(interpreter, each, result);
        }
        result = Value::Ok();
        return true;
    }
    result = native_(interpreter, arguments);
    return true;
}

void ClassObject::Print(Printer& printer, bool) const {
    printer.Put(name_);
}

std::wstring ClassObject::ClassName() const {
    return super_.empty() ? L"MAXClass" : super_;
}

bool ClassObject::Call(Interpreter& interpreter, Arguments& arguments, Value& result) {
    if (!create)
        RaiseRuntime(L"Class not creatable: " + name_);
    result = create(interpreter, arguments);
    return true;
}

void ReferenceObject::Print(Printer& printer, bool) const {
    printer.Put(L"&value");
}

InterfaceObject& InterfaceObject::Function(std::wstring_view name, int least, int most,
                                           Native native) {
    return Constant(name, {std::make_shared<NativeFunction>(std::wstring(name), least, most,
                                                            std::move(native))});
}

InterfaceObject& InterfaceObject::Add(std::wstring_view name, Property property) {
    properties_[Lower(name)] = std::move(property);
    return *this;
}

InterfaceObject& InterfaceObject::Constant(std::wstring_view name, Value value) {
    return Add(name, {[value = std::move(value)](Interpreter&) { return value; }, {}});
}

void InterfaceObject::Print(Printer& printer, bool) const {
    printer.Put(L"<Interface:" + name_ + L">");
}

bool InterfaceObject::GetProperty(Interpreter& interpreter, const std::wstring& name,
                                  Value& result) {
    const auto found = properties_.find(name);
    if (found == properties_.end())
        return false;
    result = found->second.read(interpreter);
    return true;
}

bool InterfaceObject::SetProperty(Interpreter& interpreter, const std::wstring& name,
                                  const Value& value) {
    const auto found = properties_.find(name);
    if (found == properties_.end())
        return false;
    if (!found->second.write)
        RaiseRuntime(L"Property is read-only: " + name);
    found->second.write(interpreter, value);
    return true;
}

} // namespace simhost::script
