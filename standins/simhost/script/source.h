#pragma once
// Script files come in every encoding that editors of two decades wrote.
#include <optional>
#include <string>
#include <string_view>

namespace simhost::script {

/// The text of a script file as UTF-16: UTF-8 and UTF-16 (both byte orders) by their marks, UTF-16
/// without a mark when every other byte is zero, UTF-8 without a mark when all bytes are valid
/// UTF-8, Windows-1252 otherwise. The mark is not part of the text.
[[nodiscard]] std::wstring DecodeSource(std::string_view bytes);

/// The shape of a script in one of the East Asian code pages, whose letters take two bytes, of
/// which the second may look like a backslash or a bracket. Every such letter becomes the same
/// one. Nothing for files that cannot be in such a code page.
[[nodiscard]] std::optional<std::wstring> DecodeTwoByteShape(std::string_view bytes);

/// The bytes of a file; nothing when it cannot be read or holds more than `limit` bytes.
[[nodiscard]] std::optional<std::string> ReadWholeFile(std::wstring_view path, size_t limit);

} // namespace simhost::script
