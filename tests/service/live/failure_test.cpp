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

// Addresses are plain ASCII.
std::string Narrow(const std::wstring& text) {
    return {text.begin(), text.end()};
}

constexpr std::wstring_view transportFailed = L"HTTP request failed, GetLastError=";

class FailureTest : public LiveTest {
  protected:
    HttpResult Balance() { return HttpGet(service_.https + L"/api/balance", token_); }

    static void ExpectTransportFailure(const HttpResult& result, const std::string& what) {
        EXPECT_FALSE(result.ok) << what;
        EXPECT_EQ(result.status, 0) << what;
        ASSERT_TRUE(result.text.starts_with(transportFailed)) << what << PrintToString(result.text);
        const std::wstring code = result.text.substr(transportFailed.size());
        EXPECT_NE(code, L"0") << what;
        EXPECT_EQ(code.find_first_not_of(L"0123456789"), std::wstring::npos) << what;
    }
};

TEST_F(FailureTest, BadAddresses) {
    for (const wchar_t* url : {L"", L"ab", L"h.example/api", L"https:/h"})
        EXPECT_EQ(HttpGet(url, token_).text, std::wstring(L"Invalid URL: ") + url);
    ExpectTransportFailure(HttpGet(L"https:///x", token_), "no host");
    ExpectTransportFailure(HttpGet(L"http://[::1]/", token_), "a host that cannot be one");
    ExpectTransportFailure(HttpGet(L"http://127.0.0.1:/x", token_), "port 0");
    ExpectTransportFailure(HttpGet(L"http://127.0.0.1:1/x", token_), "closed port");
    ExpectTransportFailure(HttpGet(L"https://127.0.0.1:1/x", token_), "closed port, TLS");
    const HttpResult job = PostJobRequest(L"https://127.0.0.1:1/x", token_, "{}", L"job", L"5.1");
    ExpectTransportFailure(job, "closed port, job");
}

TEST_F(FailureTest, StatusDecidesAndABodyIsKept) {
    struct Case {
        int status;
        const char* body; // null: none
        bool ok;
        std::wstring text;
    };
    const Case cases[] = {
        {200, "", true, L""},
        {204, nullptr, true, L""},
        {299, "\xC3\xA4", true, L"\x00E4"},
        {300, nullptr, false, L"Server returned HTTP 300"},
        {400, "{\"e\":1}", false, L"{\"e\":1}"},
        {401, nullptr, false, L"Server returned HTTP 401"},
        {402, "insufficient balance", false, L"insufficient balance"},
        {404, "", false, L"Server returned HTTP 404"},
        {500, " ", false, L" "},
        {503, nullptr, false, L"Server returned HTTP 503"},
        {599, "x", false, L"x"},
    };
    for (const auto& c : cases) {
        json fault{{"status", c.status}, {"times", 1}};
        if (c.body)
            fault["body"] = c.body;
        Order(narrowToken_, fault);
        const HttpResult result = Balance();
        EXPECT_EQ(result.ok, c.ok) << c.status;
        EXPECT_EQ(result.status, c.status);
        EXPECT_EQ(result.text, c.text) << c.status << PrintToString(result.text);
    }
}

TEST_F(FailureTest, ConnectionsThatBreakOffBeforeTheHeader) {
    for (const std::wstring& base : {service_.http, service_.https})
        for (const bool reset : {false, true}) {
            Order(narrowToken_, {{"close", "before-header"}, {"reset", reset}, {"times", 1}});
            ExpectTransportFailure(HttpGet(base + L"/api/balance", token_), "closed");
        }
}

// Behind a whole status line WinHTTP may take a header that breaks off for a whole one, without a
// body. Either way the request ends and nothing is made up.
TEST_F(FailureTest, ConnectionsThatBreakOffInTheHeader) {
    for (const std::wstring& base : {service_.http, service_.https})
        for (const bool reset : {false, true}) {
            Order(narrowToken_, {{"close", "in-header"}, {"reset", reset}, {"times", 1}});
            const HttpResult result = HttpGet(base + L"/api/balance", token_);
            if (result.status == 200)
                EXPECT_EQ(result.text, L"");
            else
                ExpectTransportFailure(result, "closed in the header");
        }
}

TEST_F(FailureTest, ABodyThatBreaksOffIsKeptSoFar) {
    const std::string body(100, 'b');
    for (const std::wstring& base : {service_.http, service_.https})
        for (const int status : {200, 500}) {
            Order(narrowToken_,
                  {{"close", "in-body"}, {"status", status}, {"body", body}, {"times", 1}});
            const HttpResult result = HttpGet(base + L"/api/balance", token_);
            EXPECT_EQ(result.status, status);
            EXPECT_EQ(result.ok, status == 200);
            EXPECT_EQ(result.text, std::wstring(50, L'b'));
        }
}

TEST_F(FailureTest, AnswersWithoutAStatus) {
    for (const char* raw : {"garbage\r\n\r\n", "HTTP/1.1 abc\r\n\r\n", "HTTP/1.1\r\n\r\n",
                            "\r\n\r\n", "HTTP/1.1 2"}) {
        Order(narrowToken_, {{"raw", raw}, {"close", "in-body"}, {"times", 1}});
        ExpectTransportFailure(Balance(), raw);
    }
}

