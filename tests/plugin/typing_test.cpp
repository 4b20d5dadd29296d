// Keys between the host's shortcuts and the panel's edit boxes.
#include "tests/plugin/panel_host.h"

#include <max.h>

#include <gtest/gtest.h>

namespace brimwave::testing {
namespace {

class TypingTest : public ::testing::Test {
  protected:
    void SetUp() override { host_.OpenPanel(); }
    [[nodiscard]] bool ShortcutsOn() const {
        bool on = false;
        host_.OnUiThread([&] { on = AcceleratorsEnabled(); });
        return on;
    }

    ScratchFolder settings_;
    PanelHost host_{settings_.Path().wstring()};
};

TEST_F(TypingTest, EditBoxesGetTheirLettersAndTheHostTheRest) {
    host_.Type(IDC_TOKEN, L"qwe123_Xyz");
    EXPECT_EQ(host_.Text(IDC_TOKEN), L"qwe123_Xyz");
    host_.Type(IDC_FOLDER, L"z:\\some where\\42");
    EXPECT_EQ(host_.Text(IDC_FOLDER), L"z:\\some where\\42");
    EXPECT_EQ(host_.Window().TakenKeys(), L"");

    host_.User().PressKey(VK_TAB); // on to a button
    host_.User().PressKey('M');
    EXPECT_EQ(host_.Window().TakenKeys(), L"M") << "outside edit boxes shortcuts work";
}

TEST_F(TypingTest, ShortcutsAreOffExactlyWhileAnEditBoxHasTheFocus) {
    EXPECT_EQ(host_.Focus(), IDC_TOKEN);
    EXPECT_FALSE(ShortcutsOn());
    host_.User().PressKey(VK_TAB);
    EXPECT_TRUE(ShortcutsOn());
    SendMessageW(host_.Panel(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(host_.Control(IDC_FOLDER)),
                 TRUE);
    EXPECT_FALSE(ShortcutsOn());
    SendMessageW(host_.Panel(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(host_.Control(IDC_TOKEN)),
                 TRUE);
    EXPECT_FALSE(ShortcutsOn()) << "from one edit box to the other";
    host_.OnUiThread([&] { SetFocus(host_.Window().Handle()); });
    EXPECT_TRUE(ShortcutsOn()) << "in the host's own window";
}

// The host that these tests run in behaves as the real one: what the panel does not ask for, it
// does not get.
TEST_F(TypingTest, AHostThatWasNotAskedKeepsTheKeys) {
    host_.OnUiThread([this] { GetCOREInterface()->UnRegisterDlgWnd(host_.Panel()); });
    host_.User().PressKey(VK_TAB);
    EXPECT_EQ(host_.Focus(), IDC_TOKEN) << "no Tab for a dialog that is not registered";
    host_.OnUiThread([] { EnableAccelerators(); });
    host_.Type(IDC_TOKEN, L"ab1_");
    EXPECT_EQ(host_.Text(IDC_TOKEN), L"_") << "letters and digits are shortcuts";
    EXPECT_EQ(host_.Window().TakenKeys(), L"AB1");
    host_.OnUiThread([] { DisableAccelerators(); });
}

TEST_F(TypingTest, ShortcutsComeBackHoweverThePanelGoes) {
    const std::pair<const char*, std::function<void()>> ways[] = {
        {"closed", [this] { host_.ClosePanel(); }},
        {"editing ended", [this] { host_.EndEditing(); }},
        {"destroyed", [this] { host_.OnUiThread([this] { DestroyWindow(host_.Panel()); }); }},
    };
    for (const auto& [name, close] : ways) {
        EXPECT_EQ(host_.Focus(), IDC_TOKEN) << name;
        EXPECT_FALSE(ShortcutsOn()) << name;
        close();
        EXPECT_FALSE(IsWindow(host_.Panel())) << name;
        EXPECT_TRUE(ShortcutsOn()) << name;
        host_.OpenPanel();
    }
}

TEST_F(TypingTest, EnterAndEscapeLeaveThePanelAlone) {
    host_.Type(IDC_TOKEN, L"t");
    for (const WORD key : {WORD{VK_RETURN}, WORD{VK_ESCAPE}}) {
        host_.User().PressKey(key);
        EXPECT_TRUE(IsWindow(host_.Panel())) << key;
        EXPECT_EQ(host_.Text(IDC_TOKEN), L"t") << key;
    }
    EXPECT_TRUE(host_.Messages().empty());
}

TEST_F(TypingTest, EnterPressesTheButtonThatHasTheFocus) {
    host_.User().PressKey(VK_TAB);
    ASSERT_EQ(host_.Focus(), IDC_SAVE);
    host_.User().PressKey(VK_RETURN);
    ASSERT_EQ(host_.Messages().size(), 1u);
    host_.User().PressKey(VK_TAB);
    ASSERT_EQ(host_.Focus(), IDC_REFRESH);
    host_.User().PressKey(VK_RETURN);
    ASSERT_EQ(host_.Messages().size(), 2u);
    EXPECT_EQ(host_.Messages()[1], L"[Brimwave Platform] Enter an API token.");
}

TEST_F(TypingTest, OpeningTwiceRaisesTheFirst) {
    const HWND first = host_.Panel();
    host_.Type(IDC_TOKEN, L"typed");
    host_.OnUiThread([&] { SetForegroundWindow(host_.Window().Handle()); });
    EXPECT_EQ(host_.OpenPanel(), first);
    EXPECT_EQ(host_.Text(IDC_TOKEN), L"typed");
    HWND foreground = nullptr;
    host_.OnUiThread([&] { foreground = GetForegroundWindow(); });
    EXPECT_EQ(foreground, first);
}

} // namespace
} // namespace brimwave::testing
