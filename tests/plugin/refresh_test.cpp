// Refresh from the window, against the local service.
#include "tests/plugin/live_panel_test.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

namespace brimwave::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class RefreshTest : public LivePanelTest {
  protected:
    void Start() override {
        host_->OpenPanel();
        host_->Type(IDC_TOKEN, L" " + token_ + L" ");
    }
    [[nodiscard]] bool RefreshOn() const { return IsWindowEnabled(host_->Control(IDC_REFRESH)); }
    void RefreshAndWait() {
        host_->Press(IDC_REFRESH);
        host_->User().WaitUntil([this] { return RefreshOn(); });
        host_->User().WaitUntilIdle();
    }
    void Delay(int milliseconds) { Order(narrowToken_, {{"delay_ms", milliseconds}}); }
    void WaitForRequest() {
        host_->User().WaitUntil([this] { return !Received().empty(); });
    }
};

TEST_F(RefreshTest, ShowsTheBalance) {
    EXPECT_THAT(Received(), IsEmpty()) << "opening makes no request";
    EXPECT_EQ(host_->Text(IDC_BALANCE), L"-");
    RefreshAndWait();
    EXPECT_EQ(host_->Text(IDC_BALANCE), L"42 credits - 3 of 3 conversions left today");
    PutAccount(narrowToken_, 7, 0);
    RefreshAndWait();
    EXPECT_EQ(host_->Text(IDC_BALANCE), L"7 credits - Unlimited conversions");
    EXPECT_THAT(host_->Messages(), IsEmpty());
}

TEST_F(RefreshTest, EachFailureHasItsTextAndBox) {
    const std::wstring invalid = L"[Brimwave Platform] Invalid token.\nUpdate your token at " +
                                 service_.https + L"/dashboard";
    host_->Type(IDC_TOKEN, L"nobody");
    RefreshAndWait();
    EXPECT_EQ(host_->Text(IDC_BALANCE), L"Invalid token");
    EXPECT_THAT(host_->Messages(), ElementsAre(invalid));

    host_->Type(IDC_TOKEN, token_);
    Order(narrowToken_, {{"status", 503}, {"body", "closed for today"}, {"times", 1}});
    RefreshAndWait();
    EXPECT_EQ(host_->Text(IDC_BALANCE), L"Error");
    const std::wstring error = L"[Brimwave Platform] Connection error:\nclosed for today";
    EXPECT_THAT(host_->Messages(), ElementsAre(invalid, error));

    SetEnvironmentVariableW(L"BRIMWAVE_SERVICE_URL", L"https://127.0.0.1:1");
    RefreshAndWait();
    EXPECT_EQ(host_->Text(IDC_BALANCE), L"Error");
    EXPECT_THAT(host_->Messages().back(),
                ::testing::StartsWith(L"[Brimwave Platform] Connection error:\nHTTP request"));
}

TEST_F(RefreshTest, SpinsAndTakesNoSecondPressWhileItRuns) {
    Delay(900);
    host_->Press(IDC_REFRESH);
    EXPECT_FALSE(RefreshOn());
    std::set<std::wstring> frames;
    host_->User().Press(host_->Control(IDC_REFRESH)); // pressed all the same
    host_->User().WaitUntil([&] {
        if (!RefreshOn())
            frames.insert(host_->Text(IDC_BALANCE));
        return RefreshOn();
    });
    frames.erase(L"42 credits - 3 of 3 conversions left today"); // set just before
    EXPECT_THAT(frames, ElementsAre(L"- Checking...", L"/ Checking...", L"\\ Checking...",
                                    L"| Checking..."));
    host_->WaitForText(IDC_BALANCE, L"42 credits - 3 of 3 conversions left today");
    EXPECT_EQ(Received().size(), 1u);
}

TEST_F(RefreshTest, TheFocusComesBackToTheButton) {
    while (host_->Focus() != IDC_REFRESH)
        host_->User().PressKey(VK_TAB);
    Delay(300);
    host_->User().PressKey(VK_SPACE);
    EXPECT_FALSE(RefreshOn());
    EXPECT_EQ(host_->Focus(), IDC_SAVE) << "a disabled button must not keep the focus";
    host_->User().WaitUntil([this] { return RefreshOn(); });
    host_->User().WaitUntilIdle();
    EXPECT_EQ(host_->Focus(), IDC_REFRESH);
}

TEST_F(RefreshTest, TheServiceMayAnswerAPanelThatIsGone) {
    Delay(500);
    host_->Press(IDC_REFRESH);
    WaitForRequest();
    host_->ClosePanel();
    host_->OpenPanel(); // another window, which knows nothing of that check
    EXPECT_EQ(host_->Text(IDC_BALANCE), L"-");
    EXPECT_TRUE(RefreshOn());
    Sleep(700);
    host_->User().WaitUntilIdle();
    EXPECT_EQ(host_->Text(IDC_BALANCE), L"-");
    host_->Type(IDC_TOKEN, token_);
    RefreshAndWait();
    EXPECT_EQ(host_->Text(IDC_BALANCE), L"42 credits - 3 of 3 conversions left today");
    EXPECT_THAT(host_->Messages(), IsEmpty());
}

TEST_F(RefreshTest, TheHostMayEndDuringACheck) {
    Delay(500);
    host_->Press(IDC_REFRESH);
    WaitForRequest();
    host_.reset(); // closes the panel and unloads the library
    Sleep(700);    // the thread ends in a library that it has kept loaded
    EXPECT_EQ(GetModuleHandleW(L"brimwave.dlu"), nullptr) << "and that is unloaded then";
}

} // namespace
} // namespace brimwave::testing
