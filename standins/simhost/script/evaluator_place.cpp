// Variables, assignment, references, definitions and calls.
#include "simhost/script/convert.h"
#include "simhost/script/evaluator.h"
#include "simhost/script/operators.h"
#include "simhost/script/raise.h"
#include "simhost/script/scope.h"
#include "simhost/script/text.h"

namespace simhost::script {
namespace {

class GlobalReference final : public ReferenceObject {
  public:
    explicit GlobalReference(Global& global) : global_(global) {}
    Value Read(Interpreter& interpreter) override { return interpreter.ReadGlobal(global_); }
    void Write(Interpreter& interpreter, const Value& value) override {
        interpreter.WriteGlobal(global_, value);
    }

  private:
    Global& global_;
};

class SlotReference final : public ReferenceObject, public Traceable {
  public:
    SlotReference(FramePtr frame, uint32_t slot) : frame_(std::move(frame)), slot_(slot) {}
    Value Read(Interpreter&) override { return frame_ ? frame_->slots[slot_] : Value(); }
    void Write(Interpreter&, const Value& value) override {
        if (frame_)
            frame_->slots[slot_] = value;
    }
    [[nodiscard]] const Traceable* AsTraceable() const override { return this; }
    void Trace(Marker& marker) const override { marker.Visit(frame_.get()); }
    void DropReferences(std::vector<Value>& garbage) override {
        garbage.emplace_back(std::move(frame_));
    }

  private:
    FramePtr frame_;
    uint32_t slot_;
};

// object.name or object[index]
class ElementReference final : public ReferenceObject, public Traceable {
  public:
    ElementReference(Value object, std::wstring name, Value index)
        : object_(std::move(object)), name_(std::move(name)), index_(std::move(index)) {}
    Value Read(Interpreter& interpreter) override {
        return name_.empty() ? interpreter.GetIndex(object_, index_)
                             : interpreter.GetProperty(object_, name_);
    }
    void Write(Interpreter& interpreter, const Value& value) override {
        if (name_.empty())
            interpreter.SetIndex(object_, index_, value);
        else
            interpreter.SetProperty(object_, name_, value);
    }
    [[nodiscard]] const Traceable* AsTraceable() const override { return this; }
    void Trace(Marker& marker) const override {
        marker.Visit(object_);
        marker.Visit(index_);
    }
    void DropReferences(std::vector<Value>& garbage) override {
        garbage.push_back(std::exchange(object_, Value()));
        garbage.push_back(std::exchange(index_, Value()));
    }

