#pragma once
#include <optional>
#include <string>

#include "simhost/script/error.h"

namespace simhost::script {

/// Reads a whole script and checks its scopes without running it. The first error, if any.
[[nodiscard]] std::optional<ScriptError> CheckScript(std::wstring text);

} // namespace simhost::script
