#pragma once
#include "../ifnpub.h"
#include "../maxapi.h"

namespace MAXScript {
enum class ScriptSource : int { NotSpecified = 0, Embedded = 1, NonEmbedded = 2, Dynamic = 3 };
}

/// Compiles and runs a script on the calling thread. FALSE when it does not compile or an error
/// ends it; then an error box shows the message unless errors are quiet. `value` receives the
/// result of the last expression.
BOOL ExecuteMAXScriptScript(const MCHAR* script, MAXScript::ScriptSource source,
                            BOOL quietErrors = FALSE, FPValue* value = nullptr,
                            BOOL logQuietErrors = TRUE);
