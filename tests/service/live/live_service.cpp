#include "tests/service/live/live_service.h"

#include <windows.h>
// After windows.h.
#include <wincrypt.h>

#include <cstdlib>
#include <fstream>
#include <iterator>

namespace brimwave::testing {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;

// A path of the machine around Wine, as its drive Z shows it.
fs::path FromUnix(const std::string& path) {
    return path.starts_with('/') ? "Z:" + path : path;
}

// Wine keeps the root store in its prefix; on Windows this would ask the user first.
void TrustAuthority(const fs::path& pem) {
    const std::string text = ReadFileBytes(pem);
    std::vector<BYTE> der(text.size());
    auto size = static_cast<DWORD>(der.size());
    ASSERT_TRUE(CryptStringToBinaryA(text.data(), static_cast<DWORD>(text.size()),
                                     CRYPT_STRING_BASE64HEADER, der.data(), &size, nullptr,
                                     nullptr))
        << pem;
    const HCERTSTORE store = CertOpenSystemStoreW(0, L"ROOT");
    ASSERT_NE(store, nullptr);
    EXPECT_TRUE(CertAddEncodedCertificateToStore(store, X509_ASN_ENCODING, der.data(), size,
                                                 CERT_STORE_ADD_REPLACE_EXISTING, nullptr));
    CertCloseStore(store, 0);
}

std::optional<LiveService> Connect() {
    const char* ready = std::getenv("BRIMWAVE_DEVSERVICE_READY");
    if (!ready || !*ready)
        return std::nullopt;
    const json about = json::parse(ReadFileBytes(FromUnix(ready)));
    TrustAuthority(FromUnix(about.at("ca").get<std::string>()));
    LiveService service;
    service.http = L"http://localhost:" + std::to_wstring(about.at("http").get<int>());
    service.https = L"https://localhost:" + std::to_wstring(about.at("https").get<int>());
    service.jobs = FromUnix(about.at("jobs").get<std::string>());
    service.tlsFaults = about.value("tls_faults", json::object());
    return service;
}

} // namespace

std::string ReadFileBytes(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    EXPECT_TRUE(in) << path;
    return {std::istreambuf_iterator<char>(in), {}};
}

std::wstring LiveService::FaultyTls(const char* name) const {
    return L"https://localhost:" + std::to_wstring(tlsFaults.at(name).get<int>());
}

void LiveTest::SetUp() {
    static const std::optional<LiveService> service = Connect();
    if (!service)
        GTEST_SKIP() << "BRIMWAVE_DEVSERVICE_READY is not set: no local service to talk to";
    service_ = *service;
    Control(L"DELETE", L"/control/faults", {});
    Control(L"DELETE", L"/control/requests", {});
    PutAccount(narrowToken_, 42, 3);
    jobsBefore_ = CountJobs();
}

void LiveTest::TearDown() {
    if (!service_.http.empty())
        Control(L"DELETE", L"/control/faults", {});
}

void LiveTest::Control(const wchar_t* method, const wchar_t* path, const std::string& body) {
    const HttpResult result =
        HttpRequest(service_.http + path, method, L"",
                    body.empty() ? std::nullopt : std::optional<std::string_view>(body));
    ASSERT_TRUE(result.ok) << ::testing::PrintToString(result.text);
}

void LiveTest::PutAccount(const std::string& token, int balance, int dailyLimit) {
    json account{{"token", token}, {"name", "live test"}, {"balance", balance}};
    if (dailyLimit >= 0)
        account["daily_limit"] = dailyLimit;
    Control(L"POST", L"/control/accounts", account.dump());
}

void LiveTest::Order(const std::string& token, const json& fault) {
    Control(L"POST", L"/control/faults", json{{"token", token}, {"fault", fault}}.dump());
}

json LiveTest::Received() {
    const HttpResult result = HttpGet(service_.http + L"/control/requests", L"");
    EXPECT_TRUE(result.ok) << ::testing::PrintToString(result.text);
    return json::parse(result.text);
}

std::size_t LiveTest::CountJobs() const {
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator(service_.jobs), fs::directory_iterator()));
}

std::vector<fs::path> LiveTest::NewJobs() const {
    std::vector<fs::path> jobs;
    for (const auto& entry : fs::directory_iterator(service_.jobs))
        jobs.push_back(entry.path());
    std::sort(jobs.begin(), jobs.end());
    jobs.erase(jobs.begin(), jobs.begin() + static_cast<std::ptrdiff_t>(jobsBefore_));
    return jobs;
}

} // namespace brimwave::testing
