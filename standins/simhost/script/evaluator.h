#pragma once
#include "simhost/script/ast.h"
#include "simhost/script/callables.h"
#include "simhost/script/interpreter.h"

namespace simhost::script {

/// Thrown by a jump that no flag can carry; see JumpExpr::direct.
struct JumpSignal {
    JumpKind kind;
    Value value;
};

/// Walks trees for one frame: a call, or a top-level expression (then `frame` is `top`).
class Evaluator {
  public:
    Evaluator(Interpreter& interpreter, FrameObject& frame, const FramePtr& top)
        : interpreter_(interpreter), frame_(frame), top_(top) {}

    [[nodiscard]] Value Run(const Expr& expr);

  private:
    // evaluator.cpp
    Value Literal(const LiteralExpr& expr);
    Value Variable(const VariableExpr& expr);
    Value Points(const ListExpr& expr);
    Value Bits(const BitArrayExpr& expr);
    Value Block(const BlockExpr& expr);
    Value Unary(const UnaryExpr& expr);
    Value Chain(const ChainExpr& expr);
    Value Logical(const LogicalExpr& expr);
    Value ConvertTo(const ConvertExpr& expr);
    Value Context(const ContextExpr& expr);
    std::vector<Value> List(const ExprList& list);

    // evaluator_place.cpp: what can be assigned to and referred to
    Value Call(const CallExpr& expr);
    Value Assign(const AssignExpr& expr);
    Value Declare(const DeclareExpr& expr);
    Value Function(const FunctionExpr& expr);
    Value Struct(const StructExpr& expr);
    Value Reference(const Expr& operand);
    [[nodiscard]] Value Load(const Binding& binding);
    void Store(const Binding& binding, const Value& value);
    Value* Slot(const Binding& binding);
    void StoreAt(const Expr& target, const Value& value);

    // evaluator_control.cpp
    Value If(const IfExpr& expr);
    Value For(const ForExpr& expr);
    Value While(const WhileExpr& expr);
    Value Case(const CaseExpr& expr);
    Value Try(const TryExpr& expr);
    Value Jump(const JumpExpr& expr);
    [[nodiscard]] bool Condition(const Expr& expr);
    enum class Step { Next, Leave };
    struct LoopState;
    Step LoopBody(const ForExpr& loop, const Value& item, LoopState& state);
    Step RunLoopBody(const Expr& body, Value& value, bool& skipped);
    void Range(const ForExpr& loop, LoopState& state);
    void Reset(const std::vector<uint32_t>& slots);

    Interpreter& interpreter_;
    FrameObject& frame_;
    const FramePtr& top_;
};

} // namespace simhost::script
