#include "service/url.h"

#include "host/number_text.h"
#include "host/text.h"

#include <algorithm>
#include <limits>

namespace brimwave {
namespace {

constexpr bool IsUnreserved(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' ||
           c == '.' || c == '_' || c == '~';
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
    constexpr std::wstring_view hex = L"0123456789ABCDEF";
    std::wstring out;
    for (const char c : WideToUtf8(text)) {
        if (IsUnreserved(c)) {
            out += static_cast<wchar_t>(c);
            continue;
        }
        const auto byte = static_cast<unsigned char>(c);
        out += L'%';
        out += hex[byte >> 4];
        out += hex[byte & 15];
    }
    return out;
}

} // namespace brimwave
