#pragma once
#include "service/http.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace brimwave::testing {

// The local service that the test command has started, as its ready file describes it.
struct LiveService {
    std::wstring http; // base addresses, without a trailing "/"
    std::wstring https;
    std::filesystem::path jobs; // folder of the accepted jobs
    nlohmann::json tlsFaults;   // name of the fault: port

    // "https://localhost:" and the port of that fault.
    [[nodiscard]] std::wstring FaultyTls(const char* name) const;
};

// A test against the service. Skipped when none is running. Its authority is trusted from the
// first test on; each test starts with an account of its own, without faults and records.
class LiveTest : public ::testing::Test {
  protected:
    void SetUp() override;
    void TearDown() override;

    // Adds or replaces an account; a limit below 0 leaves it out.
    void PutAccount(const std::string& token, int balance, int dailyLimit);
    // Orders a fault for the token (a JSON object: see docs/service-api.md).
    void Order(const std::string& token, const nlohmann::json& fault);
    // What the service received since the test began.
    [[nodiscard]] nlohmann::json Received();
    // The folders of the jobs accepted since the test began, in order.
    [[nodiscard]] std::vector<std::filesystem::path> NewJobs() const;

    LiveService service_;
    std::wstring token_ = L"live-token"; // balance 42, 3 conversions a day
    std::string narrowToken_ = "live-token";

  private:
    void Control(const wchar_t* method, const wchar_t* path, const std::string& body);
    [[nodiscard]] std::size_t CountJobs() const;
    std::size_t jobsBefore_ = 0;
};

[[nodiscard]] std::string ReadFileBytes(const std::filesystem::path& path);

} // namespace brimwave::testing
