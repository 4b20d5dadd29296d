// The SDK's way into the script engine.
#include "simhost/bindings/bindings.h"
#include "simhost/scene/scene.h"
#include "simhost/script/interpreter.h"
#include "simhost/script/objects.h"

#include <maxscript/maxscript.h>

namespace simhost::script {
namespace {

// What print and format write, by lines.
void LogListener(std::wstring_view text) {
    while (!text.empty() && (text.back() == L'\n' || text.back() == L'\r'))
        text.remove_suffix(1);
    GetCOREInterface()->Log()->LogEntry(SYSLOG_DEBUG, NO_DIALOG, L"MAXScript Listener", L"%s",
                                        std::wstring(text).c_str());
}

// The engine that the host's scripts share; its global variables live as long as the program.
Interpreter& HostInterpreter() {
    static const auto interpreter = [] {
        InterpreterOptions options;
        options.listener = LogListener;
        auto made = std::make_unique<Interpreter>(std::move(options));
        RegisterHost(*made);
        return made;
    }();
    return *interpreter;
}

void Load(FPValue& value, const Value& result) {
    if (const auto* text = result.As<StringObject>()) {
        value.LoadString(text->Text());
        return;
    }
    switch (result.GetType()) {
    case Type::Boolean:
        value.type = TYPE_BOOL;
        value.b = result.AsBool() ? TRUE : FALSE;
        break;
    case Type::Integer:
        value.type = TYPE_INT;
        value.i = static_cast<int>(result.AsWhole());
        break;
    case Type::Float:
        value.type = TYPE_FLOAT;
        value.f = static_cast<float>(result.AsReal());
        break;
    default: // stays TYPE_VOID
        break;
    }
}

void LogFailure(const ScriptError& error, bool quiet) {
    const std::wstring text = L"-- " + error.Message() + L" (line " +
                              std::to_wstring(error.Where().line) + L", column " +
                              std::to_wstring(error.Where().column) + L")";
    GetCOREInterface()->Log()->LogEntry(SYSLOG_ERROR, quiet ? NO_DIALOG : DISPLAY_DIALOG,
                                        L"MAXScript", L"%s", text.c_str());
}

} // namespace

std::function<void(std::wstring_view)>& ScriptObserver() {
    static std::function<void(std::wstring_view)> observer;
    return observer;
}

} // namespace simhost::script

BOOL ExecuteMAXScriptScript(const MCHAR* script, MAXScript::ScriptSource /*source*/,
                            BOOL quietErrors, FPValue* value, BOOL logQuietErrors) {
    using namespace simhost::script;
    if (value)
        value->Init();
    const MCHAR* const run =
        simhost::Scene::Current().faults.Give(simhost::Call::ExecuteMAXScriptScript, script);
    if (!run)
        return FALSE;
    if (const auto& observer = ScriptObserver())
        observer(run);
    try {
        const Value result = HostInterpreter().Run(run);
        if (value)
            Load(*value, result);
        return TRUE;
    } catch (const ScriptError& error) { // the engine turns everything into one
        if (!quietErrors || logQuietErrors)
            LogFailure(error, quietErrors != FALSE);
        return FALSE;
    }
}
