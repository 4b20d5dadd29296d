#include "service/url.h"

#include "host/number_text.h"

#include <algorithm>
#include <limits>

namespace brimwave {
namespace {

constexpr bool IsHighSurrogate(char32_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}
constexpr bool IsLowSurrogate(char32_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

// Takes one code point from the front of `text`, which must not be empty.
char32_t TakeCodePoint(std::wstring_view& text) {
    const char32_t unit = static_cast<char32_t>(text.front()) & 0xFFFF;
    text.remove_prefix(1);
    if (IsHighSurrogate(unit) && !text.empty()) {
        const char32_t next = static_cast<char32_t>(text.front()) & 0xFFFF;
        if (IsLowSurrogate(next)) {
            text.remove_prefix(1);
            return 0x10000 + ((unit - 0xD800) << 10) + (next - 0xDC00);
        }
    }
    return IsHighSurrogate(unit) || IsLowSurrogate(unit) ? 0xFFFD : unit;
}

constexpr bool IsUnreserved(char32_t c) {
    return (c >= U'a' && c <= U'z') || (c >= U'A' && c <= U'Z') || (c >= U'0' && c <= U'9') ||
           c == U'-' || c == U'.' || c == U'_' || c == U'~';
}

void AppendEscaped(std::wstring& out, char32_t byte) {
    constexpr std::wstring_view hex = L"0123456789ABCDEF";
    out += L'%';
    out += hex[byte >> 4 & 0xF];
    out += hex[byte & 0xF];
}

void AppendEscapedUtf8(std::wstring& out, char32_t c) {
    if (c < 0x80) {
        AppendEscaped(out, c);
        return;
    }
    if (c < 0x800) {
        AppendEscaped(out, 0xC0 | c >> 6);
    } else if (c < 0x10000) {
        AppendEscaped(out, 0xE0 | c >> 12);
        AppendEscaped(out, 0x80 | (c >> 6 & 0x3F));
    } else {
        AppendEscaped(out, 0xF0 | c >> 18);
        AppendEscaped(out, 0x80 | (c >> 12 & 0x3F));
        AppendEscaped(out, 0x80 | (c >> 6 & 0x3F));
    }
    AppendEscaped(out, 0x80 | (c & 0x3F));
}

} // namespace

bool ParseUrl(std::wstring_view url, ParsedUrl& out) {
    constexpr std::wstring_view separator = L"://";
    const auto schemeEnd = url.find(separator);
    if (schemeEnd == std::wstring_view::npos)
        return false;
    out.secure = url.substr(0, schemeEnd) == L"https";
    out.port = out.secure ? 443 : 80;

    const auto authority = url.substr(schemeEnd + separator.size());
    const auto slash = authority.find(L'/');
    auto host = authority.substr(0, slash);
    out.path = slash == std::wstring_view::npos ? L"/" : authority.substr(slash);

    if (const auto colon = host.find(L':'); colon != std::wstring_view::npos) {
        using Limits = std::numeric_limits<std::int32_t>;
        const std::int64_t port = ParseInteger(host.substr(colon + 1)).value_or(0);
        out.port = static_cast<std::uint16_t>(
            std::clamp<std::int64_t>(port, Limits::min(), Limits::max()));
        host = host.substr(0, colon);
    }
    out.host = host;
    return true;
}

std::wstring UrlEncode(std::wstring_view text) {
    std::wstring out;
    out.reserve(text.size());
    while (!text.empty()) {
        const char32_t c = TakeCodePoint(text);
        if (IsUnreserved(c))
            out += static_cast<wchar_t>(c);
        else
            AppendEscapedUtf8(out, c);
    }
    return out;
}

} // namespace brimwave
