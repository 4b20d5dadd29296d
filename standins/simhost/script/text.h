#pragma once
// Letters and case for script text. Every wstring here is a sequence of UTF-16 units.
#include <string>
#include <string_view>

namespace simhost::script {

/// Lower and upper case of one unit: Latin, Greek, Cyrillic and Armenian letters. The result does
/// not depend on the process's locale, so a script reads the same on every machine.
[[nodiscard]] wchar_t LowerUnit(wchar_t unit);
[[nodiscard]] wchar_t UpperUnit(wchar_t unit);
[[nodiscard]] std::wstring Lower(std::wstring_view text);
[[nodiscard]] std::wstring Upper(std::wstring_view text);
[[nodiscard]] bool EqualNoCase(std::wstring_view a, std::wstring_view b);

/// Whether the pattern (`*` any run, `?` any one unit) fits the whole text, case-sensitive. Never
/// takes more than text times pattern steps.
[[nodiscard]] bool MatchesWildcards(std::wstring_view text, std::wstring_view pattern);

/// Blank inside a line: blank, tab, no-break and wide spaces, stray byte-order marks, controls.
[[nodiscard]] bool IsBlank(wchar_t unit);
[[nodiscard]] bool IsDigit(wchar_t unit);
[[nodiscard]] bool IsLetter(wchar_t unit); // letters of any alphabet and the underscore
[[nodiscard]] bool IsWordUnit(wchar_t unit);

/// -1 for anything that is no hexadecimal digit.
[[nodiscard]] int HexDigit(wchar_t unit);

} // namespace simhost::script
