// Export & Send from the window, against the local service: the whole run and every way in which
// it may end.
#include "simhost/app/stage_recorder.h"
#include "simhost/scene/scene.h"
#include "simhost/scene/snapshot.h"
#include "tests/plugin/live_panel_test.h"

#include <commctrl.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <set>

namespace brimwave::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

constexpr std::string_view sceneText = R"({
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
    [[nodiscard]] std::string_view Scene() const override { return sceneText; }
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

TEST_F(ExportTest, RunsThroughAllStagesToASubmittedJob) {
    host_->Press(IDC_REFRESH);
    host_->WaitForText(IDC_BALANCE, L"42 credits - 3 of 3 conversions left today");
    host_->Press(IDC_PATH_A);
    Export();
    EXPECT_THAT(Stages(), ElementsAre(L"8 Preparing job folder...",
                                      L"12 Baking MultiTexture vertex colors...",
                                      L"15 Checking for V-Ray materials...",
                                      L"20 Deduplicating material names...", L"25 Exporting FBX...",
                                      L"40 Collecting textures...", L"55 Textures: 0  (1 missing)",
                                      L"65 Building Package...", L"78 Package ready. Objects: 2",
                                      L"88 Sending to server...", L"100 Done  OK  Objects: 2"));
    ExpectFinished(L"Done  OK  Objects: 2", 100);
    ExpectScenePutBack();
    EXPECT_THAT(host_->Messages(), IsEmpty());

    const std::filesystem::path job = JobFolder();
    EXPECT_THAT(job.filename().wstring(), StartsWith(L"room.v2_"));
    EXPECT_EQ(host_->Text(IDC_JOB), L"Job: " + job.filename().wstring());
    EXPECT_TRUE(std::filesystem::exists(job / L"room.v2.fbx"));
    EXPECT_TRUE(std::filesystem::is_directory(job / L"textures"));
    EXPECT_FALSE(std::filesystem::exists(job / L"1.json"));

    ASSERT_EQ(NewJobs().size(), 1u);
    const nlohmann::json sent = Received().back();
    EXPECT_EQ(sent["headers"]["X-Blender-Target-Version"], "5.1");
    EXPECT_EQ(sent["headers"]["X-Job-Name"], job.filename().string());
    EXPECT_THAT(ReadFileBytes(NewJobs()[0] / "package.json"), HasSubstr("\"Table\""));

    host_->Press(IDC_REFRESH);
    host_->WaitForText(IDC_BALANCE, L"41 credits - 2 of 3 conversions left today");
}

TEST_F(ExportTest, StopsBeforeAnythingWhenTokenOrFolderWillNotDo) {
    const std::wstring folder = exchange_.Path().wstring();
    const std::wstring missing = folder + L"\\missing";
    const struct {
        std::wstring token, folder, message;
    } rows[] = {
        {L"  ", folder, L"Invalid token.\nEnter your token from " + Dashboard()},
        {L"nobody", folder, L"Invalid token.\nUpdate your token at " + Dashboard()},
        {token_, L"", L"Select an Exchange Folder."},
        {token_, missing, L"Folder does not exist:\n" + missing},
    };
    for (const auto& row : rows) {
        host_->Type(IDC_TOKEN, row.token);
        host_->Type(IDC_FOLDER, row.folder);
        Export();
        EXPECT_EQ(host_->Messages().back(), L"[Brimwave Platform] " + row.message);
        ExpectFinished(L"Ready.", 0);
    }
    Order(narrowToken_, {{"status", 503}, {"body", "closed for today"}, {"times", 1}});
    Export();
    EXPECT_EQ(host_->Messages().back(),
              L"[Brimwave Platform] Cannot connect to server:\nclosed for today");
    SetEnvironmentVariableW(L"BRIMWAVE_SERVICE_URL", L"https://127.0.0.1:1");
    Export();
    EXPECT_THAT(host_->Messages().back(),
                StartsWith(L"[Brimwave Platform] Cannot connect to server:\nHTTP request failed"));
    ExpectFinished(L"Ready.", 0);
    EXPECT_EQ(host_->Messages().size(), std::size(rows) + 2);
    EXPECT_THAT(NewJobs(), IsEmpty());
    EXPECT_TRUE(JobFolder().empty());
}

TEST_F(ExportTest, AsksBeforeABake) {
    const std::wstring question =
        L"[Bake Geometry] WARNING!\n\nThe scene geometry will be baked:\n  - Ungroup all groups\n"
        L"  - Convert to Editable Poly\n  - Reset XForm\n  - Convert to Editable Poly again\n\n"
        L"Modifier stacks are collapsed. These operations modify the scene and cannot be undone.\n"
        L"Do not save the scene after export!\n\nContinue?";
    host_->Press(IDC_BAKE);
    host_->User().AnswerNext(IDNO);
    Export();
    EXPECT_THAT(host_->Messages(), ElementsAre(question));
    ExpectFinished(L"Ready.", 0);
    EXPECT_THAT(NewJobs(), IsEmpty());

    host_->User().AnswerNext(IDYES);
    Export();
    EXPECT_THAT(host_->Messages(), ElementsAre(question, question));
    ExpectFinished(L"Done  OK  Objects: 2", 100);
}

