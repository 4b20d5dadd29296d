#pragma once
#include <cstdint>

#include "simhost/maxscript/ast.h"
#include "simhost/maxscript/globals.h"

namespace simhost::maxscript {

struct ScopeOptions {
    /// Also variables that were never declared, only assigned, count as an outer function's. Off
    /// where globals of other files are unknown, as when a file is only checked.
    bool strictImplicits = true;
};

/// Gives every name of a top-level expression its meaning, and checks what the language checks
/// before anything runs: locals only inside brackets, no use of an outer function's variables, no
/// new error thrown by a catch. Throws ScriptError (Compile).
/// Returns the number of slots that the expression's own frame needs.
uint32_t BindScopes(Expr& root, GlobalTable& globals, const ScopeOptions& options = {});

/// Slot of `this` in a Binding::Kind::Member.
inline constexpr uint32_t thisSlot = UINT32_MAX;

} // namespace simhost::maxscript
