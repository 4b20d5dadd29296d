#pragma once
#include <cstdint>

#include "simhost/script/ast.h"
#include "simhost/script/globals.h"

namespace simhost::script {

struct ScopeOptions {
    /// Of an outer function's names, also those that were never declared, only assigned, and those
    /// of its functions and structs are out of reach. Off where a file is only checked: globals of
    /// other files are unknown there, and whether hosts let sister functions call each other is not
    /// documented.
    bool strict = true;
};

/// Gives every name of a top-level expression its meaning, and checks what the language checks
/// before anything runs: locals only inside brackets, no use of an outer function's variables, no
/// new error thrown by a catch. Throws ScriptError (Compile).
/// Returns the number of slots that the expression's own frame needs.
uint32_t BindScopes(Expr& root, GlobalTable& globals, const ScopeOptions& options = {});

/// Slot of `this` in a Binding::Kind::Member.
inline constexpr uint32_t thisSlot = UINT32_MAX;

} // namespace simhost::script
