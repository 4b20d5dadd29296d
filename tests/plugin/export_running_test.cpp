// What the panel does while an export runs, and what may happen to it meanwhile.
#include "tests/plugin/export_run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

namespace brimwave::testing {
namespace {

using ::testing::IsEmpty;
using ::testing::StartsWith;

TEST_F(ExportTest, TheSpinnerTurnsWhileItRuns) {
    std::set<std::wstring> shown;
    At(L"Exporting FBX...", [&] {
        // What a long stage that handles messages looks like.
        for (const DWORD end = GetTickCount() + 900; GetTickCount() < end; Sleep(5)) {
            MSG message{};
            while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
                DispatchMessageW(&message);
            shown.insert(host_->Text(IDC_STATUS));
        }
        EXPECT_FALSE(IsWindowEnabled(host_->Control(IDC_EXPORT)));
        EXPECT_NE(host_->Focus(), IDC_EXPORT);
    });
    SendMessageW(host_->Panel(), WM_NEXTDLGCTL,
                 reinterpret_cast<WPARAM>(host_->Control(IDC_EXPORT)), TRUE);
    Export();
    EXPECT_THAT(shown, ::testing::IsSupersetOf({L"- Exporting FBX...", L"/ Exporting FBX...",
                                                L"\\ Exporting FBX...", L"| Exporting FBX..."}));
    EXPECT_EQ(host_->Focus(), IDC_EXPORT) << "the focus comes back to the button";
}

TEST_F(ExportTest, ASecondPressDuringARunStartsNothing) {
    At(L"Exporting FBX...", [this] { PostMessageW(host_->Panel(), WM_COMMAND, IDC_EXPORT, 0); });
    Export();
    ExpectFinished(L"Done  OK  Objects: 2", 100);
    EXPECT_EQ(NewJobs().size(), 1u);
}

TEST_F(ExportTest, GoesOnToItsEndWhenThePanelIsClosed) {
    host_->Press(IDC_PATH_A);
    At(L"Exporting FBX...", [this] { PostMessageW(host_->Panel(), WM_CLOSE, 0, 0); });
    Export();
    EXPECT_FALSE(IsWindow(host_->Panel()));
    ASSERT_EQ(NewJobs().size(), 1u);
    EXPECT_EQ(Received().back()["headers"]["X-Blender-Target-Version"], "5.1")
        << "as chosen in the window that is gone";
    EXPECT_THAT(host_->Messages(), IsEmpty());

    // What goes wrong after the panel was closed is still told.
    Open();
    host_->Type(IDC_TOKEN, token_);
    Order(narrowToken_, {{"on", "jobs"}, {"status", 500}, {"times", 1}});
    Export();
    EXPECT_FALSE(IsWindow(host_->Panel()));
    ASSERT_EQ(host_->Messages().size(), 1u);
    EXPECT_THAT(host_->Messages()[0], StartsWith(L"[Brimwave Platform - Send Failed]"));
}

TEST_F(ExportTest, GoesOnInAPanelThatIsOpenedAgain) {
    At(L"Exporting FBX...", [this] {
        const HWND first = host_->Panel();
        DestroyWindow(first);
        host_->Reopen();
        EXPECT_NE(host_->Panel(), first);
        EXPECT_FALSE(IsWindowEnabled(host_->Control(IDC_EXPORT))) << "one run at a time";
        EXPECT_EQ(host_->Text(IDC_STATUS), L"Ready.");
    });
    Export();
    ExpectFinished(L"Done  OK  Objects: 2", 100);
    EXPECT_THAT(host_->Text(IDC_JOB), StartsWith(L"Job: room.v2_"));
}

TEST_F(ExportTest, TheHostMayEndDuringARun) {
    At(L"Exporting FBX...", [this] { host_->Window().Close(); });
    host_->User().Press(host_->Control(IDC_EXPORT));
    host_->User().WaitUntilClosed();
    host_.reset();
    EXPECT_EQ(NewJobs().size(), 1u) << "the run goes on to its end first";
}

} // namespace
} // namespace brimwave::testing
