#include "simhost/maxscript/scope.h"

#include <algorithm>
#include <unordered_map>

#include "simhost/maxscript/text.h"

namespace simhost::maxscript {
namespace {

// Variables that live and die together: those of a call, or of a top-level expression.
struct Frame {
    enum class Kind { Top, Function, Screen };
    Kind kind = Kind::Top;
    uint32_t slots = 0;
};

struct Variable {
    Binding binding; // as seen from its own frame
    const Frame* frame = nullptr;
    bool declared = true; // false: came into being by its use
    bool assigned = false;
};

struct Scope {
    std::unordered_map<std::wstring, Variable> variables; // by lower-case name
    Frame* frame = nullptr;
    std::vector<uint32_t>* slots = nullptr; // receives the locals to reset on entry; may be null
    bool isStruct = false;
};

// Whether a jump's value reaches its target through constructs that hand it up unchanged.
struct Reach {
    bool function = false;
    bool loop = false;
};

class Binder {
  public:
    Binder(GlobalTable& globals, const ScopeOptions& options)
        : globals_(globals), options_(options) {}

    uint32_t Run(Expr& root) {
        frame_ = &top_;
        Visit(root, {true, false});
        return top_.slots;
    }

  private:
    // Opens a scope for as long as the object lives.
    class Open {
      public:
        Open(Binder& binder, std::vector<uint32_t>* slots, bool isStruct = false)
            : binder_(binder) {
            Scope scope;
            scope.frame = binder.frame_;
            scope.slots = slots;
            scope.isStruct = isStruct;
            binder.scopes_.push_back(std::move(scope));
        }
        ~Open() { binder_.scopes_.pop_back(); }
        Open(const Open&) = delete;
        Open& operator=(const Open&) = delete;

      private:
        Binder& binder_;
    };

    // Makes `frame` the current one for as long as the object lives.
    class Enter {
      public:
        Enter(Binder& binder, Frame& frame)
            : binder_(binder), frame_(binder.frame_), inCatch_(binder.inCatch_) {
            binder.frame_ = &frame;
            binder.inCatch_ = false;
        }
        ~Enter() {
            binder_.frame_ = frame_;
            binder_.inCatch_ = inCatch_;
        }
        Enter(const Enter&) = delete;
        Enter& operator=(const Enter&) = delete;

      private:
        Binder& binder_;
        Frame* frame_;
        bool inCatch_;
    };

    [[noreturn]] static void Fail(Position where, const std::wstring& message) {
        throw ScriptError(ScriptError::Kind::Compile, L"Compile error: " + message, where);
    }

    void Operand(const ExprPtr& expr) {
        if (expr)
            Visit(*expr, {});
    }
    void Pass(const ExprPtr& expr, Reach reach) {
        if (expr)
            Visit(*expr, reach);
    }
    void Operands(const ExprList& list) {
        for (const ExprPtr& expr : list)
            Operand(expr);
    }
    void Operands(const std::vector<NamedExpr>& list) {
        for (const NamedExpr& named : list)
            Operand(named.value);
    }

    Binding Use(const std::wstring& name, Position where, bool assigns);
    Binding DeclareLocal(const std::wstring& name, bool declared);
    Binding DefineName(const std::wstring& name, Position where);

    void Visit(Expr& expr, Reach reach);
    void VisitUnary(UnaryExpr& expr);
    void VisitCall(CallExpr& call);
    void VisitAssign(AssignExpr& assign);
    void VisitFor(ForExpr& loop, Reach reach);
    void VisitTry(TryExpr& expr, Reach reach);
    void VisitDeclare(DeclareExpr& declare);
    void VisitFunction(FunctionBody& function);
    void VisitStruct(StructExpr& expr);
    void VisitDefinition(DefinitionExpr& definition);
    void DeclareScreenNames(const DefinitionExpr& definition);
    void VisitScreenMember(Expr& member);
    void VisitHandler(HandlerExpr& handler);

