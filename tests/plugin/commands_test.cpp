// The panel's buttons and boxes without the service: Save, folder browser, link.
#include "plugin/settings.h"

#include "tests/plugin/panel_host.h"
#include "text/utf8.h"

#include <commctrl.h>
#include <shellapi.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <fstream>

namespace brimwave::testing {
namespace {

using ::testing::ElementsAre;

constexpr const wchar_t* panelService = L"http://panel.test:8080";

class CommandsTest : public ::testing::Test {
  protected:
    void SetUp() override {
        SetEnvironmentVariableW(L"BRIMWAVE_SERVICE_URL", panelService);
        host_.OpenPanel();
    }
    /// Waits for the folder browser until it stands on the folder `name`.
    HWND WaitForBrowser(const std::wstring& name) {
        HWND browser = nullptr;
        host_.User().WaitUntil([&] {
            browser = host_.OwnedDialog();
            return browser && GetDlgItem(browser, IDOK) && SelectedFolder(browser) == name;
        });
        return browser;
    }
    static std::wstring SelectedFolder(HWND browser) {
        HWND tree = nullptr;
        EnumChildWindows(
            browser,
            [](HWND child, LPARAM found) -> BOOL {
                wchar_t kind[64] = {};
                GetClassNameW(child, kind, 64);
                if (std::wstring_view(kind) != WC_TREEVIEWW)
                    return TRUE;
                *reinterpret_cast<HWND*>(found) = child;
                return FALSE;
            },
            reinterpret_cast<LPARAM>(&tree));
        std::array<wchar_t, 260> text{};
        TVITEMW item{};
        item.mask = TVIF_TEXT;
        item.hItem = TreeView_GetSelection(tree);
        item.pszText = text.data();
        item.cchTextMax = static_cast<int>(text.size());
        SendMessageW(tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
        return item.pszText ? item.pszText : L"";
    }
    void PressIn(HWND browser, int id) {
        PostMessageW(browser, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED),
                     reinterpret_cast<LPARAM>(GetDlgItem(browser, id)));
        host_.User().WaitUntilIdle();
    }
    /// The texts of a window's labels, one a line.
    static std::wstring LabelsOf(HWND window) {
        std::wstring texts;
        for (HWND child = GetWindow(window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
            texts += simhost::Robot::TextOf(child) + L"\n";
        return texts;
    }

    /// The handler of a link may have come to the foreground.
    void FocusLink() {
        host_.OnUiThread([this] {
            SetForegroundWindow(host_.Panel());
            SetFocus(host_.Control(IDC_LINK));
        });
        host_.User().WaitUntil([this] { return host_.Focus() == IDC_LINK; });
    }

    ScratchFolder settings_;
    PanelHost host_{settings_.Path().wstring()};
};

TEST_F(CommandsTest, SaveTellsWhatItSaved) {
    const std::wstring empty = L"[Brimwave Platform] Token is empty - enter a token from "
                               L"http://panel.test:8080/dashboard";
    host_.Press(IDC_SAVE);
    EXPECT_THAT(host_.Messages(), ElementsAre(empty));
    host_.Type(IDC_TOKEN, L" \t ");
    host_.Press(IDC_SAVE);
    EXPECT_THAT(host_.Messages(), ElementsAre(empty, empty));
    host_.Type(IDC_TOKEN, L" abc ");
    host_.Press(IDC_SAVE);
    EXPECT_THAT(host_.Messages(), ElementsAre(empty, empty, L"[Brimwave Platform] Token saved."));
}

TEST_F(CommandsTest, RefreshAsksForATokenFirst) {
    host_.Type(IDC_TOKEN, L"  ");
    host_.Press(IDC_REFRESH);
    EXPECT_THAT(host_.Messages(), ElementsAre(L"[Brimwave Platform] Enter an API token."));
    EXPECT_EQ(host_.Text(IDC_BALANCE), L"-");
    EXPECT_TRUE(IsWindowEnabled(host_.Control(IDC_REFRESH)));
}

TEST_F(CommandsTest, TheFolderBrowserFillsTheFolderIn) {
    // Outside the user's own folders, where not every browser finds its way to a given folder.
    const ScratchFolder outside(L"C:\\");
    const std::wstring chosen = outside.File(L"chosen");
    std::filesystem::create_directory(chosen);
    host_.Type(IDC_FOLDER, chosen); // where the browser begins
    host_.User().Press(host_.Control(IDC_BROWSE));
    HWND browser = WaitForBrowser(L"chosen");
    EXPECT_THAT(LabelsOf(browser), ::testing::HasSubstr(L"Select Exchange Folder\n"));
    host_.OnUiThread([&] { SetDlgItemTextW(host_.Panel(), IDC_FOLDER, L""); });
    PressIn(browser, IDOK);
    EXPECT_EQ(host_.Text(IDC_FOLDER), chosen);
    const std::wstring file = settings_.File(L"CoronaBlenderExporter.ini");
    EXPECT_EQ(ReadSetting(file, L"Settings", L"exchangeFolder", L""), chosen);

    host_.User().Press(host_.Control(IDC_BROWSE));
    browser = WaitForBrowser(L"chosen");
    host_.OnUiThread([&] { SetDlgItemTextW(host_.Panel(), IDC_FOLDER, L"C:\\typed"); });
    PressIn(browser, IDCANCEL);
    EXPECT_EQ(host_.Text(IDC_FOLDER), L"C:\\typed") << "without a choice nothing changes";
    EXPECT_EQ(ReadSetting(file, L"Settings", L"exchangeFolder", L""), chosen);
    EXPECT_TRUE(IsWindowEnabled(host_.Panel()));
}

TEST_F(CommandsTest, OtherNotificationsAndMessagesDoNothing) {
    for (const int id : {IDC_SAVE, IDC_REFRESH, IDC_BROWSE, IDC_EXPORT, IDC_DISPLACEMENT})
        for (const int notification : {BN_SETFOCUS, BN_KILLFOCUS, BN_DBLCLK})
            SendMessageW(host_.Panel(), WM_COMMAND, MAKEWPARAM(id, notification),
                         reinterpret_cast<LPARAM>(host_.Control(id)));
    // A record that nobody waits for, and ticks of timers that do not run.
    SendMessageW(host_.Panel(), WM_APP + 1, 0, 0x1234);
    for (const WPARAM timer : {1001, 1002, 1003})
        SendMessageW(host_.Panel(), WM_TIMER, timer, 0);
    host_.User().WaitUntilIdle();
    EXPECT_TRUE(host_.Messages().empty());
    EXPECT_EQ(host_.Text(IDC_STATUS), L"Ready.");
    EXPECT_EQ(host_.Text(IDC_BALANCE), L"-");
}

TEST_F(CommandsTest, ATextThatIsTooLongShowsInATip) {
    const auto tip = [this](int label) {
        NMTTDISPINFOW about{};
        about.hdr.code = TTN_GETDISPINFOW;
        about.hdr.idFrom = static_cast<UINT_PTR>(label);
        std::wstring text;
        host_.OnUiThread([&] {
            SendMessageW(host_.Panel(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&about));
            text = about.lpszText;
        });
        return text;
    };
    const std::wstring job = L"Job: " + std::wstring(200, L'x') + L"_abcdefgh";
    SetWindowTextW(host_.Control(IDC_JOB), job.c_str());
    EXPECT_EQ(tip(IDC_JOB), job);
    EXPECT_EQ(tip(IDC_STATUS), L"") << "no tip for what can be read anyway";
}

constexpr std::wstring_view recordLink = L"--record-link";

/// This program as the handler of a link: started as `PROGRAM --record-link FILE ADDRESS` it
/// writes the address to the file and ends before any test.
const bool recordedLink = [] {
    int count = 0;
    LPWSTR* const arguments = CommandLineToArgvW(GetCommandLineW(), &count);
    const bool wanted = count == 4 && arguments[1] == recordLink;
    if (wanted) {
        const std::filesystem::path part = std::wstring(arguments[2]) + L".part";
        std::ofstream(part) << utf8::FromWide(arguments[3]);
        std::filesystem::rename(part, arguments[2]);
        ExitProcess(0);
    }
    LocalFree(arguments);
    return wanted;
}();

/// Makes this program the handler of http addresses; the system's own comes back afterwards.
class LinkHandler {
  public:
    explicit LinkHandler(const std::wstring& file) : before_(Command()) {
        std::array<wchar_t, 1024> program{};
        GetModuleFileNameW(nullptr, program.data(), static_cast<DWORD>(program.size()));
        SetCommand(L"\"" + std::wstring(program.data()) + L"\" " + std::wstring(recordLink) +
                   L" \"" + file + L"\" \"%1\"");
    }
    ~LinkHandler() { SetCommand(before_); }
    LinkHandler(const LinkHandler&) = delete;
    LinkHandler& operator=(const LinkHandler&) = delete;

  private:
    static constexpr const wchar_t* openCommandKey = L"http\\shell\\open\\command";

    static std::wstring Command() {
        std::array<wchar_t, 1024> text{};
        DWORD bytes = sizeof text;
        RegGetValueW(HKEY_CLASSES_ROOT, openCommandKey, nullptr, RRF_RT_REG_SZ, nullptr,
                     text.data(), &bytes);
        return text.data();
    }
    static void SetCommand(const std::wstring& value) {
        RegSetKeyValueW(HKEY_CLASSES_ROOT, openCommandKey, nullptr, REG_SZ, value.c_str(),
                        static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
    }

    std::wstring before_;
};

TEST_F(CommandsTest, TheLinkOpensByMouseAndByKeyboard) {
    EXPECT_EQ(host_.Text(IDC_LINK), panelService);
    const std::pair<const char*, std::function<void()>> ways[] = {
        {"click",
         [this] {
             PostMessageW(host_.Control(IDC_LINK), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
             PostMessageW(host_.Control(IDC_LINK), WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
         }},
        {"Enter",
         [this] {
             FocusLink();
             host_.User().PressKey(VK_RETURN);
         }},
        {"Space",
         [this] {
             FocusLink();
             host_.User().PressKey(VK_SPACE);
         }},
    };
    for (const auto& [name, open] : ways) {
        const std::wstring file = settings_.File(L"opened.txt");
        const LinkHandler handler(file);
        open();
        // The handler may still hold the file for a moment after it has named it.
        std::string address;
        host_.User().WaitUntil([&] {
            std::ifstream(std::filesystem::path(file)) >> address;
            return !address.empty();
        });
        EXPECT_EQ(address, "http://panel.test:8080") << name;
        std::filesystem::remove(file);
    }
}

} // namespace
} // namespace brimwave::testing
