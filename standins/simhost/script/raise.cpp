#include "simhost/script/raise.h"

#include "simhost/script/convert.h"
#include "simhost/script/error.h"

namespace simhost::script {

void RaiseRuntime(std::wstring message) {
    throw ScriptError(ScriptError::Kind::Runtime, std::move(message));
}

void RaiseConversion(const Value& value, std::wstring_view type) {
    RaiseRuntime(L"Unable to convert: " + QuotedText(value) + L" to type: " + std::wstring(type));
}

void RaiseUnknownProperty(std::wstring_view name, const Value& value) {
    RaiseRuntime(L"Unknown property: \"" + std::wstring(name) + L"\" in " + QuotedText(value));
}

void RaiseNoFunction(std::wstring_view function, const Value& value) {
    RaiseRuntime(L"No \"" + std::wstring(function) + L"\" function for " + QuotedText(value));
}

void RaiseArgumentCount(std::wstring_view function, size_t wanted, size_t got) {
    RaiseRuntime(L"Argument count error: " + std::wstring(function) + L" wanted " +
                 std::to_wstring(wanted) + L", got " + std::to_wstring(got));
}

void RaiseNotCallable(const Value& value) {
    RaiseRuntime(L"Type error: Call needs function or class, got: " + QuotedText(value));
}

} // namespace simhost::script
