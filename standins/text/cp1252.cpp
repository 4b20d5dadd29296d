#include "text/cp1252.h"

#include <algorithm>

namespace cp1252 {

namespace {

// 0x80..0x9f; the rest of the page is Latin-1.
constexpr wchar_t units80[32] = {0x20ac, 0x81,   0x201a, 0x192,  0x201e, 0x2026, 0x2020, 0x2021,
                                 0x2c6,  0x2030, 0x160,  0x2039, 0x152,  0x8d,   0x17d,  0x8f,
                                 0x90,   0x2018, 0x2019, 0x201c, 0x201d, 0x2022, 0x2013, 0x2014,
                                 0x2dc,  0x2122, 0x161,  0x203a, 0x153,  0x9d,   0x17e,  0x178};

wchar_t ToUnit(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte >= 0x80 && byte < 0xa0 ? units80[byte - 0x80] : static_cast<wchar_t>(byte);
}

} // namespace

std::wstring ToWide(std::string_view bytes) {
    std::wstring wide(bytes.size(), L'\0');
    std::transform(bytes.begin(), bytes.end(), wide.begin(), ToUnit);
    return wide;
}

std::optional<char> FromUnit(wchar_t unit) {
    if (unit < 0x80 || (unit >= 0xa0 && unit < 0x100))
        return static_cast<char>(unit);
    const auto* found = std::find(std::begin(units80), std::end(units80), unit);
    if (found == std::end(units80))
        return std::nullopt;
    return static_cast<char>(0x80 + (found - units80));
}

} // namespace cp1252
