#pragma once
#include <string>

namespace brimwave {

/// Empty when there is none of that name.
[[nodiscard]] std::wstring ReadEnvironmentVariable(const wchar_t* name);

} // namespace brimwave
