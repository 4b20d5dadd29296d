// The panel's template, control by control, and the way through it by keyboard.
#include "tests/plugin/panel_host.h"

#include <commctrl.h>

#include <gtest/gtest.h>

#include <optional>

namespace brimwave::testing {
namespace {

constexpr int none = -1;

struct ControlRow {
    int id;
    const wchar_t* kind;
    DWORD type; // the style bits that make the kind what it is
    const wchar_t* text;
    int x, y, width, height; // dialog units
};

// In tab order. Texts of null are filled in when the panel opens.
const ControlRow controls[] = {
    {1001, L"Static", SS_BITMAP, L"", 7, 6, 226, 40},
    {1002, L"Static", SS_RIGHT, L"v3.41", 178, 48, 56, 10},
    {none, L"Button", BS_GROUPBOX, L"API Token", 6, 60, 228, 33},
    {1003, L"Edit", ES_AUTOHSCROLL, L"", 10, 73, 188, 14},
    {1004, L"Button", BS_PUSHBUTTON, L"Save", 202, 72, 28, 15},
    {none, L"Button", BS_GROUPBOX, L"Balance", 6, 96, 228, 28},
    {1005, L"Static", SS_LEFT, L"-", 12, 108, 154, 12},
    {1006, L"Button", BS_PUSHBUTTON, L"Refresh", 182, 105, 48, 15},
    {none, L"Button", BS_GROUPBOX, L"Exchange Folder", 6, 126, 228, 32},
    {1007, L"Edit", ES_AUTOHSCROLL, L"", 10, 138, 188, 14},
    {1008, L"Button", BS_PUSHBUTTON, L"...", 202, 137, 28, 15},
    {none, L"Button", BS_GROUPBOX, L"Options", 6, 160, 228, 72},
    {1009, L"Button", BS_AUTOCHECKBOX, L"Export Displacement", 12, 172, 140, 10},
    {1010, L"Button", BS_AUTOCHECKBOX, L"Bake Geometry (Ungroup -> Reset XForm -> Editable Poly)",
     12, 186, 220, 10},
    {1016, L"Static", SS_LEFT, L"Conversion path:", 12, 201, 60, 10},
    {1017, L"Button", BS_AUTORADIOBUTTON, L"A - Blender 5.1 and older", 74, 200, 156, 10},
    {1018, L"Button", BS_AUTORADIOBUTTON, L"B - Blender 5.2 and newer", 74, 213, 156, 10},
    {1011, L"Button", BS_PUSHBUTTON, L"Export && Send", 6, 237, 228, 26},
    {1012, L"msctls_progress32", 0, L"", 6, 268, 228, 12},
    {1013, L"Static", SS_LEFT, L"Ready.", 6, 284, 228, 10},
    {1014, L"Static", SS_LEFT, L"", 6, 297, 228, 10},
    {1015, L"Static", SS_CENTER | SS_NOTIFY, L"https://panel.test:444", 6, 317, 228, 10},
};

class ControlsTest : public ::testing::Test {
  protected:
    void SetUp() override {
        SetEnvironmentVariableW(L"BRIMWAVE_SERVICE_URL", L"https://panel.test:444");
        host_.emplace(settings_.Path().wstring());
        panel_ = host_->OpenPanel();
    }

    RECT Rectangle(HWND control) const {
        RECT area{};
        GetWindowRect(control, &area);
        MapWindowPoints(nullptr, panel_, reinterpret_cast<POINT*>(&area), 2);
        return area;
    }

    void ExpectRow(HWND control, const ControlRow& row) const {
        const std::string what = "control " + std::to_string(row.id) + " of " +
                                 ::testing::PrintToString(std::wstring(row.text));
        wchar_t kind[64] = {};
        GetClassNameW(control, kind, 64);
        EXPECT_EQ(std::wstring(kind), row.kind) << what;
        EXPECT_EQ(simhost::Robot::TextOf(control), row.text) << what;
        const DWORD style = static_cast<DWORD>(GetWindowLongPtrW(control, GWL_STYLE));
        EXPECT_EQ(style & (row.type | 0xF), row.type) << what;
        EXPECT_EQ(style & (WS_VISIBLE | WS_DISABLED), WS_VISIBLE) << what;
        RECT place{row.x, row.y, row.width, row.height}; // sizes are rounded by themselves
        MapDialogRect(panel_, &place);
        const RECT wanted{place.left, place.top, place.left + place.right,
                          place.top + place.bottom};
        const RECT area = Rectangle(control);
        EXPECT_TRUE(EqualRect(&area, &wanted))
            << what << ": " << area.left << "," << area.top << " " << area.right - area.left << "x"
            << area.bottom - area.top;
    }

