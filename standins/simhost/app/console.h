#pragma once
#include <string_view>

namespace simhost {

/// Text as it stands, as UTF-8, to standard output.
void Print(std::wstring_view text);
/// One line of text, as UTF-8, to standard output; line breaks inside it become " / ".
void Say(std::wstring_view line);
/// One line beginning "error: ", to standard error.
void SayError(std::wstring_view line);

} // namespace simhost
