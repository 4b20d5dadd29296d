// Export & Send from the window, against the local service: the whole run and every way in which
// it may end.
#include "tests/plugin/export_run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace brimwave::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

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
