#include "service/http.h"

#include <algorithm>

namespace brimwave {

HttpResult HttpGet(std::wstring_view url, std::wstring_view token) {
    return HttpRequest(url, L"GET", token);
}

bool IsHeaderToken(std::wstring_view token) {
    return std::all_of(token.begin(), token.end(),
                       [](wchar_t c) { return c >= L' ' && c <= L'~'; });
}

} // namespace brimwave
