#include "simhost/script/evaluator.h"

#include "simhost/script/convert.h"
#include "simhost/script/operators.h"
#include "simhost/script/raise.h"
#include "simhost/script/text.h"

namespace simhost::script {

Value Evaluator::Run(const Expr& expr) {
    interpreter_.Charge(1);
    interpreter_.CheckStack();
    switch (expr.kind) {
    case ExprKind::Literal:
        return Literal(static_cast<const LiteralExpr&>(expr));
    case ExprKind::Variable:
        return Variable(static_cast<const VariableExpr&>(expr));
    case ExprKind::Path:
        interpreter_.position = expr.where;
        return interpreter_.ResolvePath(static_cast<const PathExpr&>(expr).pattern);
    case ExprKind::Array:
        return MakeArray(List(static_cast<const ListExpr&>(expr).items));
    case ExprKind::Point:
        return Points(static_cast<const ListExpr&>(expr));
    case ExprKind::BitArray:
        return Bits(static_cast<const BitArrayExpr&>(expr));
    case ExprKind::Block:
        return Block(static_cast<const BlockExpr&>(expr));
    case ExprKind::Property: {
        const auto& property = static_cast<const PropertyExpr&>(expr);
        const Value object = Run(*property.object);
        interpreter_.position = expr.where;
        return interpreter_.GetProperty(object, property.name);
    }
    case ExprKind::Index: {
        const auto& index = static_cast<const IndexExpr&>(expr);
        const Value object = Run(*index.object);
        const Value position = Run(*index.index);
        interpreter_.position = expr.where;
        return interpreter_.GetIndex(object, position);
    }
    case ExprKind::Unary:
        return Unary(static_cast<const UnaryExpr&>(expr));
    case ExprKind::Chain:
        return Chain(static_cast<const ChainExpr&>(expr));
    case ExprKind::Logical:
        return Logical(static_cast<const LogicalExpr&>(expr));
    case ExprKind::Convert:
        return ConvertTo(static_cast<const ConvertExpr&>(expr));
    case ExprKind::Call:
        return Call(static_cast<const CallExpr&>(expr));
    case ExprKind::Assign:
        return Assign(static_cast<const AssignExpr&>(expr));
    case ExprKind::If:
        return If(static_cast<const IfExpr&>(expr));
    case ExprKind::For:
        return For(static_cast<const ForExpr&>(expr));
    case ExprKind::While:
        return While(static_cast<const WhileExpr&>(expr));
    case ExprKind::Case:
        return Case(static_cast<const CaseExpr&>(expr));
    case ExprKind::Try:
        return Try(static_cast<const TryExpr&>(expr));
    case ExprKind::Jump:
        return Jump(static_cast<const JumpExpr&>(expr));
    case ExprKind::Function:
        return Function(static_cast<const FunctionExpr&>(expr));
    case ExprKind::Struct:
        return Struct(static_cast<const StructExpr&>(expr));
    case ExprKind::Declare:
        return Declare(static_cast<const DeclareExpr&>(expr));
    case ExprKind::Context:
        return Context(static_cast<const ContextExpr&>(expr));
    case ExprKind::Definition: {
        const auto& definition = static_cast<const DefinitionExpr&>(expr);
        interpreter_.position = expr.where;
        RaiseRuntime(L"Runtime error: this host has no user interface for " + definition.type +
                     L" " + definition.name);
    }
    case ExprKind::Handler:
    case ExprKind::Item:
        break;
    case ExprKind::Unsupported:
        interpreter_.position = expr.where;
        RaiseRuntime(L"Runtime error: this host does not support: " +
                     static_cast<const UnsupportedExpr&>(expr).what);
    }
    RaiseRuntime(L"Runtime error: not an expression");
}

std::vector<Value> Evaluator::List(const ExprList& list) {
    std::vector<Value> values;
    values.reserve(list.size());
    for (const ExprPtr& expr : list)
        values.push_back(Run(*expr));
    return values;
}

// Strings can be changed in place, so every evaluation gets one of its own.
Value Evaluator::Literal(const LiteralExpr& expr) {
    if (const auto* text = expr.value.As<StringObject>())
        return MakeString(text->Text());
    return expr.value;
}

Value Evaluator::Variable(const VariableExpr& expr) {
    interpreter_.position = expr.where;
    Value value = Load(expr.binding);
    if (expr.binding.byReference) {
        if (auto* reference = value.As<ReferenceObject>())
            return reference->Read(interpreter_);
    }
    return value;
}

Value Evaluator::Points(const ListExpr& expr) {
    std::array<float, 4> components{};
    for (size_t i = 0; i < expr.items.size(); ++i)
        components[i] = ToFloat(Run(*expr.items[i]));
    constexpr VectorKind kinds[] = {VectorKind::Point2, VectorKind::Point3, VectorKind::Point4};
    return {std::make_shared<VectorObject>(kinds[expr.items.size() - 2], components)};
}

Value Evaluator::Bits(const BitArrayExpr& expr) {
    auto bits = std::make_shared<BitArrayObject>();
    for (const auto& [from, to] : expr.ranges) {
        const size_t first = ToPosition(Run(*from));
        const size_t last = to ? static_cast<size_t>(std::max(0, ToInt(Run(*to)))) : first + 1;
        if (last > first)
            interpreter_.Charge((last - first) / 8);
        for (size_t i = last; i-- > first;)
            bits->Set(i, true);
    }
    return {bits};
}

Value Evaluator::Block(const BlockExpr& expr) {
    Reset(expr.slots);
    Value value;
    for (const ExprPtr& item : expr.items) {
        value = Run(*item);
        if (interpreter_.jump.pending)
            break;
    }
    return value;
}

Value Evaluator::Unary(const UnaryExpr& expr) {
    if (expr.op == UnaryOp::Reference)
        return Reference(*expr.operand);
    const Value operand = Run(*expr.operand);
    interpreter_.position = expr.where;
    switch (expr.op) {
    case UnaryOp::Minus:
        return Negate(operand);
    case UnaryOp::Not:
        return Value::Bool(!ToBool(operand));
    default:
        break;
    }
    auto* reference = operand.As<ReferenceObject>();
    if (!reference)
        RaiseConversion(operand, L"ValueRef");
    return reference->Read(interpreter_);
}

Value Evaluator::Chain(const ChainExpr& expr) {
    Value value = Run(*expr.first);
    for (const auto& [op, operand] : expr.rest) {
        const Value right = Run(*operand);
        interpreter_.position = expr.where;
        value = Apply(interpreter_, op, value, right);
    }
    return value;
}

Value Evaluator::Logical(const LogicalExpr& expr) {
    for (const ExprPtr& operand : expr.operands) {
        const Value value = Run(*operand);
        interpreter_.position = operand->where;
        if (ToBool(value) != expr.isAnd)
            return Value::Bool(!expr.isAnd);
    }
    return Value::Bool(expr.isAnd);
}

Value Evaluator::ConvertTo(const ConvertExpr& expr) {
    Value value = Run(*expr.value);
    for (const ExprPtr& toClass : expr.classes) {
        const Value target = Run(*toClass);
        interpreter_.position = expr.where;
        value = interpreter_.Convert(value, target);
    }
    return value;
}

// The scene is still and there is no undo, so contexts only check what they are given.
Value Evaluator::Context(const ContextExpr& expr) {
    static constexpr std::wstring_view switches[] = {L"undo",
                                                     L"animate",
                                                     L"redraw",
                                                     L"quiet",
                                                     L"printallelements",
                                                     L"mxscallstackcaptureenabled",
                                                     L"logging",
                                                     L"dontrepeatmessages",
                                                     L"macrorecorderemitterenabled"};
    static constexpr std::wstring_view others[] = {L"at time",  L"at level", L"in coordsys",
                                                   L"coordsys", L"in",       L"about",
                                                   L"time",     L"level",    L"defaultaction"};
    const std::vector<Value> arguments = List(expr.arguments);
    interpreter_.position = expr.where;
    const bool isSwitch =
        std::find(std::begin(switches), std::end(switches), expr.name) != std::end(switches);
    if (isSwitch) {
        const Value& state = arguments.back();
        if (expr.name != L"undo" || !state.As<StringObject>())
            static_cast<void>(ToBool(state));
    } else if (std::find(std::begin(others), std::end(others), expr.name) == std::end(others)) {
        RaiseRuntime(L"Runtime error: this host does not support: with " + expr.name);
    }
    if (expr.name == L"at time")
        static_cast<void>(ToReal(arguments.back()));
    return expr.body ? Run(*expr.body) : Value::Ok();
}

} // namespace simhost::script
