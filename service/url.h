#pragma once
#include <cstdint>
#include <string>
#include <string_view>

namespace brimwave {

/// The pieces of an absolute URL.
struct ParsedUrl {
    std::wstring host;        ///< without port
    std::wstring path;        ///< from the first "/" after the host on, query included
    std::uint16_t port = 443; ///< from the URL, else 443 for "https" and 80 for the rest
    bool secure = true;       ///< exactly when the scheme is "https" (case matters)
};

/// Splits an absolute URL. False, with `out` untouched, when it is shorter than 3 characters or
/// holds no "://". Nothing else is checked: an unknown scheme counts as not secure, a port text
/// without digits gives 0, and a number beyond 16 bits keeps its low 16 bits. User names and
/// bracketed IPv6 hosts are not understood.
[[nodiscard]] bool ParseUrl(std::wstring_view url, ParsedUrl& out);

/// Percent-encodes the UTF-8 form of `text`: ASCII letters, digits and "-._~" stay, every other
/// byte becomes "%" and two upper-case hexadecimal digits. A lone surrogate counts as U+FFFD.
[[nodiscard]] std::wstring UrlEncode(std::wstring_view text);

} // namespace brimwave
