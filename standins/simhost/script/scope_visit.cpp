// Expressions, and what a construct lets jumps do.
#include "simhost/script/scope_binder.h"
#include "simhost/script/text.h"

namespace simhost::script {

void Binder::Visit(Expr& expr, Reach reach) {
    switch (expr.kind) {
    case ExprKind::Literal:
    case ExprKind::Path:
        break;
    case ExprKind::Variable: {
        auto& variable = static_cast<VariableExpr&>(expr);
        variable.binding = variable.global ? GlobalBinding(globals_.Declare(variable.name))
                                           : Use(variable.name, variable.where, false);
        break;
    }
    case ExprKind::Array:
    case ExprKind::Point:
        Operands(static_cast<ListExpr&>(expr).items);
        break;
    case ExprKind::BitArray:
        for (auto& [from, to] : static_cast<BitArrayExpr&>(expr).ranges) {
            Operand(from);
            Operand(to);
        }
        break;
    case ExprKind::Block: {
        auto& block = static_cast<BlockExpr&>(expr);
        const Open scope(*this, &block.slots);
        for (const ExprPtr& item : block.items)
            Pass(item, reach);
        break;
    }
    case ExprKind::Property:
        Operand(static_cast<PropertyExpr&>(expr).object);
        break;
    case ExprKind::Index:
        Operand(static_cast<IndexExpr&>(expr).object);
        Operand(static_cast<IndexExpr&>(expr).index);
        break;
    case ExprKind::Unary:
        VisitUnary(static_cast<UnaryExpr&>(expr));
        break;
    case ExprKind::Chain:
        Operand(static_cast<ChainExpr&>(expr).first);
        for (auto& [op, operand] : static_cast<ChainExpr&>(expr).rest)
            Operand(operand);
        break;
    case ExprKind::Logical:
        Operands(static_cast<LogicalExpr&>(expr).operands);
        break;
    case ExprKind::Convert:
        Operand(static_cast<ConvertExpr&>(expr).value);
        Operands(static_cast<ConvertExpr&>(expr).classes);
        break;
    case ExprKind::Call:
        VisitCall(static_cast<CallExpr&>(expr));
        break;
    case ExprKind::Assign:
        VisitAssign(static_cast<AssignExpr&>(expr));
        break;
    case ExprKind::If: {
        auto& branch = static_cast<IfExpr&>(expr);
        for (auto& [condition, value] : branch.branches) {
            Operand(condition);
            Pass(value, reach);
        }
        Pass(branch.otherwise, reach);
        break;
    }
    case ExprKind::For:
        VisitFor(static_cast<ForExpr&>(expr), reach);
        break;
    case ExprKind::While: {
        auto& loop = static_cast<WhileExpr&>(expr);
        const Open scope(*this, &loop.slots);
        if (!loop.bodyFirst)
            Operand(loop.condition);
        Pass(loop.body, {reach.function, true});
        if (loop.bodyFirst)
            Operand(loop.condition);
        break;
    }
    case ExprKind::Case: {
        auto& choice = static_cast<CaseExpr&>(expr);
        Operand(choice.subject);
        for (auto& [label, value] : choice.items) {
            Operand(label);
            Pass(value, reach);
        }
        Pass(choice.otherwise, reach);
        break;
    }
    case ExprKind::Try:
        VisitTry(static_cast<TryExpr&>(expr), reach);
        break;
    case ExprKind::Jump: {
        auto& jump = static_cast<JumpExpr&>(expr);
        jump.direct = jump.jump == JumpKind::Return ? reach.function : reach.loop;
        Operand(jump.value);
        break;
    }
    case ExprKind::Function: {
        auto& function = static_cast<FunctionExpr&>(expr);
        function.binding = DefineName(function.function->name, function.where);
        VisitFunction(*function.function);
        break;
    }
    case ExprKind::Struct:
        VisitStruct(static_cast<StructExpr&>(expr));
        break;
    case ExprKind::Declare:
        VisitDeclare(static_cast<DeclareExpr&>(expr));
        break;
    case ExprKind::Context:
        Operands(static_cast<ContextExpr&>(expr).arguments);
        Pass(static_cast<ContextExpr&>(expr).body, reach);
        break;
    case ExprKind::Definition:
        VisitDefinition(static_cast<DefinitionExpr&>(expr));
        break;
    case ExprKind::Handler:
        VisitHandler(static_cast<HandlerExpr&>(expr));
        break;
    case ExprKind::Item:
        Operands(static_cast<ItemExpr&>(expr).arguments);
        Operands(static_cast<ItemExpr&>(expr).keywords);
        break;
    case ExprKind::Unsupported:
        Operands(static_cast<UnsupportedExpr&>(expr).parts);
        Operand(static_cast<UnsupportedExpr&>(expr).body);
        break;
    }
}

void Binder::VisitUnary(UnaryExpr& expr) {
    // The variable behind a & will be written by whoever receives the reference.
    if (expr.op == UnaryOp::Reference && expr.operand->kind == ExprKind::Variable) {
        auto& variable = static_cast<VariableExpr&>(*expr.operand);
        if (!variable.global) {
            variable.binding = Use(variable.name, variable.where, true);
            return;
        }
    }
    Operand(expr.operand);
}

void Binder::VisitCall(CallExpr& call) {
    if (inCatch_ && call.callee->kind == ExprKind::Variable &&
        (!call.arguments.empty() || !call.keywords.empty()) &&
        EqualNoCase(static_cast<VariableExpr&>(*call.callee).name, L"throw")) {
        Fail(call.where, L"only throws without arguments are permitted in catch expressions");
    }
    Operand(call.callee);
    Operands(call.arguments);
    Operands(call.keywords);
}

void Binder::VisitAssign(AssignExpr& assign) {
    if (assign.target->kind == ExprKind::Variable) {
        auto& variable = static_cast<VariableExpr&>(*assign.target);
        if (!variable.global) {
            variable.binding = Use(variable.name, variable.where, true);
            Operand(assign.value);
            return;
        }
    }
    Operand(assign.target);
    Operand(assign.value);
}

void Binder::VisitFor(ForExpr& loop, Reach reach) {
    Operand(loop.first);
    Operand(loop.last);
    Operand(loop.step);
    const Open names(*this, nullptr);
    for (const std::wstring& name : loop.names)
        loop.nameSlots.push_back(DeclareLocal(name, true).slot);
    const Open scope(*this, &loop.slots);
    Operand(loop.whileTrue);
    Operand(loop.where_);
    Pass(loop.body, {reach.function, true});
}

void Binder::VisitTry(TryExpr& expr, Reach reach) {
    const bool inCatch = std::exchange(inCatch_, false);
    Pass(expr.body, reach);
    inCatch_ = true;
    Pass(expr.handler, reach);
    inCatch_ = inCatch;
}

} // namespace simhost::script
