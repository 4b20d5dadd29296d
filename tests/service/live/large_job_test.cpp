// Large packages and slow lines.
#include "service/jobs.h"

#include "tests/service/live/live_service.h"

#include <windows.h>
// After windows.h.
#include <psapi.h>

#include <chrono>
#include <fstream>

namespace brimwave::testing {
namespace {

namespace fs = std::filesystem;
using ::testing::PrintToString;

// The most memory this program has ever held, in bytes.
std::size_t PeakMemory() {
    PROCESS_MEMORY_COUNTERS counters{};
    EXPECT_TRUE(GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters));
    return counters.PeakWorkingSetSize;
}

class LargeJobTest : public LiveTest {
  protected:
    void TearDown() override {
        fs::remove(package_);
        for (const auto& job : service_.jobs.empty() ? std::vector<fs::path>() : NewJobs())
            fs::remove_all(job); // of no use to anyone, and big
        LiveTest::TearDown();
    }

    // Writes a package without ever holding it.
    void WritePackage(std::size_t size) {
        std::ofstream out(package_, std::ios::binary);
        std::string piece(1'000'000, '\0');
        for (std::size_t done = 0; done < size; done += piece.size()) {
            for (std::size_t i = 0; i < piece.size(); i += 997)
                piece[i] = static_cast<char>('0' + (done + i) % 75);
            out.write(piece.data(), static_cast<std::streamsize>(piece.size()));
        }
        ASSERT_TRUE(out.flush());
    }

    // Compares piece by piece, so that the check adds nothing to the peak.
    void ExpectStored() {
        const auto jobs = NewJobs();
        ASSERT_EQ(jobs.size(), 1u);
        std::ifstream sent(package_, std::ios::binary);
        std::ifstream stored(jobs.front() / "package.json", std::ios::binary);
        ASSERT_EQ(fs::file_size(jobs.front() / "package.json"), fs::file_size(package_));
        std::string a(1'000'000, '\0');
        std::string b = a;
        while (sent.read(a.data(), 1'000'000) && stored.read(b.data(), 1'000'000))
            ASSERT_TRUE(a == b);
    }

    fs::path package_ = fs::temp_directory_path() / "large_job.json";
};

// The peak is of the whole program, so no other test may hold as much as this bound.
TEST_F(LargeJobTest, IsHeldInMemoryLittleMoreThanOnce) {
    constexpr std::size_t packageSize = 200'000'000;
    WritePackage(packageSize);
    const HttpResult result =
        SubmitJob(service_.https, package_.wstring(), token_, L"large", L"5.2");
    const std::size_t peak = PeakMemory();
    EXPECT_TRUE(result.ok) << result.status << PrintToString(result.text);
    ExpectStored();
    std::cout << "peak memory: " << peak << " bytes\n";
    EXPECT_GT(peak, packageSize); // the figure is about this package
    EXPECT_LE(peak, packageSize * 22 / 10);
}

TEST_F(LargeJobTest, CompletesOverASlowLine) {
    constexpr std::size_t packageSize = 3'000'000;
    constexpr std::size_t bytesPerSecond = 1'000'000;
    WritePackage(packageSize);
    Order(narrowToken_, {{"on", "jobs"}, {"read_bytes_per_second", bytesPerSecond}});
    const auto start = std::chrono::steady_clock::now();
    const HttpResult result =
        SubmitJob(service_.https, package_.wstring(), token_, L"slow", L"5.2");
    const auto took = std::chrono::steady_clock::now() - start;
    EXPECT_TRUE(result.ok) << result.status << PrintToString(result.text);
    EXPECT_GE(took, std::chrono::milliseconds(2500));
    ExpectStored();
}

} // namespace
} // namespace brimwave::testing
