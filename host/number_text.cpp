#include "host/number_text.h"

#include "host/text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>
#include <limits>

namespace brimwave {
namespace {

constexpr size_t longestNumber = 32;

// The text of a number between these has no exponent, and most numbers of a scene are such. To
// write them here, rather than by to_chars' general form, saves 15 % of the instructions of a whole
// package (12 of 78 million for 4000 objects with 200 materials).
constexpr double leastFixed = 1e-4;
constexpr double mostFixed = 999999.5;

/// Places a point before the last `decimals` digits, with as many zeros before them as it takes.
char* WriteWithPoint(char* out, std::uint32_t digits, int decimals) {
    char text[16];
    const auto count = static_cast<int>(std::to_chars(text, text + sizeof text, digits).ptr - text);
    const char* next = text;
    for (int place = std::max(count - decimals, 1); place > 0; --place)
        *out++ = count > decimals ? *next++ : '0';
    if (decimals == 0)
        return out;
    *out++ = '.';
    out = std::fill_n(out, std::max(decimals - count, 0), '0');
    return std::copy(next, static_cast<const char*>(text) + count, out);
}

char* WriteFixed(char* out, double magnitude) {
    // A float has 24 bits and the power of ten at most 21 beside its twos: every product is exact.
    int decimals = 0;
    for (; magnitude < 100000; magnitude *= 10)
        ++decimals;
    auto digits = static_cast<std::uint32_t>(magnitude);
    const double rest = magnitude - digits;
    if (rest > 0.5 || (rest == 0.5 && digits % 2 == 1)) // ties to even
        ++digits;
    while (decimals > 0 && digits % 10 == 0) {
        digits /= 10;
        --decimals;
    }
    return WriteWithPoint(out, digits, decimals);
}

/// Six significant digits of a number that is finite and not negative.
char* WriteMagnitude(char* out, char* end, double magnitude) {
    if (magnitude < mostFixed) {
        const auto whole = static_cast<std::uint32_t>(magnitude);
        if (whole == magnitude)
            return std::to_chars(out, end, whole).ptr;
        if (magnitude >= leastFixed)
            return WriteFixed(out, magnitude);
    }
    return std::to_chars(out, end, magnitude, std::chars_format::general, 6).ptr;
}

void AppendAscii(std::wstring& out, std::string_view text) {
    wchar_t wide[longestNumber];
    std::copy(text.begin(), text.end(), wide);
    out.append(wide, text.size());
}

} // namespace

void AppendNumber(std::wstring& out, float value) {
    char text[longestNumber];
    text[0] = '-';
    char* const begin = text + std::signbit(value);
    const char* const end =
        WriteMagnitude(begin, std::end(text), std::abs(static_cast<double>(value)));
    AppendAscii(out, {text, static_cast<size_t>(end - text)});
}

void AppendNumber(std::wstring& out, std::int64_t value) {
    char text[longestNumber];
    const char* const end = std::to_chars(text, std::end(text), value).ptr;
    AppendAscii(out, {text, static_cast<size_t>(end - text)});
}

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
