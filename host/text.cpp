#include "host/text.h"

#include <windows.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cwctype>

namespace brimwave {
namespace {

bool IsHighSurrogate(wchar_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}

bool IsBlank(wchar_t unit) {
    return unit == L' ' || unit == L'\t' || unit == L'\r' || unit == L'\n';
}

} // namespace

size_t Utf8PieceLength(std::wstring_view text) {
    if (text.size() <= maxUtf8Piece)
        return text.size();
    return IsHighSurrogate(text[maxUtf8Piece - 1]) ? maxUtf8Piece - 1 : maxUtf8Piece;
}

size_t ConvertUtf8Piece(std::wstring_view text, char* out) {
    if (text.empty())
        return 0;
    const int written =
        WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), out,
                            static_cast<int>(MaxUtf8Size(text.size())), nullptr, nullptr);
    return written > 0 ? static_cast<size_t>(written) : 0;
}

std::string WideToUtf8(std::wstring_view text) {
    std::string utf8;
    while (!text.empty()) {
        const size_t length = Utf8PieceLength(text);
        const size_t size = utf8.size();
        utf8.resize(size + MaxUtf8Size(length));
        utf8.resize(size + ConvertUtf8Piece(text.substr(0, length), utf8.data() + size));
        text.remove_prefix(length);
    }
    return utf8;
}

std::wstring ToLowerW(std::wstring_view text) {
    std::wstring lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), [](wchar_t unit) {
        return static_cast<wchar_t>(std::towlower(static_cast<std::wint_t>(unit)));
    });
    return lower;
}

bool ParseFloat(std::wstring_view text, float& value) {
    while (!text.empty() && IsBlank(text.front()))
        text.remove_prefix(1);
    if (!text.empty() && text.front() == L'+')
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

} // namespace brimwave
