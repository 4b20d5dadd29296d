#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace brimwave {

/// What came of one request. Every failure is told here; nothing throws and nothing is shown.
struct HttpResult {
    bool ok = false;         ///< a status was read and lies in 200..299
    std::int32_t status = 0; ///< HTTP status; 0 when none was obtained
    std::wstring text;       ///< the body, decoded from UTF-8, or an error message
};

/// Sends one request and reads the whole answer; blocks until then. Each call opens and closes a
/// session of its own, so calls may run on several threads at once. Certificates are checked, the
/// system's proxy settings, time-outs and redirect rules apply as the platform sets them (60 s to
/// connect, 30 s for each send and receive; redirects are followed, but never from https to http).
///
/// `url` is absolute (see ParseUrl); `method` is the verb. `token` is always sent, as
/// "Authorization: Bearer " + token, even when empty; one that cannot stand in a header (see
/// IsHeaderToken) is refused with unusableToken before anything is opened. `body` is UTF-8, sent
/// byte for byte with a JSON content type; it is not copied. `extraHeaders` are whole header lines,
/// separated by "\r\n", without a trailing line break.
[[nodiscard]] HttpResult HttpRequest(std::wstring_view url, std::wstring_view method,
                                     std::wstring_view token,
                                     std::optional<std::string_view> body = std::nullopt,
                                     std::optional<std::wstring_view> extraHeaders = std::nullopt);

/// HttpRequest with "GET", no body and no extra headers.
[[nodiscard]] HttpResult HttpGet(std::wstring_view url, std::wstring_view token);

/// True when every character of `token` is printable ASCII (a blank included). Line breaks would
/// start a header of the token's own; other control characters and text beyond ASCII are refused
/// with them, since the platform maps such text to bytes by code page, where one character may
/// well become a line break.
[[nodiscard]] bool IsHeaderToken(std::wstring_view token);

/// The text of the answer to a token that IsHeaderToken refuses. It holds the phrase by which
/// FetchBalance knows a rejected token, so the user sees the usual "Invalid token".
inline constexpr std::wstring_view unusableToken =
    L"invalid token: it holds a character that cannot be sent in a header";

} // namespace brimwave