  private:
    Value object_;
    std::wstring name_;
    Value index_;
};

bool IsPlainValue(const Value& value) {
    return value.As<VectorObject>() || value.As<MatrixObject>();
}

} // namespace

// Where the variable lives; null for globals, struct members and `this`.
Value* Evaluator::Slot(const Binding& binding) {
    switch (binding.kind) {
    case Binding::Kind::Local:
        return &frame_.slots[binding.slot];
    case Binding::Kind::Outer:
        return &top_->slots[binding.slot];
    default:
        return nullptr;
    }
}

Value Evaluator::Load(const Binding& binding) {
    if (const Value* slot = Slot(binding))
        return *slot;
    if (binding.kind == Binding::Kind::Global)
        return interpreter_.ReadGlobal(*binding.global);
    if (binding.kind != Binding::Kind::Member)
        RaiseRuntime(L"Runtime error: this host has no user interface");
    if (binding.slot == thisSlot)
        return {frame_.self};
    if (!frame_.self)
        RaiseRuntime(L"Runtime error: struct member used without an instance");
    return frame_.self->Member(binding.slot);
}

void Evaluator::Store(const Binding& binding, const Value& value) {
    if (Value* slot = Slot(binding)) {
        auto* reference = binding.byReference ? slot->As<ReferenceObject>() : nullptr;
        if (reference)
            reference->Write(interpreter_, value);
        else
            *slot = value;
    } else if (binding.kind == Binding::Kind::Global) {
        interpreter_.WriteGlobal(*binding.global, value);
    } else if (binding.kind == Binding::Kind::Member && binding.slot != thisSlot && frame_.self) {
        frame_.self->SetMember(binding.slot, value);
    } else {
        RaiseRuntime(L"Runtime error: cannot assign here");
    }
}

void Evaluator::StoreAt(const Expr& target, const Value& value) {
    interpreter_.position = target.where;
    switch (target.kind) {
    case ExprKind::Variable:
        Store(static_cast<const VariableExpr&>(target).binding, value);
        return;
    case ExprKind::Property: {
        const auto& property = static_cast<const PropertyExpr&>(target);
        const Value object = Run(*property.object);
        interpreter_.SetProperty(object, property.name, value);
        // `node.pos.x = 1`: the point is a copy of what the node holds, so it goes back there.
        if (IsPlainValue(object) && property.object->kind == ExprKind::Property)
            StoreAt(*property.object, object);
        return;
    }
    case ExprKind::Index: {
        const auto& index = static_cast<const IndexExpr&>(target);
        const Value object = Run(*index.object);
        interpreter_.SetIndex(object, Run(*index.index), value);
        if (IsPlainValue(object) && index.object->kind == ExprKind::Property)
            StoreAt(*index.object, object);
        return;
    }
    default: {
        const Value reference = Run(*static_cast<const UnaryExpr&>(target).operand);
        auto* place = reference.As<ReferenceObject>();
        if (!place)
            RaiseConversion(reference, L"ValueRef");
        place->Write(interpreter_, value);
    }
    }
}

Value Evaluator::Assign(const AssignExpr& expr) {
    if (!expr.compound) {
        const Value value = Run(*expr.value);
        StoreAt(*expr.target, value);
        return value;
    }
    const Value before = Run(*expr.target);
    const Value operand = Run(*expr.value);
    interpreter_.position = expr.where;
    const Value value = Apply(interpreter_, expr.op, before, operand);
    StoreAt(*expr.target, value);
    return value;
}

Value Evaluator::Declare(const DeclareExpr& expr) {
    Value value;
    for (const DeclareExpr::Item& item : expr.items) {
        if (item.value) {
            value = Run(*item.value);
            Store(item.binding, value);
        } else if (expr.scope == DeclareScope::Local) {
            value = Value();
            Store(item.binding, value);
        }
    }
    return value;
}

Value Evaluator::Function(const FunctionExpr& expr) {
    Value function(std::make_shared<FunctionObject>(expr.function, top_, frame_.self));
    Store(expr.binding, function);
    return function;
}

Value Evaluator::Struct(const StructExpr& expr) {
    Value type(std::make_shared<StructType>(expr.body, top_));
    Store(expr.binding, type);
    return type;
}

Value Evaluator::Reference(const Expr& operand) {
    if (operand.kind == ExprKind::Property) {
        const auto& property = static_cast<const PropertyExpr&>(operand);
        return {std::make_shared<ElementReference>(Run(*property.object), property.name, Value())};
    }
    if (operand.kind == ExprKind::Index) {
        const auto& index = static_cast<const IndexExpr&>(operand);
        const Value object = Run(*index.object);
        return {std::make_shared<ElementReference>(object, std::wstring(), Run(*index.index))};
    }
    if (operand.kind != ExprKind::Variable)
        return Run(operand);
    const Binding& binding = static_cast<const VariableExpr&>(operand).binding;
    if (binding.kind == Binding::Kind::Global)
        return {std::make_shared<GlobalReference>(*binding.global)};
    if (binding.kind == Binding::Kind::Member && binding.slot != thisSlot && frame_.self) {
        const auto& name = static_cast<const VariableExpr&>(operand).name;
        return {std::make_shared<ElementReference>(Value(frame_.self), name, Value())};
    }
    Value* slot = Slot(binding);
    if (!slot)
        return Run(operand);
    if (binding.byReference && slot->As<ReferenceObject>())
        return *slot; // handed on
    const FramePtr owner = binding.kind == Binding::Kind::Local
                               ? std::static_pointer_cast<FrameObject>(frame_.shared_from_this())
                               : top_;
    return {std::make_shared<SlotReference>(owner, binding.slot)};
}

Value Evaluator::Call(const CallExpr& expr) {
    const Value callee = Run(*expr.callee);
    Arguments arguments;
    arguments.items = List(expr.arguments);
    for (const NamedExpr& keyword : expr.keywords)
        arguments.keywords.emplace_back(Lower(keyword.name), Run(*keyword.value));
    interpreter_.position = expr.where;
    return interpreter_.Call(callee, arguments);
}

} // namespace simhost::script