TEST_F(FailureTest, SlowAnswersInPiecesAreRead) {
    const auto start = std::chrono::steady_clock::now();
    Order(narrowToken_, {{"delay_ms", 700}, {"piece_bytes", 40}, {"pause_ms", 20}});
    const BalanceResult result = FetchBalance(service_.https, token_);
    EXPECT_TRUE(result.ok) << PrintToString(result.error);
    EXPECT_EQ(result.balance, 42);
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(700));
}

TEST_F(FailureTest, AHugeAnswerIsReadWhole) {
    constexpr std::size_t size = 50'000'000;
    Order(narrowToken_, {{"body_size", size}});
    const HttpResult result = Balance();
    EXPECT_TRUE(result.ok);
    EXPECT_EQ(result.text.size(), size);
    EXPECT_TRUE(result.text.starts_with(L"{\"balance\":42,"));
}

TEST_F(FailureTest, BrokenUtf8IsDecodedAsTheSystemDoes) {
    const std::pair<const char*, std::wstring> cases[] = {
        {"61ff62", L"a\xFFFD"
                   L"b"},
        {"c3", L"\xFFFD"}, // cut off
        {"efbbbf41", L"\xFEFF"
                     L"A"},                   // a byte-order mark is a character like others
        {"f09f9880", L"\xD83D\xDE00"},        // beyond the basic plane
        {"610062", std::wstring(L"a\0b", 3)}, // a zero does not end the text
    };
    for (const auto& [hex, text] : cases) {
        Order(narrowToken_, {{"body_hex", hex}, {"times", 1}});
        const HttpResult result = Balance();
        EXPECT_TRUE(result.ok);
        EXPECT_EQ(result.text, text) << hex << PrintToString(result.text);
    }
}

TEST_F(FailureTest, UntrustworthyCertificatesEndTheRequestBeforeTheToken) {
    for (const char* fault : {"wrong_name", "unknown_authority", "expired", "plain"}) {
        const std::wstring base = service_.FaultyTls(fault);
        ExpectTransportFailure(HttpGet(base + L"/api/balance", token_), fault);
        ExpectTransportFailure(
            PostJobRequest(base + L"/node/api/v1/jobs", token_, "{}", L"job", L"5.1"), fault);
    }
    EXPECT_EQ(Received(), json::array());
    EXPECT_TRUE(NewJobs().empty());
}

TEST_F(FailureTest, PlainHttpToTheTlsPort) {
    const HttpResult result = HttpGet(L"http" + service_.https.substr(5) + L"/api/balance", token_);
    EXPECT_EQ(result.status, 400);
    EXPECT_NE(result.text.find(L"plain HTTP request"), std::wstring::npos);
}

TEST_F(FailureTest, RedirectsAreFollowedWithinTheService) {
    Order(narrowToken_, {{"redirect", "/api/balance?again"}, {"times", 1}});
    EXPECT_EQ(FetchBalance(service_.https, token_).balance, 42);
    const json received = Received();
    ASSERT_EQ(received.size(), 2u);
    EXPECT_EQ(received[1]["path"], "/api/balance?again");
    EXPECT_EQ(received[1]["headers"]["Authorization"], "Bearer live-token");

    // 307 keeps method and body.
    Order(narrowToken_, {{"redirect", "/node/api/v1/jobs"}, {"status", 307}, {"times", 1}});
    const HttpResult job =
        PostJobRequest(service_.https + L"/node/api/v1/jobs", token_, "{\"a\":1}", L"job", L"5.1");
    EXPECT_TRUE(job.ok) << job.status << PrintToString(job.text);
    const auto jobs = NewJobs();
    ASSERT_EQ(jobs.size(), 1u);
    EXPECT_EQ(ReadFileBytes(jobs.front() / "package.json"), "{\"a\":1}");
}

TEST_F(FailureTest, AJobRedirectedAsAGetIsNoJob) {
    Order(narrowToken_, {{"redirect", "/node/api/v1/jobs"}, {"times", 1}});
    const HttpResult job =
        PostJobRequest(service_.https + L"/node/api/v1/jobs", token_, "{}", L"job", L"5.1");
    EXPECT_FALSE(job.ok);
    EXPECT_EQ(Received().back()["method"], "GET");
    EXPECT_TRUE(NewJobs().empty());
}

TEST_F(FailureTest, RedirectsThatMustNotBeFollowed) {
    Order(narrowToken_, {{"redirect", "/api/balance"}, {"times", 50}});
    ExpectTransportFailure(Balance(), "endless redirect");
    Order("other", {{"redirect", Narrow(service_.http) + "/api/balance"}});
    ExpectTransportFailure(HttpGet(service_.https + L"/api/balance", L"other"), "https to http");
    for (const json& request : Received())
        EXPECT_TRUE(request["secure"]) << request; // no token went out in the clear
}

} // namespace
} // namespace brimwave::testing
