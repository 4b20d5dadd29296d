#pragma once
#include <string_view>

namespace brimwave {

/// `text` without blanks, tabs, carriage returns and line feeds at both ends.
[[nodiscard]] constexpr std::wstring_view Trimmed(std::wstring_view text) {
    constexpr std::wstring_view kBlanks = L" \t\r\n";
    const auto first = text.find_first_not_of(kBlanks);
    if (first == std::wstring_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

} // namespace brimwave
