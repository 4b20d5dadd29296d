#pragma once
#include <optional>
#include <string>
#include <string_view>

namespace brimwave {

/// Runs a script in the host, errors kept quiet, and returns its text. Nothing when the host
/// refuses or breaks off the script, and when its value is no text.
[[nodiscard]] std::optional<std::wstring> RunScriptString(const std::wstring& script);

/// Runs a script for what it does to the scene. The host tells its user of an error.
void RunScript(const std::wstring& script);

/// A text that stands for `text` inside a script's double quotes: no name can end the string,
/// change by an escape, or run code.
[[nodiscard]] std::wstring EscapeScriptString(std::wstring_view text);

} // namespace brimwave