    ScratchFolder settings_;
    std::optional<PanelHost> host_;
    HWND panel_ = nullptr;
};

TEST_F(ControlsTest, EveryControlStandsWhereItBelongs) {
    HWND control = GetWindow(panel_, GW_CHILD);
    for (const ControlRow& row : controls) {
        ASSERT_NE(control, nullptr) << row.id;
        if (row.id != none) {
            EXPECT_EQ(GetDlgCtrlID(control), row.id);
        }
        ExpectRow(control, row);
        control = GetWindow(control, GW_HWNDNEXT);
    }
    EXPECT_EQ(control, nullptr) << "a control too many";
}

TEST_F(ControlsTest, TheWindowIsAnOwnedPopupWithCaption) {
    EXPECT_EQ(simhost::Robot::TextOf(panel_), L"Brimwave Platform");
    const DWORD style = static_cast<DWORD>(GetWindowLongPtrW(panel_, GWL_STYLE));
    EXPECT_EQ(style & (WS_POPUP | WS_CAPTION | WS_SYSMENU), WS_POPUP | WS_CAPTION | WS_SYSMENU);
    EXPECT_EQ(GetWindow(panel_, GW_OWNER), host_->Window().Handle());
    RECT wanted{0, 0, 241, 332};
    MapDialogRect(panel_, &wanted);
    RECT area{};
    GetClientRect(panel_, &area);
    EXPECT_TRUE(EqualRect(&area, &wanted)) << area.right << "x" << area.bottom;
}

TEST_F(ControlsTest, TheProgressBarGoesTo100) {
    const HWND bar = host_->Control(IDC_PROGRESS);
    EXPECT_EQ(SendMessageW(bar, PBM_GETRANGE, TRUE, 0), 0);
    EXPECT_EQ(SendMessageW(bar, PBM_GETRANGE, FALSE, 0), 100);
    EXPECT_EQ(SendMessageW(bar, PBM_GETPOS, 0, 0), 0);
}

TEST_F(ControlsTest, TabVisitsEveryControlThatDoesSomething) {
    EXPECT_EQ(host_->Focus(), IDC_TOKEN);
    const int order[] = {IDC_SAVE, IDC_REFRESH, IDC_FOLDER, IDC_BROWSE, IDC_DISPLACEMENT,
                         IDC_BAKE, IDC_PATH_B,  IDC_EXPORT, IDC_LINK,   IDC_TOKEN};
    for (const int next : order) {
        host_->User().PressKey(VK_TAB);
        EXPECT_EQ(host_->Focus(), next);
    }
}

TEST_F(ControlsTest, ArrowsChooseTheConversionPath) {
    while (host_->Focus() != IDC_PATH_B)
        host_->User().PressKey(VK_TAB);
    host_->User().PressKey(VK_UP);
    EXPECT_EQ(host_->Focus(), IDC_PATH_A);
    EXPECT_TRUE(host_->Checked(IDC_PATH_A));
    EXPECT_FALSE(host_->Checked(IDC_PATH_B));
    host_->User().PressKey(VK_DOWN);
    EXPECT_EQ(host_->Focus(), IDC_PATH_B);
    EXPECT_TRUE(host_->Checked(IDC_PATH_B));
    host_->User().PressKey(VK_DOWN);
    EXPECT_EQ(host_->Focus(), IDC_PATH_A) << "the group ends with its second button";
}

TEST_F(ControlsTest, SpaceChecksTheBoxes) {
    for (const int box : {IDC_DISPLACEMENT, IDC_BAKE}) {
        while (host_->Focus() != box)
            host_->User().PressKey(VK_TAB);
        for (const bool checked : {true, false}) {
            host_->User().PressKey(VK_SPACE);
            EXPECT_EQ(host_->Checked(box), checked) << box;
        }
    }
}

} // namespace
} // namespace brimwave::testing
