// The ways a request can fail, provoked for real: bad addresses, closed ports, a service that
// misbehaves on order, and certificates that must not be trusted.
#include "service/account.h"
#include "service/jobs.h"

#include "tests/service/live/live_service.h"

#include <gmock/gmock.h>

#include <chrono>

namespace brimwave::testing {
namespace {

using nlohmann::json;
using ::testing::PrintToString;

constexpr std::wstring_view kTransportFailed = L"HTTP request failed, GetLastError=";

class FailureTest : public LiveTest {
  protected:
    HttpResult Balance() { return HttpGet(service_.https + L"/api/balance", token_); }

    static void ExpectTransportFailure(const HttpResult& result, const std::string& what) {
        EXPECT_FALSE(result.ok) << what;
        EXPECT_EQ(result.status, 0) << what;
        ASSERT_TRUE(result.text.starts_with(kTransportFailed))
            << what << PrintToString(result.text);
        const std::wstring code = result.text.substr(kTransportFailed.size());
        EXPECT_NE(code, L"0") << what;
        EXPECT_EQ(code.find_first_not_of(L"0123456789"), std::wstring::npos) << what;
        std::cout << what << ": " << std::string(code.begin(), code.end()) << '\n';
    }
};

TEST_F(FailureTest, BadAddresses) {
    for (const wchar_t* url : {L"", L"ab", L"h.example/api", L"https:/h"})
        EXPECT_EQ(HttpGet(url, token_).text, std::wstring(L"Invalid URL: ") + url);
    for (const wchar_t* url : {L"https://", L"https:///x", L"http://:80", L"http://[::1]/"}) {
        const HttpResult result = HttpGet(url, token_);
        std::wcout << url << L" -> " << result.text << L'\n';
        EXPECT_FALSE(result.ok);
        EXPECT_EQ(result.status, 0);
        EXPECT_FALSE(result.text.empty());
    }
    ExpectTransportFailure(HttpGet(L"http://127.0.0.1:1/x", token_), "closed port");
    ExpectTransportFailure(HttpGet(L"https://127.0.0.1:1/x", token_), "closed port, TLS");
}

} // namespace
} // namespace brimwave::testing