    GlobalTable& globals_;
    const ScopeOptions& options_;
    Frame top_;
    Frame* frame_ = nullptr;
    std::vector<Scope> scopes_;
    bool inCatch_ = false;
};

Binding GlobalBinding(Global& global) {
    Binding binding;
    binding.kind = Binding::Kind::Global;
    binding.global = &global;
    return binding;
}

// What a name stands for here; a name that nobody knows becomes a local of the innermost scope,
// outside of all scopes a global.
Binding Binder::Use(const std::wstring& name, Position where, bool assigns) {
    const std::wstring folded = Lower(name);
    bool structPassed = false;
    for (auto scope = scopes_.rbegin(); scope != scopes_.rend(); ++scope) {
        const auto found = scope->variables.find(folded);
        if (scope->isStruct) {
            const bool visible = found != scope->variables.end() && !structPassed;
            structPassed = true;
            if (visible)
                return found->second.binding;
            continue;
        }
        if (found == scope->variables.end())
            continue;
        Variable& variable = found->second;
        Binding binding = variable.binding;
        if (binding.kind == Binding::Kind::Global || variable.frame == frame_) {
            variable.assigned |= assigns;
            return binding;
        }
        switch (variable.frame->kind) {
        case Frame::Kind::Top:
            variable.assigned |= assigns;
            binding.kind = Binding::Kind::Outer;
            return binding;
        case Frame::Kind::Screen:
            binding.kind = Binding::Kind::Screen;
            return binding;
        case Frame::Kind::Function:
            if (frame_->kind == Frame::Kind::Screen) {
                binding.kind = Binding::Kind::Screen;
                return binding;
            }
            if (variable.declared || (variable.assigned && options_.strictImplicits))
                Fail(where, L"No outer local variable references permitted here: " + name);
        }
    }
    if (Global* global = globals_.Find(folded))
        return GlobalBinding(*global);
    if (scopes_.empty())
        return GlobalBinding(globals_.Declare(name));
    const Binding binding = DeclareLocal(name, false);
    scopes_.back().variables[folded].assigned = assigns;
    return binding;
}

// A variable of the innermost scope. Declaring a name again there gives the same variable.
Binding Binder::DeclareLocal(const std::wstring& name, bool declared) {
    Scope& scope = scopes_.back();
    auto [at, isNew] = scope.variables.try_emplace(Lower(name));
    Variable& variable = at->second;
    if (isNew || variable.binding.kind == Binding::Kind::Global) {
        variable.binding = Binding();
        variable.binding.kind = Binding::Kind::Local;
        variable.binding.slot = frame_->slots++;
        variable.frame = frame_;
        variable.declared = declared;
        if (scope.slots)
            scope.slots->push_back(variable.binding.slot);
    }
    variable.declared |= declared;
    return variable.binding;
}

// The name of a function, struct or definition follows the rules of an assignment, except that
// it never means another function's variable.
Binding Binder::DefineName(const std::wstring& name, Position where) {
    const std::wstring folded = Lower(name);
    for (auto scope = scopes_.rbegin(); scope != scopes_.rend(); ++scope) {
        const auto found = scope->variables.find(folded);
        if (found == scope->variables.end())
            continue;
        const bool foreign = found->second.frame && found->second.frame != frame_ &&
                             found->second.frame->kind == Frame::Kind::Function;
        if (scope->isStruct || foreign)
            return DeclareLocal(name, true);
        break;
    }
    const Binding binding = Use(name, where, true);
    if (binding.kind == Binding::Kind::Local) {
        const auto own = scopes_.back().variables.find(folded);
        if (own != scopes_.back().variables.end())
            own->second.declared = true;
    }
    return binding;
}

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
    Frame frame;
    frame.kind = Frame::Kind::Function;
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
        Variable& variable = names[Lower(name)];
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
        Frame frame;
        frame.kind = Frame::Kind::Function;
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
    Frame frame;
    frame.kind = Frame::Kind::Screen;
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
    Frame frame;
    frame.kind = Frame::Kind::Function;
    const Enter enter(*this, frame);
    const Open scope(*this, nullptr);
    for (size_t i = 1; i < handler.words.size(); ++i)
        DeclareLocal(handler.words[i], true);
    Pass(handler.body, {true, false});
}

} // namespace

Global* GlobalTable::Find(std::wstring_view name) const {
    const auto found = globals_.find(Lower(name));
    return found == globals_.end() ? nullptr : found->second.get();
}

Global& GlobalTable::Declare(std::wstring_view name) {
    std::unique_ptr<Global>& global = globals_[Lower(name)];
    if (!global) {
        global = std::make_unique<Global>();
        global->name = name;
    }
    return *global;
}

uint32_t BindScopes(Expr& root, GlobalTable& globals, const ScopeOptions& options) {
    return Binder(globals, options).Run(root);
}

} // namespace simhost::maxscript
