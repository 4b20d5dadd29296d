// Values, operators, places and definitions.
#include "simhost/script/convert.h"
#include "simhost/script/interpreter.h"
#include "simhost/script/operators.h"
#include "simhost/script/raise.h"

namespace simhost::script {
namespace {

std::vector<Value> RunAll(const ExprList& list, Frame& frame) {
    std::vector<Value> values;
    values.reserve(list.size());
    for (const ExprPtr& expr : list)
        values.push_back(expr->Run(frame));
    return values;
}

// Where a variable of a frame lives.
Value& SlotOf(Frame& frame, const Binding& binding) {
    if (binding.kind == Binding::Kind::Local)
        return frame.slots[binding.slot];
    if (!frame.top)
        RaiseRuntime(L"Runtime error: the variables around the function are gone");
    return frame.top->slots[binding.slot];
}

StructInstance& SelfOf(const Frame& frame) {
    if (!frame.self)
        RaiseRuntime(L"Runtime error: struct member used without an instance");
    return *frame.self;
}

Value Load(Frame& frame, const Binding& binding) {
    switch (binding.kind) {
    case Binding::Kind::Global:
        return binding.global->read ? binding.global->read() : binding.global->value;
    case Binding::Kind::Member:
        return SelfOf(frame).ReadMember(binding.slot);
    default:
        return SlotOf(frame, binding);
    }
}

void Save(Frame& frame, const Binding& binding, const Value& value) {
    switch (binding.kind) {
    case Binding::Kind::Global:
        frame.interpreter.SetGlobal(*binding.global, value);
        break;
    case Binding::Kind::Member:
        SelfOf(frame).members[binding.slot] = value;
        break;
    default:
        SlotOf(frame, binding) = value;
    }
}

std::shared_ptr<Frame> HomeOf(Frame& frame) {
    return frame.isCall ? frame.top : frame.shared_from_this();
}

} // namespace

Value Expr::Run(Frame& frame) const {
    frame.interpreter.Charge(1);
    frame.interpreter.CheckStack();
    return Evaluate(frame);
}

bool Expr::RunCondition(Frame& frame) const {
    const Value value = Run(frame);
    frame.interpreter.position = where;
    return ToBool(value);
}

Value LiteralExpr::Evaluate(Frame&) const {
    return value;
}

Value VariableExpr::Evaluate(Frame& frame) const {
    frame.interpreter.position = where;
    return Load(frame, binding);
}

void VariableExpr::Store(Frame& frame, const Value& value) const {
    frame.interpreter.position = where;
    Save(frame, binding, value);
}

Value PathExpr::Evaluate(Frame& frame) const {
    frame.interpreter.position = where;
    return frame.interpreter.paths ? frame.interpreter.paths(pattern) : Value();
}

Value ArrayExpr::Evaluate(Frame& frame) const {
    return MakeArray(RunAll(items, frame));
}

Value PointExpr::Evaluate(Frame& frame) const {
    std::array<float, 4> components{};
    for (size_t i = 0; i < items.size(); ++i)
        components[i] = ToFloat(items[i]->Run(frame));
    constexpr VectorKind kinds[] = {VectorKind::Point2, VectorKind::Point3, VectorKind::Point4};
    return {std::make_shared<VectorObject>(kinds[items.size() - 2], components)};
}

Value BlockExpr::Evaluate(Frame& frame) const {
    frame.Reset(slots);
    Value value;
    for (const ExprPtr& item : items)
        value = item->Run(frame);
    return value;
}

Value PropertyExpr::Evaluate(Frame& frame) const {
    const Value owner = object->Run(frame);
    frame.interpreter.position = where;
    return frame.interpreter.ReadProperty(owner, name);
}

void PropertyExpr::Store(Frame& frame, const Value& value) const {
    const Value owner = object->Run(frame);
    frame.interpreter.position = where;
    frame.interpreter.SetProperty(owner, name, value);
    // `mtl.color.r = 1`: the colour is a copy of what the material holds, so it goes back there.
    if (owner.As<VectorObject>() && dynamic_cast<const PropertyExpr*>(object.get()))
        object->Store(frame, owner);
}

Value IndexExpr::Evaluate(Frame& frame) const {
    const Value owner = object->Run(frame);
    const Value position = index->Run(frame);
    frame.interpreter.position = where;
    return frame.interpreter.ReadElement(owner, position);
}

void IndexExpr::Store(Frame& frame, const Value& value) const {
    const Value owner = object->Run(frame);
    const Value position = index->Run(frame);
    frame.interpreter.position = where;
    frame.interpreter.SetElement(owner, position, value);
}

Value MinusExpr::Evaluate(Frame& frame) const {
    const Value value = operand->Run(frame);
    frame.interpreter.position = where;
    return Negate(value);
}

Value NotExpr::Evaluate(Frame& frame) const {
    return Value::Bool(!operand->RunCondition(frame));
}

Value ChainExpr::Evaluate(Frame& frame) const {
    Value value = first->Run(frame);
    for (const auto& [op, operand] : rest) {
        const Value right = operand->Run(frame);
        frame.interpreter.position = where;
        value = Apply(frame.interpreter, op, value, right);
    }
    return value;
}

Value LogicalExpr::Evaluate(Frame& frame) const {
    for (const ExprPtr& operand : operands) {
        if (operand->RunCondition(frame) != isAnd)
            return Value::Bool(!isAnd);
    }
    return Value::Bool(isAnd);
}

Value ConvertExpr::Evaluate(Frame& frame) const {
    Value converted = value->Run(frame);
    for (const ExprPtr& toClass : classes) {
        const Value target = toClass->Run(frame);
        frame.interpreter.position = where;
        converted = frame.interpreter.Convert(converted, target);
    }
    return converted;
}

Value CallExpr::Evaluate(Frame& frame) const {
    const Value function = callee->Run(frame);
    Arguments passed;
    passed.items = RunAll(arguments, frame);
    for (const auto& [name, value] : keywords)
        passed.keywords.emplace_back(name, value->Run(frame));
    frame.interpreter.position = where;
    return frame.interpreter.Call(function, passed);
}

Value AssignExpr::Evaluate(Frame& frame) const {
    const Value before = compound ? target->Run(frame) : Value();
    Value result = value->Run(frame);
    frame.interpreter.position = where;
    if (compound)
        result = Apply(frame.interpreter, op, before, result);
    target->Store(frame, result);
    return result;
}

Value DeclareExpr::Evaluate(Frame& frame) const {
    Value result;
    for (const auto& [binding, value] : items) {
        if (!value && binding.kind == Binding::Kind::Global)
            continue;
        result = value ? value->Run(frame) : Value();
        Save(frame, binding, result);
    }
    return result;
}

Value FunctionExpr::Evaluate(Frame& frame) const {
    Value made(std::make_shared<FunctionObject>(function, HomeOf(frame), frame.self));
    Save(frame, binding, made);
    return made;
}

Value StructExpr::Evaluate(Frame& frame) const {
    Value made(std::make_shared<StructType>(body, HomeOf(frame)));
    Save(frame, binding, made);
    return made;
}

} // namespace simhost::script
