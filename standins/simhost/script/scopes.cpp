#include "simhost/script/scopes.h"

#include "simhost/script/text.h"

namespace simhost::script {
namespace {

[[noreturn]] void Fail(Position where, const std::wstring& message) {
    throw ScriptError(ScriptError::Kind::Compile, L"Compile error: " + message, where);
}

} // namespace

Binding Scopes::Find(const std::wstring& name, Position where, Use use) {
    const std::wstring folded = Lower(name);
    for (auto scope = scopes_.rbegin(); scope != scopes_.rend(); ++scope) {
        const auto found = scope->names.find(folded);
        if (found == scope->names.end())
            continue;
        Binding binding = found->second;
        if (binding.kind == Binding::Kind::Global || scope->depth == frames_.size())
            return binding;
        if (scope->isStruct && use != Use::Define)
            return binding;
        if (scope->depth == 1 && !scope->isStruct) {
            binding.kind = Binding::Kind::Outer;
            return binding;
        }
        if (use == Use::Define)
            return DeclareLocal(name, where);
        Fail(where, L"No outer local variable references permitted here: " + name);
    }
    if (Global* global = globals_.Find(folded))
        return {Binding::Kind::Global, 0, global};
    if (use == Use::Read)
        Fail(where, L"unknown name: " + name);
    if (scopes_.empty())
        return {Binding::Kind::Global, 0, &globals_.Declare(name)};
    return DeclareLocal(name, where);
}

Binding Scopes::DeclareLocal(const std::wstring& name, Position where) {
    if (scopes_.empty())
        Fail(where, L"no local declarations at top level");
    Scope& scope = scopes_.back();
    const auto [at, isNew] = scope.names.try_emplace(Lower(name));
    if (isNew || at->second.kind != Binding::Kind::Local) {
        at->second = {Binding::Kind::Local, frames_.back()++, nullptr};
        scope.slots.push_back(at->second.slot);
    }
    return at->second;
}

Binding Scopes::DeclareGlobal(const std::wstring& name) {
    const Binding binding = FindGlobal(name);
    if (!scopes_.empty())
        scopes_.back().names[Lower(name)] = binding;
    return binding;
}

std::vector<uint32_t> Scopes::EndBlock() {
    std::vector<uint32_t> slots = std::move(scopes_.back().slots);
    scopes_.pop_back();
    return slots;
}

void Scopes::BeginStruct() {
    BeginBlock();
    scopes_.back().isStruct = true;
}

void Scopes::DeclareMember(const std::wstring& name, uint32_t index) {
    scopes_.back().names[Lower(name)] = {Binding::Kind::Member, index, nullptr};
}

void Scopes::BeginFunction() {
    frames_.push_back(0);
    BeginBlock();
}

uint32_t Scopes::EndFunction() {
    EndBlock();
    const uint32_t slots = frames_.back();
    frames_.pop_back();
    return slots;
}

void Scopes::Reset() {
    scopes_.clear();
    frames_ = {0};
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

void GlobalTable::Clear() {
    for (const auto& [name, global] : globals_) {
        global->value = Value();
        global->home = nullptr;
    }
}

} // namespace simhost::script
