// The background check itself, at every moment at which the panel may let go of it.
#include "plugin/balance_check.h"

#include "tests/plugin/block_counter.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <semaphore>
#include <thread>

namespace brimwave {

namespace {

std::binary_semaphore* requestMayEnd = nullptr; // null: at once
std::atomic<int> requests{0};
bool requestThrows = false;

} // namespace

/// Takes the service's place in this test program.
BalanceResult FetchBalance(std::wstring_view baseAddress, std::wstring_view token) {
    ++requests;
    if (requestMayEnd)
        requestMayEnd->acquire();
    if (requestThrows)
        throw std::bad_alloc();
    BalanceResult result;
    result.error = std::wstring(baseAddress) + L"|" + std::wstring(token) + L" and more text";
    return result;
}

namespace testing {
namespace {

class BalanceCheckTest : public ::testing::Test {
  protected:
    void SetUp() override {
        requests = 0;
        requestThrows = false;
        requestMayEnd = nullptr;
        window_ = NewWindow();
    }
    void TearDown() override { DestroyWindow(window_); }

    static HWND NewWindow() {
        return CreateWindowExW(0, L"Static", L"", 0, 0, 0, 1, 1, HWND_MESSAGE, nullptr, nullptr,
                               nullptr);
    }
    std::unique_ptr<BalanceCheck> Start() const {
        return BalanceCheck::Start(window_, L"https://s.test", L"a token");
    }
    /// The record that the check posts.
    static LPARAM WaitForRecord() {
        MSG message{};
        while (GetMessageW(&message, nullptr, 0, 0) > 0)
            if (message.message == balanceChecked)
                return message.lParam;
        return 0;
    }
    static void WaitForRequest(int count = 1) {
        while (requests < count)
            Sleep(1);
    }
    /// Blocks that a check leaves behind, after its thread has ended. The runtime keeps some for
    /// the first thread. On a busy machine an earlier thread may still hold a few when counting
    /// begins, fewer than ten leaks.
    template <typename Run>
    static void ExpectNoLeak(const char* what, const Run& run) {
        run();
        Sleep(50);
        const long before = LiveBlocks();
        for (int i = 0; i < 10; ++i)
            run();
        for (int i = 0; i < 200 && LiveBlocks() > before; ++i)
            Sleep(5);
        EXPECT_LE(LiveBlocks(), before) << what;
    }

    HWND window_ = nullptr;
};

TEST_F(BalanceCheckTest, TheRecordComesWithTheMessage) {
    const auto check = Start();
    ASSERT_NE(check, nullptr);
    const LPARAM record = WaitForRecord();
    EXPECT_EQ(check->Take(0), nullptr);
    EXPECT_EQ(check->Take(record + 8), nullptr) << "somebody else's message";
    const auto result = check->Take(record);
    ASSERT_NE(result, nullptr);
    EXPECT_EQ(result->error, L"https://s.test|a token and more text");
    EXPECT_EQ(check->Take(record), nullptr) << "a second time";
}

TEST_F(BalanceCheckTest, AFailureInsideStillAnswers) {
    requestThrows = true;
    const auto check = Start();
    const auto result = check->Take(WaitForRecord());
    ASSERT_NE(result, nullptr);
    EXPECT_FALSE(result->ok);
}

TEST_F(BalanceCheckTest, NothingLeaksWheneverThePanelLetsGo) {
    ExpectNoLeak("taken", [this] {
        const auto check = Start();
        static_cast<void>(check->Take(WaitForRecord()));
    });
    ExpectNoLeak("while the request runs", [this] {
        std::binary_semaphore gate(0);
        requestMayEnd = &gate;
        const int before = requests;
        auto check = Start();
        WaitForRequest(before + 1);
        check.reset();
        gate.release();
        Sleep(20); // the gate outlives the request
    });
    requestMayEnd = nullptr;
    ExpectNoLeak("posted, not delivered", [this] {
        auto check = Start();
        Sleep(20);
        check.reset();
        MSG message{};
        EXPECT_FALSE(PeekMessageW(&message, window_, balanceChecked, balanceChecked, PM_REMOVE));
    });
    ExpectNoLeak("the window is gone", [] {
        const HWND gone = NewWindow();
        DestroyWindow(gone);
        auto check = BalanceCheck::Start(gone, L"https://s.test", L"a token");
        Sleep(20);
        check.reset();
    });
    ExpectNoLeak("at some moment", [this] {
        auto check = Start();
        for (int spin = std::rand() % 2000; spin > 0; --spin)
            YieldProcessor();
        check.reset();
    });
}

} // namespace
} // namespace testing
} // namespace brimwave
