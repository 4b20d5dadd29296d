#include <maxscript/maxscript.h>

BOOL ExecuteMAXScriptScript(const MCHAR* /*script*/, MAXScript::ScriptSource /*source*/,
                            BOOL /*quietErrors*/, FPValue* value, BOOL /*logQuietErrors*/) {
    if (value)
        value->Init();
    if (Interface* host = GetCOREInterface()) {
        host->Log()->LogEntry(SYSLOG_ERROR, NO_DIALOG, L"MAXScript",
                              L"This build of the host runs no scripts");
    }
    return FALSE;
}
