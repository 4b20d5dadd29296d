#pragma once
#include <string>
#include <string_view>

namespace brimwave {

// None of these tells a failure: the stage that needs the result finds out by itself.

void MakeFolder(const std::wstring& path);

/// Copies over whatever stands at `to`.
void CopyOver(const std::wstring& from, const std::wstring& to);

void RemoveFile(const std::wstring& path);

/// The path up to its last "\" or "/", which is kept; empty when there is none.
[[nodiscard]] std::wstring_view FolderOf(std::wstring_view path);

} // namespace brimwave
