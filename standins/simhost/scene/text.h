#pragma once
// Text conversions of the stand-in host. A wide text is a sequence of UTF-16 units in every build,
// also where wchar_t is wider.
#include <string>
#include <string_view>

namespace simhost {

/// Broken sequences become U+FFFD.
[[nodiscard]] std::wstring Utf8ToWide(std::string_view text);
/// Lone surrogates become U+FFFD.
[[nodiscard]] std::string WideToUtf8(std::wstring_view text);
/// One unit in lower case.
[[nodiscard]] wchar_t FoldUnit(wchar_t unit);
/// Lower case, letter by letter; for comparing names.
[[nodiscard]] std::wstring Fold(std::wstring_view text);
/// The text after the last slash of either kind.
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
