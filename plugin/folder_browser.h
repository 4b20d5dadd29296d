#pragma once
#include <windows.h>

#include <optional>
#include <string>

namespace brimwave {

/// Lets the user choose a folder, starting at `current` where that exists. Nothing on Cancel.
[[nodiscard]] std::optional<std::wstring> BrowseForFolder(HWND owner, const std::wstring& current);

} // namespace brimwave
