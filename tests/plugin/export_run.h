#pragma once
// A window with a scene, a token and a folder, ready for Export & Send to the local service.
#include "simhost/app/stage_recorder.h"
#include "simhost/scene/scene.h"
#include "simhost/scene/snapshot.h"
#include "tests/plugin/live_panel_test.h"

#include <commctrl.h>

#include <gtest/gtest.h>

namespace brimwave::testing {

inline constexpr std::string_view exportedScene = R"({
  "format": "simhost-scene", "version": 1, "file_name": "C:\\Scenes\\room.v2.max",
  "maps": { "gone": { "class": "Bitmap", "name": "Gone", "file": "C:\\gone\\wood.png" } },
  "materials": {
    "oak": { "class": "Physical Material", "name": "Oak, oiled", "params": { "base_color_map": "gone" } }
  },
  "objects": { "box": { "class": "Box", "params": { "length": 8, "width": 6, "height": 4 } } },
  "nodes": [
    { "name": "Table", "object": "box", "material": "oak" },
    { "name": "Chair", "object": "box", "material": "oak" },
    { "name": "Cable", "object": { "class": "Line", "params": { "render_renderable": true },
                                   "splines": [{ "points": [[0, 0, 0], [9, 0, 0]] }] } }
  ]
})";

class ExportTest : public LivePanelTest {
  protected:
    [[nodiscard]] std::string_view Scene() const override { return exportedScene; }
    void Start() override {
        before_ = simhost::SnapshotScene();
        Open();
        host_->Type(IDC_TOKEN, token_);
        host_->Type(IDC_FOLDER, exchange_.Path().wstring());
    }
    void TearDown() override {
        LivePanelTest::TearDown();
        SetEnvironmentVariableW(L"BRIMWAVE_VRAY_CONVERT", nullptr);
    }

    void Open() {
        host_->OpenPanel();
        host_->OnUiThread([this] { recorder_.Attach(host_->Panel()); });
    }
    void Export() { host_->Press(IDC_EXPORT); }

    /// The one folder in the Exchange Folder; empty when there is none.
    [[nodiscard]] std::filesystem::path JobFolder() const {
        std::filesystem::path found;
        for (const auto& entry : std::filesystem::directory_iterator(exchange_.Path()))
            found = entry.path();
        return found;
    }
    [[nodiscard]] std::vector<std::wstring> Stages() const {
        std::vector<std::wstring> lines;
        for (const simhost::Stage& stage : recorder_.Stages())
            lines.push_back(std::to_wstring(stage.progress) + L" " + stage.text);
        return lines;
    }
    [[nodiscard]] std::wstring Dashboard() const { return service_.https + L"/dashboard"; }
    [[nodiscard]] LRESULT Progress() const {
        return SendMessageW(host_->Control(IDC_PROGRESS), PBM_GETPOS, 0, 0);
    }
    /// The panel stands ready for the next run.
    void ExpectFinished(const std::wstring& status, int progress) const {
        EXPECT_EQ(host_->Text(IDC_STATUS), status);
        EXPECT_EQ(Progress(), progress);
        EXPECT_TRUE(IsWindowEnabled(host_->Control(IDC_EXPORT)));
    }
    /// Calls `act` on the panel's thread when the stage comes up.
    void At(const std::wstring& stage, std::function<void()> act) {
        recorder_.OnStage([stage, act = std::move(act)](const simhost::Stage& shown) {
            if (shown.text == stage)
                act();
        });
    }

    /// Caption, icon and buttons of each message box from now on.
    void WatchBoxes(std::vector<std::wstring>& looks) {
        host_->User().OnMessageBox([&looks](const simhost::ShownMessage& shown, HWND box) {
            looks.push_back(shown.caption + L": " + IconOf(box) +
                            (GetDlgItem(box, IDNO) ? L", Yes and No" : L", OK"));
        });
    }
    static std::wstring IconOf(HWND box) {
        for (HWND child = GetWindow(box, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
            const auto icon = reinterpret_cast<HICON>(SendMessageW(child, STM_GETICON, 0, 0));
            if (icon && icon == LoadIconW(nullptr, MAKEINTRESOURCEW(32513))) // IDI_ERROR
                return L"error";
            if (icon && icon == LoadIconW(nullptr, MAKEINTRESOURCEW(32515))) // IDI_WARNING
                return L"warning";
            if (icon)
                return L"some other icon";
        }
        return L"no icon";
    }

    /// Spline twins gone, and every name as it was.
    void ExpectScenePutBack() const { EXPECT_EQ(simhost::SnapshotScene(), before_); }

    std::string before_;
    simhost::StageRecorder recorder_;
};

} // namespace brimwave::testing
