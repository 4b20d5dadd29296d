#include "host/sdk_compat.h"

#include <maxscript/maxscript.h> // heavy, so kept out of the header

namespace brimwave {

BOOL ExecuteScript(const MCHAR* script, bool quiet, FPValue* value) {
#if MAX_VERSION_MAJOR < 24
    return ExecuteMAXScriptScript(script, quiet, value);
#else
    return ExecuteMAXScriptScript(script, MAXScript::ScriptSource::NonEmbedded, quiet, value,
                                  quiet);
#endif
}

} // namespace brimwave
