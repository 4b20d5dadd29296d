#include "host/script.h"

#include "host/attempt.h"
#include "host/sdk_compat.h"

#include <maxscript/maxscript.h>

namespace brimwave {
namespace {

/// Frees what the value holds on every path.
class ScriptValue {
  public:
    ScriptValue() { value_.Init(); }
    ~ScriptValue() { value_.Free(); }
    ScriptValue(const ScriptValue&) = delete;
    ScriptValue& operator=(const ScriptValue&) = delete;
    [[nodiscard]] FPValue& Get() { return value_; }

  private:
    FPValue value_;
};

/// Quiet errors go to the host's log, the others to its user.
BOOL Execute(const MCHAR* script, bool quiet, FPValue* value) {
#if MAX_VERSION_MAJOR < 24
    return ExecuteMAXScriptScript(script, quiet, value);
#else
    return ExecuteMAXScriptScript(script, MAXScript::ScriptSource::NonEmbedded, quiet, value,
                                  quiet);
#endif
}

} // namespace

std::optional<std::wstring> RunScriptString(const std::wstring& script) {
    ScriptValue value;
    // An error inside the host's engine is a script without a result.
    if (!AttemptOr(FALSE, [&] { return Execute(script.c_str(), true, &value.Get()); }))
        return std::nullopt;
    if (value.Get().type != TYPE_STRING || !value.Get().s)
        return std::nullopt;
    return std::wstring(value.Get().s);
}

void RunScript(const std::wstring& script) {
    // Of a script that fails half-way, what it had done by then stays.
    Attempt([&] { Execute(script.c_str(), false, nullptr); });
}

std::wstring EscapeScriptString(std::wstring_view text) {
    std::wstring escaped;
    escaped.reserve(text.size() + 8);
    for (const wchar_t unit : text) {
        if (unit == L'"' || unit == L'\\')
            escaped += L'\\';
        if (unit == L'\n')
            escaped += L"\\n";
        else if (unit == L'\r')
            escaped += L"\\r";
        else
            escaped += unit;
    }
    return escaped;
}

} // namespace brimwave
