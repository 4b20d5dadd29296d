#pragma once
// Paths of the scene's files, with slashes of either kind.
#include <string>
#include <string_view>

namespace simhost {

/// The text after the last slash.
[[nodiscard]] std::wstring_view FileNameOf(std::wstring_view path);
/// The text up to and including the last slash; empty without one.
[[nodiscard]] std::wstring_view FolderOf(std::wstring_view path);
/// Whether the path says where it is without a base folder: "C:\..", "\\..", "/..".
[[nodiscard]] bool IsAbsolutePath(std::wstring_view path);
/// Joins with one slash of the kind that the base uses.
[[nodiscard]] std::wstring JoinPath(std::wstring_view base, std::wstring_view relative);
/// Whether there is such a file (folders do not count).
[[nodiscard]] bool FileExists(const std::wstring& path);

} // namespace simhost
