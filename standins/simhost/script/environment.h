#pragma once
#include <optional>
#include <string>

namespace simhost::script {

/// The process's environment variable; nothing when it is unset.
[[nodiscard]] std::optional<std::wstring> ReadEnvironment(const std::wstring& name);
/// An empty value removes the variable. False when the system refuses.
bool WriteEnvironment(const std::wstring& name, const std::wstring& value);

} // namespace simhost::script
