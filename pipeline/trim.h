#pragma once
#include <string_view>

namespace brimwave {

/// `text` without blanks, tabs, carriage returns and line feeds at both ends.
[[nodiscard]] constexpr std::wstring_view Trimmed(std::wstring_view text) {
    constexpr std::wstring_view blanks = L" \t\r\n";
    const auto first = text.find_first_not_of(blanks);
    if (first == std::wstring_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

} // namespace brimwave
