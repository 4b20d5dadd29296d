#pragma once
// The parts of a path; both "\" and "/" separate.
#include <string_view>

namespace brimwave {

/// The path up to its last separator, which is kept; empty when there is none.
[[nodiscard]] constexpr std::wstring_view FolderOf(std::wstring_view path) {
    return path.substr(0, path.find_last_of(L"\\/") + 1); // npos + 1 is 0
}

/// What follows the last separator; the whole path when there is none.
[[nodiscard]] constexpr std::wstring_view FileNameOf(std::wstring_view path) {
    return path.substr(FolderOf(path).size());
}

} // namespace brimwave
