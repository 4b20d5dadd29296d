#include "host/script.h"

#include "host/attempt.h"
#include "host/sdk_compat.h"

#include <ifnpub.h>

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

std::wstring_view TextOf(std::string_view name,
                         std::initializer_list<ScriptPlaceholder> placeholders) {
    for (const ScriptPlaceholder& placeholder : placeholders)
        if (placeholder.name == name)
            return placeholder.text;
    return {};
}

/// A text that stands for `text` inside a script's double quotes.
std::wstring Escaped(std::wstring_view text) {
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

} // namespace

std::wstring FillScript(std::string_view script,
                        std::initializer_list<ScriptPlaceholder> placeholders) {
    std::wstring filled;
    for (size_t open; (open = script.find("{{")) != std::string_view::npos;) {
        const size_t length = script.find("}}", open) - open;
        const std::wstring_view text = TextOf(script.substr(open + 2, length - 2), placeholders);
        filled.append(script.begin(), script.begin() + open);
        if (filled.ends_with(L'"'))
            filled += Escaped(text);
        else
            filled += text;
        script.remove_prefix(open + length + 2);
    }
    return filled.append(script.begin(), script.end());
}

std::optional<std::wstring> RunScriptString(const std::wstring& script) {
    ScriptValue value;
    // An error inside the host's engine is a script without a result.
    if (!AttemptOr(FALSE, [&] { return ExecuteScript(script.c_str(), true, &value.Get()); }))
        return std::nullopt;
    if (value.Get().type != TYPE_STRING || !value.Get().s)
        return std::nullopt;
    return std::wstring(value.Get().s);
}

void RunScript(const std::wstring& script) {
    // Of a script that fails half-way, what it had done by then stays.
    Attempt([&] { ExecuteScript(script.c_str(), false, nullptr); });
}

} // namespace brimwave
