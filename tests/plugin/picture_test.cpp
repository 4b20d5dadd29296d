// Pictures of the panel in its states and at each display scale. They are for people to look at;
// what a program can see of them is checked: that they are painted, and that every text fits.
// The folder BRIMWAVE_PICTURES keeps them.
#include "host/kernel_handle.h"
#include "plugin/banner.h"

#include "simhost/app/stage_recorder.h"
#include "tests/plugin/live_panel_test.h"
#include "tests/plugin/pixels.h"

#include <commctrl.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <optional>

namespace brimwave::testing {
namespace {

/// The display scale that this process was started for; 0 when for none in particular.
UINT WantedDpi() {
    const char* const text = std::getenv("BRIMWAVE_TEST_DPI");
    return text ? static_cast<UINT>(std::atoi(text)) : 0;
}

std::filesystem::path PictureFolder(const ScratchFolder& scratch) {
    const char* const kept = std::getenv("BRIMWAVE_PICTURES");
    if (!kept || !*kept)
        return scratch.Path();
    const std::filesystem::path folder = *kept == '/' ? std::string("Z:") + kept : kept;
    std::filesystem::create_directories(folder);
    return folder;
}

/// Takes a picture of the panel and looks whether it is one.
Pixels TakePicture(PanelHost& host, const std::filesystem::path& file) {
    EXPECT_TRUE(host.User().SavePicture(host.Panel(), file.wstring())) << file;
    Pixels picture = LoadPixels(file);
    RECT window{};
    GetWindowRect(host.Panel(), &window);
    EXPECT_EQ(picture.width, window.right - window.left) << file;
    EXPECT_EQ(picture.height, window.bottom - window.top) << file;
    EXPECT_GT(picture.DistinctColours(), 100u) << file << " has no banner";
    return picture;
}

class StatePictures : public LivePanelTest {
  protected:
    [[nodiscard]] std::string_view Scene() const override {
        return R"({
          "format": "simhost-scene", "version": 1, "file_name": "C:\\Scenes\\living room.max",
          "materials": { "m": { "class": "Physical Material", "name": "Oak" } },
          "objects": { "box": { "class": "Box" } },
          "nodes": [ { "name": "Table", "object": "box", "material": "m" } ] })";
    }
    void Start() override {
        recorder_.OnStage([this](const simhost::Stage& stage) { OnStage(stage); });
        host_->OpenPanel();
        host_->OnUiThread([this] { recorder_.Attach(host_->Panel()); });
    }

    /// Holds a run while its picture is taken, with the spinner turning.
    void OnStage(const simhost::Stage& stage) {
        if (stage.text != L"Exporting FBX...")
            return;
        for (running_ = true; running_; Sleep(5)) {
            MSG message{};
            while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
                DispatchMessageW(&message);
        }
    }
    Pixels Take(const std::wstring& state) {
        const std::wstring scale = std::to_wstring(GetDpiForWindow(host_->Panel()));
        return TakePicture(*host_,
                           PictureFolder(settings_) / (L"panel-" + scale + L"-" + state + L".png"));
    }

    std::atomic<bool> running_ = false;
    simhost::StageRecorder recorder_;
};

// Runs in a process that was started at the scale of BRIMWAVE_TEST_DPI.
TEST_F(StatePictures, DISABLED_EachStateShows) {
    ASSERT_EQ(GetDpiForWindow(host_->Panel()), WantedDpi());
    const Pixels idle = Take(L"idle");

    host_->Type(IDC_TOKEN, token_);
    host_->Type(IDC_FOLDER, exchange_.Path().wstring());
    Order(narrowToken_, {{"delay_ms", 1500}, {"times", 1}});
    host_->Press(IDC_REFRESH);
    const Pixels checking = Take(L"checking");
    host_->User().WaitUntil([this] { return IsWindowEnabled(host_->Control(IDC_REFRESH)) != 0; });

    host_->User().Press(host_->Control(IDC_EXPORT));
    host_->User().WaitUntil([this] { return running_.load(); });
    const Pixels running = Take(L"running");
    running_ = false;
    host_->User().WaitUntilIdle();
    const Pixels done = Take(L"done");
    EXPECT_THAT(host_->Text(IDC_STATUS), ::testing::StartsWith(L"Done"));

    Order(narrowToken_, {{"on", "jobs"}, {"status", 500}, {"times", 1}});
    host_->User().Press(host_->Control(IDC_EXPORT));
    host_->User().WaitUntil([this] { return running_.load(); });
    running_ = false;
    host_->User().WaitUntilIdle();
    const Pixels failed = Take(L"failed");
    EXPECT_EQ(host_->Text(IDC_STATUS), L"Send failed (HTTP 500).");

    const Pixels* const pictures[] = {&idle, &checking, &running, &done, &failed};
    for (std::size_t i = 1; i < std::size(pictures); ++i)
        EXPECT_GT(pictures[i]->DifferentFrom(*pictures[i - 1]), 50u) << i;
}

