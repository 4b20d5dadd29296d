#pragma once
// Scripts for the host's engine: made from the texts embedded in the library, and run.
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

namespace brimwave {

/// What stands in a script in place of `{{name}}`.
struct ScriptPlaceholder {
    std::string_view name;
    std::wstring_view text;
};

/// An embedded script (plain ASCII) as the host takes it, every placeholder filled. A text that
/// comes right behind a double quote is escaped: no name can end the string, change by an escape,
/// or run code. Any other is placed as it stands, and none is searched for placeholders. One whose
/// name is not given is left out.
[[nodiscard]] std::wstring FillScript(std::string_view script,
                                      std::initializer_list<ScriptPlaceholder> placeholders = {});

/// Runs a script in the host, errors kept quiet, and returns its text. Nothing when the host
/// refuses or breaks off the script, and when its value is no text.
[[nodiscard]] std::optional<std::wstring> RunScriptString(const std::wstring& script);

/// Runs a script for what it does to the scene. The host tells its user of an error.
void RunScript(const std::wstring& script);

} // namespace brimwave
