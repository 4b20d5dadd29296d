// Declarations, functions, structs and the definitions of user interface.
#include "simhost/script/scope_binder.h"
#include "simhost/script/text.h"

namespace simhost::script {

void Binder::VisitDeclare(DeclareExpr& declare) {
    const bool local = declare.scope == DeclareScope::Local;
    for (DeclareExpr::Item& item : declare.items) {
        if (local && scopes_.empty())
            Fail(item.where, L"no local declarations at top level");
        // The value may still use an outer variable of the same name.
        const bool defines = item.value && (item.value->kind == ExprKind::Function ||
                                            item.value->kind == ExprKind::Struct ||
                                            item.value->kind == ExprKind::Definition);
        if (!defines)
            Operand(item.value);
        if (local) {
            item.binding = DeclareLocal(item.name, true);
        } else {
            item.binding = GlobalBinding(globals_.Declare(item.name));
            if (!scopes_.empty())
                scopes_.back().variables[Lower(item.name)].binding = item.binding;
        }
        if (defines)
            Operand(item.value);
    }
}

void Binder::VisitFunction(FunctionBody& function) {
    ScopeFrame frame;
    frame.kind = ScopeFrame::Kind::Function;
    const Enter enter(*this, frame);
    const Open scope(*this, nullptr);
    for (Parameter& parameter : function.parameters) {
        Operand(parameter.value);
        parameter.slot = DeclareLocal(parameter.name, true).slot;
        scopes_.back().variables[Lower(parameter.name)].binding.byReference = parameter.byReference;
    }
    Pass(function.body, {true, false});
    function.slotCount = frame.slots;
}

void Binder::VisitStruct(StructExpr& expr) {
    expr.binding = DefineName(expr.body->name, expr.where);
    const Open scope(*this, nullptr, true);
    auto& names = scopes_.back().variables;
    uint32_t index = 0;
    const auto declare = [&names](const std::wstring& name, uint32_t slot) {
        ScopeVariable& variable = names[Lower(name)];
        variable.binding.kind = Binding::Kind::Member;
        variable.binding.slot = slot;
    };
    declare(L"this", thisSlot);
    for (const StructMember& member : expr.body->members) {
        if (!member.isEvent)
            declare(member.name, index);
        ++index;
    }
    for (StructMember& member : expr.body->members) {
        if (member.function) {
            VisitFunction(*member.function);
            continue;
        }
        ScopeFrame frame;
        frame.kind = ScopeFrame::Kind::Function;
        const Enter enter(*this, frame);
        const Open locals(*this, nullptr);
        Operand(member.value);
        member.slotCount = frame.slots;
    }
}

void Binder::VisitDefinition(DefinitionExpr& definition) {
    Operands(definition.arguments);
    Operands(definition.keywords);
    if (!definition.name.empty() && definition.type != L"group" && definition.type != L"parameters")
        DefineName(definition.name, definition.where);
    ScopeFrame frame;
    frame.kind = ScopeFrame::Kind::Screen;
    const Enter enter(*this, frame);
    const Open scope(*this, nullptr);
    DeclareScreenNames(definition);
    for (const ExprPtr& member : definition.members)
        VisitScreenMember(*member);
}

// Controls and parameters can be named before they are defined.
void Binder::DeclareScreenNames(const DefinitionExpr& definition) {
    for (const ExprPtr& member : definition.members) {
        if (member->kind == ExprKind::Item) {
            DeclareLocal(static_cast<const ItemExpr&>(*member).name, true);
        } else if (member->kind == ExprKind::Definition) {
            const auto& inner = static_cast<const DefinitionExpr&>(*member);
            if (inner.type == L"group" || inner.type == L"parameters")
                DeclareScreenNames(inner);
        }
    }
}

void Binder::VisitScreenMember(Expr& member) {
    if (member.kind == ExprKind::Definition) {
        auto& inner = static_cast<DefinitionExpr&>(member);
        if (inner.type == L"group" || inner.type == L"parameters") {
            Operands(inner.arguments);
            Operands(inner.keywords);
            for (const ExprPtr& item : inner.members)
                VisitScreenMember(*item);
            return;
        }
    }
    Visit(member, {});
}

void Binder::VisitHandler(HandlerExpr& handler) {
    ScopeFrame frame;
    frame.kind = ScopeFrame::Kind::Function;
    const Enter enter(*this, frame);
    const Open scope(*this, nullptr);
    for (size_t i = 1; i < handler.words.size(); ++i)
        DeclareLocal(handler.words[i], true);
    Pass(handler.body, {true, false});
}

} // namespace simhost::script