/// Checks that each text fits its control, in the fonts and at the scale of this process.
class TextFit {
  public:
    explicit TextFit(const PanelHost& host) : host_(host) {}

    void Check(HWND control, const std::wstring& text) const {
        wchar_t kind[32] = {};
        GetClassNameW(control, kind, 32);
        const auto style = static_cast<DWORD>(GetWindowLongPtrW(control, GWL_STYLE));
        const bool isButton = std::wstring_view(kind) == L"Button";
        RECT area{};
        GetClientRect(control, &area);
        const SIZE size = Measure(control, text, isButton || !(style & SS_NOPREFIX));
        EXPECT_LE(size.cx + (isButton ? Ornament(style) : 0), area.right)
            << ::testing::PrintToString(text);
        EXPECT_LE(size.cy, area.bottom) << ::testing::PrintToString(text);
    }
    void Check(int id, const std::wstring& text) const { Check(host_.Control(id), text); }

  private:
    /// Width that a button needs beside its text: the frame, or the mark and a gap.
    static int Ornament(DWORD style) {
        const DWORD type = style & BS_TYPEMASK;
        const bool marked = type == BS_AUTOCHECKBOX || type == BS_AUTORADIOBUTTON;
        const int units = marked ? 13 + 4 : type == BS_GROUPBOX ? 2 * 8 : 2 * 4;
        return MulDiv(units, static_cast<int>(GetDpiForSystem()), USER_DEFAULT_SCREEN_DPI);
    }
    static SIZE Measure(HWND control, const std::wstring& text, bool prefixes) {
        const HDC device = GetDC(control);
        const auto font = SendMessageW(control, WM_GETFONT, 0, 0);
        const HGDIOBJ before = SelectObject(device, reinterpret_cast<HGDIOBJ>(font));
        RECT area{};
        DrawTextW(device, text.c_str(), -1, &area,
                  DT_CALCRECT | DT_SINGLELINE | (prefixes ? 0 : DT_NOPREFIX));
        SelectObject(device, before);
        ReleaseDC(control, device);
        return {area.right, area.bottom};
    }

    const PanelHost& host_;
};

// Runs in a process that was started at the scale of BRIMWAVE_TEST_DPI.
TEST(ScaledPanel, DISABLED_IsReadable) {
    SetEnvironmentVariableW(L"BRIMWAVE_SERVICE_URL", L"https://platform.brimwave.example");
    const ScratchFolder settings;
    PanelHost host(settings.Path().wstring());
    host.OpenPanel();
    ASSERT_EQ(GetDpiForWindow(host.Panel()), WantedDpi());

    const TextFit fit(host);
    for (HWND child = GetWindow(host.Panel(), GW_CHILD); child;
         child = GetWindow(child, GW_HWNDNEXT))
        if (const std::wstring text = simhost::Robot::TextOf(child); !text.empty())
            fit.Check(child, text);
    fit.Check(IDC_STATUS, L"| Baking MultiTexture vertex colors...");
    fit.Check(IDC_STATUS, L"| V-Ray converted: 123456 objects");
    fit.Check(IDC_STATUS, L"| Textures: 1234  (1234 missing)");
    fit.Check(IDC_JOB, L"Job: living room, second floor_abcdefgh");
    fit.Check(IDC_BALANCE, L"250 credits - 10 of 10 conversions left today");
    fit.Check(IDC_BALANCE, L"1250 credits - Daily limit reached (10/day)");

    // The banner fills its control.
    const auto bitmap = reinterpret_cast<HBITMAP>(
        SendMessageW(host.Control(IDC_BANNER), STM_GETIMAGE, IMAGE_BITMAP, 0));
    BITMAP about{};
    ASSERT_NE(GetObjectW(bitmap, sizeof about, &about), 0);
    RECT area{};
    GetClientRect(host.Control(IDC_BANNER), &area);
    EXPECT_EQ(about.bmWidth, area.right);
    EXPECT_EQ(about.bmHeight, area.bottom);
}

