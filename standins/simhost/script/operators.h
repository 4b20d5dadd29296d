#pragma once
#include "simhost/script/ast.h"
#include "simhost/script/value.h"

namespace simhost::script {

class Interpreter;

/// a op b. Throws what the host throws for kinds that do not go together.
[[nodiscard]] Value Apply(Interpreter& interpreter, BinaryOp op, const Value& a, const Value& b);
/// -a
[[nodiscard]] Value Negate(const Value& a);
/// -1, 0 or 1 as `a` comes before, with or behind `b`. Numbers, times and strings only.
[[nodiscard]] int Compare(const Value& a, const Value& b, const wchar_t* op);

} // namespace simhost::script
