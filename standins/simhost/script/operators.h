#pragma once
#include "simhost/script/ast.h"

namespace simhost::script {

/// a op b. Throws what the host throws for kinds that do not go together.
[[nodiscard]] Value Apply(Interpreter& interpreter, BinaryOp op, const Value& a, const Value& b);
/// -a
[[nodiscard]] Value Negate(const Value& a);

} // namespace simhost::script