/// The display scale of processes started from now on.
class DisplayScale {
  public:
    explicit DisplayScale(DWORD dpi) {
        DWORD size = sizeof before_;
        hadOne_ = RegGetValueW(HKEY_CURRENT_USER, desktopKey, pixelsValue, RRF_RT_REG_DWORD,
                               nullptr, &before_, &size) == ERROR_SUCCESS;
        Set(dpi);
    }
    ~DisplayScale() {
        if (hadOne_)
            Set(before_);
        else
            RegDeleteKeyValueW(HKEY_CURRENT_USER, desktopKey, pixelsValue);
    }
    DisplayScale(const DisplayScale&) = delete;
    DisplayScale& operator=(const DisplayScale&) = delete;

  private:
    static constexpr const wchar_t* desktopKey = L"Control Panel\\Desktop";
    static constexpr const wchar_t* pixelsValue = L"LogPixels";
    static void Set(DWORD dpi) {
        RegSetKeyValueW(HKEY_CURRENT_USER, desktopKey, pixelsValue, REG_DWORD, &dpi, sizeof dpi);
    }

    DWORD before_ = 0;
    bool hadOne_ = false;
};

/// Runs tests of this program in a process of their own; gives its exit status.
DWORD RunAlone(const wchar_t* tests) {
    wchar_t program[1024] = {};
    GetModuleFileNameW(nullptr, program, 1024);
    std::wstring command = L"\"" + std::wstring(program) + L"\" --gtest_filter=" + tests +
                           L" --gtest_also_run_disabled_tests --gtest_output=";
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                        &start, &process))
        return ~0u;
    const KernelHandle handle(process.hProcess);
    const KernelHandle thread(process.hThread);
    DWORD status = ~0u;
    if (WaitForSingleObject(handle.get(), 120000) != WAIT_OBJECT_0)
        TerminateProcess(handle.get(), 1);
    else
        GetExitCodeProcess(handle.get(), &status);
    return status;
}

TEST(ScaledPanel, IsReadableAtEveryScale) {
    for (const DWORD dpi : {96, 120, 144, 192}) {
        const DisplayScale scale(dpi);
        SetEnvironmentVariableW(L"BRIMWAVE_TEST_DPI", std::to_wstring(dpi).c_str());
        EXPECT_EQ(RunAlone(L"ScaledPanel.DISABLED_*:StatePictures.DISABLED_*"), 0u) << dpi;
    }
}

TEST(BannerTest, TheLargePictureIsForFineDisplays) {
    for (const UINT dpi : {0u, 96u, 120u, 143u})
        EXPECT_EQ(BannerResource(dpi), 2001) << dpi;
    for (const UINT dpi : {144u, 192u, 480u})
        EXPECT_EQ(BannerResource(dpi), 2002) << dpi;
}

// The picture is decoded once, and freed by nobody but the library's shutdown.
TEST(BannerTest, OneBitmapServesEveryOpening) {
    const ScratchFolder settings;
    PanelHost host(settings.Path().wstring());
    const auto image = [&host] {
        host.OpenPanel();
        return SendMessageW(host.Control(IDC_BANNER), STM_GETIMAGE, IMAGE_BITMAP, 0);
    };
    const LRESULT first = image();
    EXPECT_NE(first, 0);
    host.ClosePanel();
    EXPECT_EQ(GetObjectType(reinterpret_cast<HGDIOBJ>(first)), DWORD{OBJ_BITMAP});
    EXPECT_EQ(image(), first);
}

} // namespace
} // namespace brimwave::testing
