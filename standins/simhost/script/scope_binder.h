#pragma once
// The pass behind BindScopes: scope.cpp finds names, scope_visit.cpp walks expressions,
// scope_definitions.cpp functions, structs and the definitions of user interface.
#include <string>
#include <unordered_map>
#include <vector>

#include "simhost/script/scope.h"

namespace simhost::script {

// Variables that live and die together: those of a call, or of a top-level expression.
struct ScopeFrame {
    enum class Kind { Top, Function, Screen };
    Kind kind = Kind::Top;
    uint32_t slots = 0;
};

struct ScopeVariable {
    Binding binding; // as seen from its own frame
    const ScopeFrame* frame = nullptr;
    bool declared = true; // false: came into being by its use
    bool assigned = false;
    bool definition = false; // of a function, a struct or user interface
};

struct ScopeNames {
    std::unordered_map<std::wstring, ScopeVariable> variables; // by lower-case name
    ScopeFrame* frame = nullptr;
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
            ScopeNames scope;
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
        Enter(Binder& binder, ScopeFrame& frame)
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
        ScopeFrame* frame_;
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
    Binding DeclareDefinition(const std::wstring& name);
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
    ScopeFrame top_;
    ScopeFrame* frame_ = nullptr;
    std::vector<ScopeNames> scopes_;
    bool inCatch_ = false;
};

[[nodiscard]] Binding GlobalBinding(Global& global);

} // namespace simhost::script
