#pragma once
// The code page Windows-1252, in which every byte is a character; the five bytes that it leaves
// unassigned keep their number.
#include <optional>
#include <string>
#include <string_view>

namespace cp1252 {

[[nodiscard]] std::wstring ToWide(std::string_view bytes);
/// Null for a letter that the page lacks.
[[nodiscard]] std::optional<char> FromUnit(wchar_t unit);

} // namespace cp1252
