#include "host/number_text.h"

#include "host/text.h"

#include <charconv>
#include <cmath>
#include <limits>

namespace brimwave {

bool ParseFloat(std::wstring_view text, float& value) {
    text = Trimmed(text);
    if (text.starts_with(L'+'))
        text.remove_prefix(1);
    std::string digits;
    for (const wchar_t unit : text.substr(0, 64)) {
        if (unit > 0x7E)
            break;
        digits.push_back(static_cast<char>(unit));
    }
    double number = 0;
    const auto parsed = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (parsed.ec != std::errc() || !std::isfinite(number))
        return false;
    value = static_cast<float>(number);
    return true;
}

std::optional<std::int64_t> ParseInteger(std::wstring_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(L" \t\n\v\f\r"), text.size()));
    const bool negative = text.starts_with(L'-');
    if (negative || text.starts_with(L'+'))
        text.remove_prefix(1);
    text = text.substr(0, text.find_first_not_of(L"0123456789"));
    if (text.empty())
        return std::nullopt;
    constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
    std::int64_t value = 0;
    for (const wchar_t c : text) {
        const int digit = c - L'0';
        value = value > (most - digit) / 10 ? most : value * 10 + digit;
    }
    return negative ? -value : value;
}

} // namespace brimwave