TEST_F(ExportTest, TellsWhyAStageFailed) {
    const auto expectError = [this](const std::wstring& beginning) {
        Export();
        ASSERT_FALSE(host_->Messages().empty()) << ::testing::PrintToString(beginning);
        EXPECT_THAT(host_->Messages().back(),
                    StartsWith(L"[Brimwave Platform - Error] " + beginning));
        ExpectFinished(L"Error.", 100);
        ExpectScenePutBack();
        EXPECT_EQ(host_->Text(IDC_JOB), L"");
    };
    simhost::Scene::Current().exporter = simhost::Scene::Exporter::Refuses;
    expectError(L"FBX export failed (FBX exporter not available");
    simhost::Scene::Current().exporter = simhost::Scene::Exporter::WritesNothing;
    expectError(L"FBX was not created:\n");
    simhost::Scene::Current().exporter = simhost::Scene::Exporter::Throws;
    expectError(L"FBX export failed (FBX exporter not available");

    simhost::Scene::Current().exporter = simhost::Scene::Exporter::Works;
    At(L"Building Package...",
       [this] { std::filesystem::create_directory(JobFolder() / L"1.json"); });
    while (!JobFolder().empty()) // of the runs before
        std::filesystem::remove_all(JobFolder());
    expectError(L"Package export returned failure.");
    EXPECT_THAT(NewJobs(), IsEmpty());
}

TEST_F(ExportTest, TellsWhatTheServiceSaid) {
    const std::wstring rejected = L"\n\nNothing was submitted - check your connection/token and "
                                  L"try again.";
    Order(narrowToken_, {{"on", "jobs"}, {"status", 500}, {"body", "out of order"}, {"times", 1}});
    Export();
    ExpectFinished(L"Send failed (HTTP 500).", 100);
    ExpectScenePutBack();
    EXPECT_FALSE(std::filesystem::exists(JobFolder() / L"1.json"));
    EXPECT_EQ(host_->Messages().back(),
              L"[Brimwave Platform - Send Failed] The job was NOT accepted by the server "
              L"(HTTP 500).\n\nout of order" +
                  rejected);

    Order(narrowToken_, {{"on", "jobs"}, {"close", "before-header"}, {"times", 1}});
    Export();
    ExpectFinished(L"Send failed (no response).", 100);
    ExpectScenePutBack();
    EXPECT_THAT(host_->Messages().back(),
                StartsWith(L"[Brimwave Platform - Send Failed] The job was NOT accepted by the "
                           L"server (no response).\n\nHTTP request failed"));

    PutAccount(narrowToken_, 0, 3);
    Export();
    ExpectFinished(L"Insufficient balance.", 100);
    ExpectScenePutBack();
    EXPECT_EQ(host_->Messages().back(),
              L"[Brimwave Platform - Balance] Insufficient credits.\nTop up your balance at " +
                  Dashboard());
    EXPECT_EQ(host_->Text(IDC_BALANCE), L"0 credits - 3 of 3 conversions left today");
    EXPECT_EQ(host_->Text(IDC_JOB), L"");
    EXPECT_EQ(host_->Messages().size(), 3u);
}

TEST_F(ExportTest, BoxesHaveTheirIconsAndButtons) {
    std::vector<std::wstring> looks;
    WatchBoxes(looks);
    host_->Press(IDC_SAVE);
    host_->Press(IDC_BAKE);
    host_->User().AnswerNext(IDNO);
    Export();
    host_->Press(IDC_BAKE);
    simhost::Scene::Current().exporter = simhost::Scene::Exporter::Refuses;
    Export();
    simhost::Scene::Current().exporter = simhost::Scene::Exporter::Works;
    Order(narrowToken_, {{"on", "jobs"}, {"status", 500}, {"times", 1}});
    Export();
    PutAccount(narrowToken_, 0, 3);
    Export();
    EXPECT_THAT(looks, ElementsAre(L"Brimwave Platform: no icon, OK",
                                   L"Bake Geometry: warning, Yes and No",
                                   L"Brimwave Platform - Error: error, OK",
                                   L"Brimwave Platform - Send Failed: error, OK",
                                   L"Brimwave Platform - Balance: no icon, OK"));
}

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

TEST_F(ExportTest, ReportsAFailedConversion) {
    ASSERT_TRUE(simhost::LoadSceneText(R"({
      "format": "simhost-scene", "version": 1,
      "materials": { "v": { "class": "VRayMtl", "name": "V" } },
      "objects": { "box": { "class": "Box" } },
      "nodes": [ { "name": "A", "object": "box", "material": "v" } ] })"));
    SetEnvironmentVariableW(L"BRIMWAVE_VRAY_CONVERT", L"1");
    Export();
    ASSERT_FALSE(host_->Messages().empty());
    EXPECT_THAT(host_->Messages().back(),
                StartsWith(L"[Brimwave Platform - Error] V-Ray conversion failed:\n"));
    ExpectFinished(L"Error.", 100);
}

} // namespace
} // namespace brimwave::testing
