#include "service/jobs.h"

#include "tests/support/fake_http.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace brimwave {
namespace {

using brimwave::testing::FakeHttp;
namespace fs = std::filesystem;

// A folder of the test's own, removed at its end.
class SubmitJobTest : public ::testing::Test {
  protected:
    SubmitJobTest() {
        std::string name = (fs::temp_directory_path() / "service_jobs_XXXXXX").string();
        folder_ = mkdtemp(name.data());
    }
    ~SubmitJobTest() override { fs::remove_all(folder_); }

    std::wstring Write(const std::string& name, std::string_view bytes) {
        std::ofstream(folder_ / name, std::ios::binary) << bytes;
        return (folder_ / name).wstring();
    }

    fs::path folder_;
};

TEST_F(SubmitJobTest, SendsTheFilesBytesAsTheyAre) {
    using namespace std::string_literals;
    const std::string cases[] = {
        "{\n\"a\": 1\n}\n"s,
        "\xEF\xBB\xBF{\r\n}\r\n"s, // byte-order mark, Windows line ends
        "\0\x1A\xFF\xC3\r\0"s,     // no text at all
        ""s,
    };
    for (const std::string& bytes : cases) {
        FakeHttp http;
        http.Answer(202, L"{\"job\":\"x\"}");
        const HttpResult result =
            SubmitJob(L"https://h:1", Write("1.json", bytes), L"tok", L"Sc\x00E8ne 1/2", L"5.2");
        EXPECT_TRUE(result.ok);
        EXPECT_EQ(result.status, 202);
        EXPECT_EQ(result.text, L"{\"job\":\"x\"}");
        ASSERT_EQ(http.Requests().size(), 1u);
        const auto& request = http.Requests().front();
        EXPECT_EQ(request.url, L"https://h:1/node/api/v1/jobs");
        EXPECT_EQ(request.method, L"POST");
        EXPECT_EQ(request.token, L"tok");
        EXPECT_EQ(request.body, bytes); // an empty file gives an empty body, not none
        EXPECT_EQ(request.extraHeaders,
                  L"X-Job-Name: Sc%C3%A8ne%201%2F2\r\nX-Blender-Target-Version: 5.2");
    }
}

TEST_F(SubmitJobTest, AFileThatCannotBeReadMakesNoRequest) {
    FakeHttp http;
    const std::wstring missing = (folder_ / "none.json").wstring();
    for (const std::wstring& path : {missing, folder_.wstring(), std::wstring()}) {
        const HttpResult result = SubmitJob(L"https://h", path, L"tok", L"job", L"5.1");
        EXPECT_FALSE(result.ok);
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.text, L"Cannot read JSON file: " + path);
    }
    EXPECT_TRUE(http.Requests().empty());
}

TEST(PostJobRequest, NamesOnlyTheKnownTargetVersions) {
    const std::pair<std::wstring, bool> cases[] = {
        {L"5.1", true},   {L"5.2", true},   {L"5.3", false}, {L"", false},
        {L"5.1 ", false}, {L" 5.2", false}, {L"5,2", false}, {L"5.20", false},
    };
    for (const auto& [version, named] : cases) {
        FakeHttp http;
        http.Answer(200, L"");
        EXPECT_TRUE(PostJobRequest(L"http://h/x", L"tok", "{}", L"a", version).ok);
        EXPECT_EQ(http.Requests().front().extraHeaders,
                  L"X-Job-Name: a" +
                      (named ? L"\r\nX-Blender-Target-Version: " + version : std::wstring()));
    }
}

TEST(PostJobRequest, AJobNameCannotStartAHeader) {
    FakeHttp http;
    http.Answer(200, L"");
    (void)PostJobRequest(L"http://h/x", L"tok", "{}", L"a\r\nX-Evil: 1", L"");
    EXPECT_EQ(http.Requests().front().extraHeaders, L"X-Job-Name: a%0D%0AX-Evil%3A%201");
}

TEST(PostJobRequest, HandsOnFailuresUnchanged) {
    FakeHttp http;
    http.Answer(402, L"{\"error\":\"insufficient balance\"}").Fail(L"WinHttpOpen failed");
    const HttpResult refused = PostJobRequest(L"http://h/x", L"tok", "{}", L"a", L"");
    EXPECT_FALSE(refused.ok);
    EXPECT_EQ(refused.status, 402);
    EXPECT_EQ(refused.text, L"{\"error\":\"insufficient balance\"}");
    const HttpResult failed = PostJobRequest(L"http://h/x", L"tok", "{}", L"a", L"");
    EXPECT_FALSE(failed.ok);
    EXPECT_EQ(failed.status, 0);
    EXPECT_EQ(failed.text, L"WinHttpOpen failed");
}

TEST(IsHeaderToken, RefusesWhatCouldBreakTheHeader) {
    for (const std::wstring& token :
         {std::wstring(L""), std::wstring(L"abc-._~+/=:;, {}"), std::wstring(L"a b")})
        EXPECT_TRUE(IsHeaderToken(token)) << ::testing::PrintToString(token);
    for (const std::wstring& token :
         {std::wstring(L"a\r\nX-Evil: 1"), std::wstring(L"a\n"), std::wstring(L"\r"),
          std::wstring(L"a\0b", 3), std::wstring(L"a\tb"), std::wstring(L"a\x7F"),
          std::wstring(L"a\x0085"), std::wstring(L"\x010A"), std::wstring(L"\x2028")})
        EXPECT_FALSE(IsHeaderToken(token)) << ::testing::PrintToString(token);
}

} // namespace
} // namespace brimwave
