#include "service/account.h"

#include "tests/support/fake_http.h"

#include <gmock/gmock.h>

namespace brimwave {
namespace {

using brimwave::testing::FakeHttp;

constexpr const wchar_t* base = L"https://service.example:8443/v1";

TEST(FetchBalance, AsksOnceWithTheToken) {
    FakeHttp http;
    http.Answer(200, L"{\"balance\": 42, \"daily_limit\": 10, \"conversions_left\": 3}");
    const BalanceResult result = FetchBalance(base, L"tok");
    EXPECT_TRUE(result.ok);
    EXPECT_EQ(result.balance, 42);
    EXPECT_EQ(result.daily_limit, 10);
    EXPECT_EQ(result.conversions_left, 3);
    EXPECT_EQ(result.error, L"");
    ASSERT_EQ(http.Requests().size(), 1u);
    const auto& request = http.Requests().front();
    EXPECT_EQ(request.url, L"https://service.example:8443/v1/api/balance");
    EXPECT_EQ(request.method, L"GET");
    EXPECT_EQ(request.token, L"tok");
    EXPECT_FALSE(request.body);
    EXPECT_FALSE(request.extraHeaders);
}

TEST(FetchBalance, AnEmptyTokenMakesNoRequest) {
    FakeHttp http;
    const BalanceResult result = FetchBalance(base, L"");
    EXPECT_FALSE(result.ok);
    EXPECT_EQ(result.error, L"token_empty");
    EXPECT_TRUE(http.Requests().empty());
}

TEST(FetchBalance, TellsFailuresApart) {
    struct Case {
        int status; // 0: the transport failed
        std::wstring text, error;
    };
    const Case cases[] = {
        // A rejected token, whatever the status.
        {200, L"{\"error\":\"invalid token\",\"balance\":5}", L"invalid_token"},
        {401, L"header missing or invalid", L"invalid_token"},
        {500, L"invalid token", L"invalid_token"},
        {0, std::wstring(unusableToken), L"invalid_token"},
        // The phrases are compared as written.
        {401, L"Invalid Token", L"Invalid Token"},
        {401, L"", L"http_401"},
        {503, L"", L"http_503"},
        {0, L"", L"http_0"},
        {500, L"oops", L"oops"},
        {0, L"HTTP request failed, GetLastError=12029", L"HTTP request failed, GetLastError=12029"},
    };
    for (const auto& c : cases) {
        FakeHttp http;
        c.status == 0 ? http.Fail(c.text) : http.Answer(c.status, c.text);
        const BalanceResult result = FetchBalance(base, L"tok");
        EXPECT_FALSE(result.ok) << ::testing::PrintToString(c.text);
        EXPECT_EQ(result.error, c.error);
        EXPECT_EQ(result.balance, 0);
        EXPECT_EQ(result.daily_limit, -1);
    }
}

TEST(FetchBalance, KeepsTheDefaultOfEachUnreadableNumber) {
    struct Case {
        std::wstring text;
        int balance, limit, left;
    };
    const Case cases[] = {
        {L"", 0, -1, -1},
        {L"not JSON", 0, -1, -1},
        {L"{\"balance\": 5}", 5, -1, -1},
        {L"{\"balance\":\n5,\"daily_limit\":7", 0, 7, -1},
        {L"{\"conversions_left\":2,\"daily_limit\":null,\"balance\":\"9\"}", 0, -1, 2},
    };
    for (const auto& c : cases) {
        FakeHttp http;
        http.Answer(204, c.text);
        const BalanceResult result = FetchBalance(base, L"tok");
        EXPECT_TRUE(result.ok);
        EXPECT_EQ(result.balance, c.balance);
        EXPECT_EQ(result.daily_limit, c.limit);
        EXPECT_EQ(result.conversions_left, c.left);
    }
}

TEST(ExtractJsonInt, ReadsTheFirstMemberOfThatName) {
    struct Case {
        std::wstring text;
        bool found;
        int value;
    };
    constexpr int untouched = 77;
    const Case cases[] = {
        {L"{\"n\":5}", true, 5},
        {L"{\"n\" \t: \t -3}", true, -3},
        {L"{\"n\":+8}", true, 8},
        {L"{\"n\":0012}", true, 12},
        {L"{\"n\":12.75}", true, 12},
        {L"{\"n\":1e3}", true, 1},
        {L"{\"n\":-0}", true, 0},
        {L"{\"n\":99999999999}", true, 2147483647},
        {L"{\"n\":-99999999999}", true, -2147483647},
        {L"{\"inner\":{\"n\":1},\"n\":2}", true, 1},
        {L"\"n\":4", true, 4},
        {L"{\"n\":4", true, 4},
        // The first occurrence decides alone.
        {L"{\"n\":null,\"n\":2}", false, untouched},
        {L"[\"n\"],{\"n\":2}", false, untouched},
        {L"", false, untouched},
        {L"{\"N\":5}", false, untouched},
        {L"{\"nn\":5}", false, untouched},
        {L"{n:5}", false, untouched},
        {L"{\"n\"", false, untouched},
        {L"{\"n\":", false, untouched},
        {L"{\"n\":-", false, untouched},
        {L"{\"n\":--5}", false, untouched},
        {L"{\"n\":- 5}", false, untouched},
        {L"{\"n\":\n5}", false, untouched},
        {L"{\"n\"\n:5}", false, untouched},
        {L"{\"n\":\"5\"}", false, untouched},
        {L"{\"n\":true}", false, untouched},
        {L"{\"n\":\x0665}", false, untouched}, // a digit, but not of ASCII
    };
    for (const auto& c : cases) {
        std::int32_t value = untouched;
        EXPECT_EQ(ExtractJsonInt(c.text, L"n", value), c.found) << ::testing::PrintToString(c.text);
        EXPECT_EQ(value, c.value) << ::testing::PrintToString(c.text);
    }
}

TEST(BalanceText, ShowsTheBalanceAndTheDailyAllowance) {
    struct Case {
        int balance, limit, left;
        std::wstring daily, whole;
    };
    const Case cases[] = {
        {42, 10, 3, L"3 of 10 conversions left today",
         L"42 credits - 3 of 10 conversions left today"},
        {0, 10, 0, L"Daily limit reached (10/day)", L"0 credits - Daily limit reached (10/day)"},
        {1, 0, -1, L"Unlimited conversions", L"1 credit - Unlimited conversions"},
        {7, 0, 0, L"Unlimited conversions", L"7 credits - Unlimited conversions"},
        {1500, 10, -1, L"", L"1500 credits"},
        {-3, -1, 5, L"", L"-3 credits"},
    };
    for (const auto& c : cases) {
        BalanceResult result;
        result.balance = c.balance;
        result.daily_limit = c.limit;
        result.conversions_left = c.left;
        EXPECT_EQ(FormatDailyLimitText(result), c.daily);
        EXPECT_EQ(FormatBalanceText(result), c.whole);
    }
}

} // namespace
} // namespace brimwave
