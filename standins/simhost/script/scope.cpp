#include "simhost/script/scope_binder.h"

#include "simhost/script/text.h"

namespace simhost::script {

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
        ScopeVariable& variable = found->second;
        Binding binding = variable.binding;
        if (binding.kind == Binding::Kind::Global || variable.frame == frame_) {
            variable.assigned |= assigns;
            return binding;
        }
        switch (variable.frame->kind) {
        case ScopeFrame::Kind::Top:
            variable.assigned |= assigns;
            binding.kind = Binding::Kind::Outer;
            return binding;
        case ScopeFrame::Kind::Screen:
            binding.kind = Binding::Kind::Screen;
            return binding;
        case ScopeFrame::Kind::Function:
            if (frame_->kind == ScopeFrame::Kind::Screen) {
                binding.kind = Binding::Kind::Screen;
                return binding;
            }
            if (variable.definition && !options_.strict) {
                binding.kind = Binding::Kind::Screen;
                return binding;
            }
            if (variable.declared || (variable.assigned && options_.strict))
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
    ScopeNames& scope = scopes_.back();
    auto [at, isNew] = scope.variables.try_emplace(Lower(name));
    ScopeVariable& variable = at->second;
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

Binding Binder::DeclareDefinition(const std::wstring& name) {
    const Binding binding = DeclareLocal(name, true);
    scopes_.back().variables.at(Lower(name)).definition = true;
    return binding;
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
                             found->second.frame->kind == ScopeFrame::Kind::Function;
        if (scope->isStruct || foreign)
            return DeclareDefinition(name);
        break;
    }
    const Binding binding = Use(name, where, true);
    if (binding.kind == Binding::Kind::Local && scopes_.back().variables.contains(folded))
        return DeclareDefinition(name);
    return binding;
}

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

} // namespace simhost::script
