#pragma once
// UTF-8 of all stand-ins. A wide text is a sequence of UTF-16 units in every build, also where
// wchar_t is wider.
#include <string>
#include <string_view>

namespace utf8 {

/// Whether every sequence is well formed: none overlong, no surrogate, nothing above U+10FFFF.
[[nodiscard]] bool IsValid(std::string_view text);
/// Broken sequences become U+FFFD.
[[nodiscard]] std::wstring ToWide(std::string_view text);
/// Lone surrogates become U+FFFD.
[[nodiscard]] std::string FromWide(std::wstring_view text);

} // namespace utf8
