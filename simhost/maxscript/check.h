#pragma once
#include <optional>
#include <string>

#include "simhost/maxscript/error.h"

namespace simhost::maxscript {

/// Reads a whole script and checks its scopes without running it. The first error, if any.
[[nodiscard]] std::optional<ScriptError> CheckScript(std::wstring text);

} // namespace simhost::maxscript
