// What goes over the wire when all is well, over HTTP and over HTTPS.
#include "service/account.h"
#include "service/jobs.h"

#include "tests/service/live/live_service.h"

#include <gmock/gmock.h>

#include <atomic>
#include <fstream>
#include <thread>

namespace brimwave::testing {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;
using ::testing::PrintToString;

class ExchangeTest : public LiveTest, public ::testing::WithParamInterface<const char*> {
  protected:
    std::wstring Base() const {
        return GetParam() == std::string("https") ? service_.https : service_.http;
    }

    std::wstring WritePackage(const fs::path& name, const std::string& bytes) {
        const fs::path path = fs::temp_directory_path() / name;
        std::ofstream(path, std::ios::binary) << bytes;
        written_.push_back(path);
        return path.wstring();
    }

    void TearDown() override {
        for (const auto& path : written_)
            fs::remove(path);
        LiveTest::TearDown();
    }

  private:
    std::vector<fs::path> written_;
};

TEST_P(ExchangeTest, ReadsTheBalance) {
    const BalanceResult limited = FetchBalance(Base(), token_);
    EXPECT_TRUE(limited.ok) << PrintToString(limited.error);
    EXPECT_EQ(limited.balance, 42);
    EXPECT_EQ(FormatDailyLimitText(limited), L"3 of 3 conversions left today");

    PutAccount(narrowToken_, 7, 0);
    EXPECT_EQ(FormatBalanceText(FetchBalance(Base(), token_)),
              L"7 credits - Unlimited conversions");
    PutAccount(narrowToken_, -7, -1);
    EXPECT_EQ(FormatBalanceText(FetchBalance(Base(), token_)), L"-7 credits");
}

TEST_P(ExchangeTest, AGetCarriesTokenAndAgentAndNoBody) {
    ASSERT_TRUE(FetchBalance(Base(), token_).ok);
    const json received = Received();
    ASSERT_EQ(received.size(), 1u);
    EXPECT_EQ(received[0]["method"], "GET");
    EXPECT_EQ(received[0]["path"], "/api/balance");
    EXPECT_EQ(received[0]["secure"], GetParam() == std::string("https"));
    const json& headers = received[0]["headers"];
    EXPECT_EQ(headers["Authorization"], "Bearer live-token");
    EXPECT_EQ(headers["User-Agent"], "Brimwave-Platform/2.0");
    EXPECT_FALSE(headers.contains("Content-Type")) << headers;
    EXPECT_FALSE(headers.contains("X-Job-Name")) << headers;
}

TEST_P(ExchangeTest, TokensTheServiceDoesNotKnow) {
    EXPECT_EQ(FetchBalance(Base(), L"somebody else").error, L"invalid_token");
    // An empty token is refused by callers; the transport itself sends it.
    const HttpResult empty = HttpGet(Base() + L"/api/balance", L"");
    EXPECT_EQ(empty.status, 401);
    EXPECT_NE(empty.text.find(L"missing or invalid"), std::wstring::npos);
}

TEST_P(ExchangeTest, ATokenCannotStartAHeader) {
    for (const wchar_t* token : {L"live-token\r\nX-Evil: 1", L"live-token\n", L"\r", L"\x010A"})
        EXPECT_EQ(FetchBalance(Base(), token).error, L"invalid_token") << PrintToString(token);
    const HttpResult job =
        PostJobRequest(Base() + L"/node/api/v1/jobs", L"a\r\nX-Evil: 1", "{}", L"job", L"");
    EXPECT_FALSE(job.ok);
    EXPECT_EQ(job.status, 0);
    EXPECT_EQ(job.text, unusableToken);
    EXPECT_EQ(Received(), json::array()); // nothing was sent at all
}

TEST_P(ExchangeTest, AJobArrivesByteForByte) {
    using namespace std::string_literals;
    std::string everyByte;
    for (int i = 0; i < 100'000; ++i)
        everyByte += static_cast<char>(i * 7 + i / 256);
    const std::string bodies[] = {"\xEF\xBB\xBF{\r\n\"a\": \"\xC3\xA9\"\r\n}\r\n"s, everyByte, ""s};
    PutAccount(narrowToken_, 42, 0);
    for (const std::string& body : bodies) {
        const HttpResult result = SubmitJob(Base(), WritePackage(L"p\x00E4ket \x0416.json", body),
                                            token_, L"Sc\x00E8ne 1/2 \xD83D\xDE00", L"5.1");
        EXPECT_TRUE(result.ok) << result.status << PrintToString(result.text);
        const auto jobs = NewJobs();
        ASSERT_FALSE(jobs.empty());
        EXPECT_TRUE(ReadFileBytes(jobs.back() / "package.json") == body);
        const json request = json::parse(ReadFileBytes(jobs.back() / "request.json"));
        EXPECT_EQ(request["method"], "POST");
        EXPECT_EQ(request["path"], "/node/api/v1/jobs");
        const json& headers = request["headers"];
        EXPECT_EQ(headers["Authorization"], "Bearer live-token");
        EXPECT_EQ(headers["User-Agent"], "Brimwave-Platform/2.0");
        EXPECT_EQ(headers["X-Job-Name"], "Sc%C3%A8ne%201%2F2%20%F0%9F%98%80");
        EXPECT_EQ(headers["X-Blender-Target-Version"], "5.1");
        EXPECT_EQ(headers["Content-Type"], "application/json; charset=utf-8");
        EXPECT_EQ(headers["Content-Length"], std::to_string(body.size()));
    }
    EXPECT_EQ(NewJobs().size(), std::size(bodies));
}

TEST_P(ExchangeTest, AnUnknownTargetVersionIsNotSent) {
    ASSERT_TRUE(SubmitJob(Base(), WritePackage(L"1.json", "{}"), token_, L"job", L"5.3").ok);
    const json received = Received();
    ASSERT_EQ(received.size(), 1u);
    EXPECT_FALSE(received[0]["headers"].contains("X-Blender-Target-Version"));
}

TEST_P(ExchangeTest, JobsUseUpTheDayAndThenTheCredit) {
    PutAccount(narrowToken_, 2, 1);
    const std::wstring package = WritePackage(L"1.json", "{}");
    EXPECT_TRUE(SubmitJob(Base(), package, token_, L"one", L"5.2").ok);
    EXPECT_EQ(FormatBalanceText(FetchBalance(Base(), token_)),
              L"1 credit - Daily limit reached (1/day)");
    EXPECT_EQ(SubmitJob(Base(), package, token_, L"two", L"5.2").status, 429);

    PutAccount(narrowToken_, 0, 0);
    const HttpResult broke = SubmitJob(Base(), package, token_, L"three", L"5.2");
    EXPECT_FALSE(broke.ok);
    EXPECT_EQ(broke.status, 402);
    EXPECT_NE(broke.text.find(L"insufficient balance"), std::wstring::npos);
    EXPECT_EQ(NewJobs().size(), 1u);
}

TEST_P(ExchangeTest, RequestsOnSeveralThreadsDoNotMeet) {
    std::atomic<int> good = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 6; ++i)
        threads.emplace_back([&, i] {
            const std::wstring token = i % 2 == 0 ? token_ : L"unknown";
            good += FetchBalance(Base(), token).ok == (i % 2 == 0);
        });
    for (auto& thread : threads)
        thread.join();
    EXPECT_EQ(good, 6);
}

INSTANTIATE_TEST_SUITE_P(Both, ExchangeTest, ::testing::Values("http", "https"),
                         [](const auto& about) { return std::string(about.param); });

} // namespace
} // namespace brimwave::testing
