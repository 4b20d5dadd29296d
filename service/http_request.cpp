// HttpRequest on WinHTTP: the one file of this folder that needs the platform's network.
#include "service/http.h"

#include "host/text.h"
#include "service/url.h"

#include <windows.h>
#include <winhttp.h>

#include <limits>
#include <memory>

namespace brimwave {
namespace {

constexpr const wchar_t* userAgent = L"Brimwave-Platform/2.0";

struct InternetCloser {
    void operator()(HINTERNET handle) const { WinHttpCloseHandle(handle); }
};
using InternetHandle = std::unique_ptr<void, InternetCloser>;

HttpResult Failure(std::wstring text) {
    return {.text = std::move(text)};
}

// `error` is taken before any handle is closed: closing may change it.
HttpResult Failure(std::wstring_view what, DWORD error) {
    return Failure(std::wstring(what) + L", GetLastError=" + std::to_wstring(error));
}

// `line` ends without a line break. A header that is refused is left out, as documented for the
// service: the request goes out all the same and the service judges it.
void AddHeader(HINTERNET request, std::wstring line) {
    line += L"\r\n";
    WinHttpAddRequestHeaders(request, line.c_str(), static_cast<DWORD>(-1),
                             WINHTTP_ADDREQ_FLAG_ADD);
}

bool Send(HINTERNET request, std::optional<std::string_view> body) {
    if (!body)
        return WinHttpSendRequest(request, WINHTTP_NO_ADDITIONAL_HEADERS, 0,
                                  WINHTTP_NO_REQUEST_DATA, 0, 0, 0) != FALSE;
    if (body->size() > std::numeric_limits<DWORD>::max()) {
        SetLastError(ERROR_FILE_TOO_LARGE); // the length travels in 32 bits
        return false;
    }
    AddHeader(request, L"Content-Type: application/json; charset=utf-8");
    const auto size = static_cast<DWORD>(body->size());
    // The parameter is not const but is only read from.
    return WinHttpSendRequest(request, WINHTTP_NO_ADDITIONAL_HEADERS, 0,
                              const_cast<char*>(body->data()), size, size, 0) != FALSE;
}

// Reads until the end or the first failure; what was read before a failure is kept.
std::string ReadBody(HINTERNET request) {
    std::string bytes;
    for (;;) {
        DWORD available = 0;
        if (!WinHttpQueryDataAvailable(request, &available) || available == 0)
            return bytes;
        const auto kept = bytes.size();
        bytes.resize(kept + available);
        DWORD got = 0;
        const bool read =
            WinHttpReadData(request, bytes.data() + kept, available, &got) != FALSE && got != 0;
        bytes.resize(kept + (read ? got : 0));
        if (!read)
            return bytes;
    }
}

HttpResult ReadResult(HINTERNET request) {
    HttpResult result{.text = DecodeText(ReadBody(request), TextEncoding::Utf8)};
    DWORD status = 0;
    DWORD size = sizeof(status);
    if (!WinHttpQueryHeaders(request, WINHTTP_QUERY_STATUS_CODE | WINHTTP_QUERY_FLAG_NUMBER,
                             WINHTTP_HEADER_NAME_BY_INDEX, &status, &size, WINHTTP_NO_HEADER_INDEX))
        return Failure(L"Could not read HTTP status code", GetLastError());
    result.status = static_cast<std::int32_t>(status);
    result.ok = status >= 200 && status <= 299;
    if (!result.ok && result.text.empty())
        result.text = L"Server returned HTTP " + std::to_wstring(status);
    return result;
}

} // namespace

HttpResult HttpRequest(std::wstring_view url, std::wstring_view method, std::wstring_view token,
                       std::optional<std::string_view> body,
                       std::optional<std::wstring_view> extraHeaders) {
    ParsedUrl target;
    if (!ParseUrl(url, target))
        return Failure(std::wstring(L"Invalid URL: ").append(url));
    if (!IsHeaderToken(token))
        return Failure(std::wstring(unusableToken));

    const InternetHandle session(WinHttpOpen(userAgent, WINHTTP_ACCESS_TYPE_AUTOMATIC_PROXY,
                                             WINHTTP_NO_PROXY_NAME, WINHTTP_NO_PROXY_BYPASS, 0));
    if (!session)
        return Failure(L"WinHttpOpen failed");
    const InternetHandle connection(
        WinHttpConnect(session.get(), target.host.c_str(), target.port, 0));
    if (!connection)
        return Failure(L"WinHttpConnect failed");
    const InternetHandle request(WinHttpOpenRequest(
        connection.get(), std::wstring(method).c_str(), target.path.c_str(), nullptr,
        WINHTTP_NO_REFERER, WINHTTP_DEFAULT_ACCEPT_TYPES, target.secure ? WINHTTP_FLAG_SECURE : 0));
    if (!request)
        return Failure(L"WinHttpOpenRequest failed");

    AddHeader(request.get(), std::wstring(L"Authorization: Bearer ").append(token));
    if (extraHeaders)
        AddHeader(request.get(), std::wstring(*extraHeaders));
    if (!Send(request.get(), body) || !WinHttpReceiveResponse(request.get(), nullptr))
        return Failure(L"HTTP request failed", GetLastError());
    return ReadResult(request.get());
}

} // namespace brimwave
