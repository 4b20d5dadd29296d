// The panel closed in each of its states: nothing crashes, and nothing is left behind.
#include "simhost/app/stage_recorder.h"
#include "tests/plugin/live_panel_test.h"
#include "tests/plugin/process_resources.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace brimwave::testing {
namespace {

constexpr int firstCycles = 3; // until the system has what it keeps
constexpr int cycles = 10;

class ClosingTest : public LivePanelTest {
  protected:
    [[nodiscard]] std::string_view Scene() const override {
        return R"({
          "format": "simhost-scene", "version": 1,
          "objects": { "box": { "class": "Box" } },
          "nodes": [ { "name": "Table", "object": "box" } ] })";
    }
    void Start() override {
        PutAccount(narrowToken_, 1000, 0);
        host_->OpenPanel();
        host_->Type(IDC_TOKEN, token_);
        host_->Press(IDC_SAVE);
        host_->Type(IDC_FOLDER, exchange_.Path().wstring());
        host_->ClosePanel();
    }

    /// What cycles runs of `act` leave behind.
    ProcessResources LeftBy(const std::function<void()>& act) {
        const auto run = [&](int times) {
            for (int i = 0; i < times; ++i)
                act();
            host_->User().WaitUntilSettled();
            host_->User().WaitUntilIdle();
            return CountResources(host_->UiThread());
        };
        run(firstCycles - 1);
        const ProcessResources before = run(1);
        ProcessResources left = run(cycles) - before;
        // A thread that was let go of ends when its request does.
        for (int i = 0; i < 25 && left.threads > 0; ++i) {
            host_->User().WaitUntilSettled();
            left = CountResources(host_->UiThread()) - before;
        }
        return left;
    }
    /// The panel's template without the panel: what it leaves is the system's own.
    void ShowBareDialog() const {
        host_->OnUiThread([this] {
            const HWND dialog = CreateDialogParamW(
                GetModuleHandleW(L"brimwave.dlu"), MAKEINTRESOURCEW(IDD_PANEL),
                host_->Window().Handle(), [](HWND, UINT, WPARAM, LPARAM) -> INT_PTR { return 0; },
                0);
            ShowWindow(dialog, SW_SHOW);
            DestroyWindow(dialog);
        });
    }
    void ExpectNothingLeft(const char* state, const std::function<void()>& act) {
        const ProcessResources left = LeftBy([&] {
            host_->OpenPanel();
            act();
            EXPECT_FALSE(IsWindow(host_->Panel())) << state;
        });
        const ProcessResources bare = LeftBy([this] { ShowBareDialog(); });
        EXPECT_LT(left.blocks, bare.blocks + cycles) << state; // not one a time
        EXPECT_LE(left.drawing, bare.drawing) << state;
        EXPECT_EQ(left.windows, 0) << state;
        EXPECT_LE(left.threads, 0) << state;
    }
};

TEST_F(ClosingTest, LeavesNothingBehindWhenIdle) {
    ExpectNothingLeft("closed by the user", [this] { host_->ClosePanel(); });
    ExpectNothingLeft("closed by the host", [this] { host_->EndEditing(); });
}

TEST_F(ClosingTest, LeavesNothingBehindAroundACheck) {
    ExpectNothingLeft("checking", [this] {
        host_->Press(IDC_REFRESH);
        host_->ClosePanel();
    });
    ExpectNothingLeft("checked", [this] {
        host_->Press(IDC_REFRESH);
        host_->User().WaitUntil([this] { return IsWindowEnabled(host_->Control(IDC_REFRESH)); });
        host_->ClosePanel();
    });
}

TEST_F(ClosingTest, LeavesNothingBehindDuringAnExport) {
    ExpectNothingLeft("exporting", [this] {
        host_->User().Press(host_->Control(IDC_EXPORT));
        host_->ClosePanel();
        host_->User().WaitUntilIdle();
    });
    EXPECT_EQ(NewJobs().size(), std::size_t{firstCycles + cycles}) << "each run goes on to its end";
}

TEST_F(ClosingTest, TheHostMayCloseItWhileABoxIsOpen) {
    const auto closed = [this](const std::function<void()>& press) {
        host_->OpenPanel();
        host_->User().OnMessageBox([this](const simhost::ShownMessage&, HWND box) {
            host_->EndEditing();
            EXPECT_FALSE(IsWindow(box));
        });
        const std::size_t before = host_->Messages().size();
        press();
        // The loop of a box that went under it drops the next message that it gets.
        host_->User().WaitUntilIdle();
        EXPECT_EQ(host_->Messages().size(), before + 1);
        EXPECT_FALSE(IsWindow(host_->Panel()));
        host_->User().OnMessageBox({});
    };
    closed([this] { host_->Press(IDC_SAVE); });
    closed([this] {
        host_->Press(IDC_BAKE);
        host_->Press(IDC_EXPORT);
    });
    EXPECT_THAT(NewJobs(), ::testing::IsEmpty()) << "no answer is no consent";
    SetEnvironmentVariableW(L"BRIMWAVE_SERVICE_URL", L"https://127.0.0.1:1");
    closed([this] { host_->Press(IDC_EXPORT); });
    closed([this] {
        host_->Press(IDC_REFRESH);
        host_->User().WaitUntil([this] { return !IsWindow(host_->Panel()); });
    });
}

TEST_F(ClosingTest, TheHostMayCloseItWhileAFolderIsChosen) {
    host_->OpenPanel();
    host_->User().Press(host_->Control(IDC_BROWSE));
    HWND browser = nullptr;
    host_->User().WaitUntil([&] { return (browser = host_->OwnedDialog()) != nullptr; });
    host_->User().WaitUntilSettled();
    host_->EndEditing();
    host_->User().WaitUntilIdle();
    EXPECT_FALSE(IsWindow(browser));
    host_->OpenPanel();
    EXPECT_EQ(host_->Text(IDC_FOLDER), exchange_.Path().wstring());
    EXPECT_TRUE(IsWindowEnabled(host_->Window().Handle()));
}

} // namespace
} // namespace brimwave::testing
