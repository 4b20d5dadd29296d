#include "tests/pipeline/sequence_kit.h"

#include <gmock/gmock.h>

namespace brimwave {
namespace {

using brimwave::testing::accountAnswer;
using brimwave::testing::FakeHttp;
using brimwave::testing::RecordingPanel;
using brimwave::testing::serviceBase;
using brimwave::testing::TempFolder;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::StartsWith;

class ExportSequence : public brimwave::testing::SequenceTest {};

TEST_F(ExportSequence, RunsItsStagesInOrder) {
    http->Answer(200, accountAnswer).Answer(201, L"{}");
    ExportAndSend(panel);

    const std::wstring folder = JobFolder();
    ASSERT_EQ(folder.size(), std::wstring(L"room_").size() + 8);
    EXPECT_THAT(
        panel.calls,
        ElementsAre(
            L"balance: 42 credits - 7 of 10 conversions left today", L"disable", L"job: ",
            L"status 8 busy: Preparing job folder...",
            L"status 12 busy: Baking MultiTexture vertex colors...",
            L"status 15 busy: Checking for V-Ray materials...",
            L"status 20 busy: Deduplicating material names...", L"status 25 busy: Exporting FBX...",
            L"status 40 busy: Collecting textures...", L"status 55 busy: Textures: 1  (2 missing)",
            L"status 65 busy: Building Package...", L"status 78 busy: Package ready. Objects: 2",
            L"status 88 busy: Sending to server...", L"status 100: Done  OK  Objects: 2",
            L"job: Job: " + folder, L"enable"));

    EXPECT_TRUE(Exists(folder + L"\\room.fbx"));
    EXPECT_TRUE(Exists(folder + L"\\textures\\here.png"));
    EXPECT_FALSE(Exists(folder + L"\\1.json"));
    ExpectSceneAsBefore();
}

TEST_F(ExportSequence, SendsThePackageWhileItIsThere) {
    http->Answer(200, accountAnswer).Answer(201, L"{}");
    panel.token = L" \t token-2\r\n";
    panel.olderTarget = true;
    std::string package;
    http->OnRequest([&](const auto& request) {
        if (request.body)
            package = TempFolder::Read(exchange.Path(JobFolder() + L"\\1.json"));
    });
    ExportAndSend(panel);

    ASSERT_EQ(http->Requests().size(), 2u);
    const auto& check = http->Requests()[0];
    EXPECT_EQ(check.url, std::wstring(serviceBase) + L"/api/balance");
    EXPECT_EQ(check.token, L"token-2");
    const auto& job = http->Requests()[1];
    EXPECT_EQ(job.url, std::wstring(serviceBase) + L"/node/api/v1/jobs");
    EXPECT_EQ(job.token, L"token-2");
    EXPECT_EQ(job.extraHeaders,
              L"X-Job-Name: " + JobFolder() + L"\r\nX-Blender-Target-Version: 5.1");
    EXPECT_FALSE(package.empty());
    EXPECT_EQ(job.body, package);
    // The package and the FBX name the materials alike, by names that stand there for the export.
    EXPECT_NE(package.find("\"Wall_Paint_01\""), std::string::npos);
    EXPECT_EQ(package.find("Wall Paint"), std::string::npos);
}

TEST_F(ExportSequence, StopsBeforeAnythingChanges) {
    const std::wstring dashboard = std::wstring(serviceBase) + L"/dashboard";
    const struct {
        const char* what;
        std::wstring token;
        std::optional<HttpResult> account;
        std::optional<std::wstring> folder; // instead of the one that exists
        std::wstring message;
    } rows[] = {
        {"no token", L"", {}, {}, L"Invalid token.\nEnter your token from " + dashboard},
        {"blank token", L" \r\n\t ", {}, {}, L"Invalid token.\nEnter your token from " + dashboard},
        {"refused token",
         L"t",
         HttpResult{.status = 401, .text = L"{\"error\":\"Token missing or invalid\"}"},
         {},
         L"Invalid token.\nUpdate your token at " + dashboard},
        {"server error",
         L"t",
         HttpResult{.status = 500, .text = L""},
         {},
         L"Cannot connect to server:\nhttp_500"},
        {"no connection",
         L"t",
         HttpResult{.text = L"HTTP request failed, GetLastError=12029"},
         {},
         L"Cannot connect to server:\nHTTP request failed, GetLastError=12029"},
        {"no folder", L"t", HttpResult{.ok = true, .status = 200, .text = accountAnswer}, L"",
         L"Select an Exchange Folder."},
        {"blank folder", L"t", HttpResult{.ok = true, .status = 200, .text = accountAnswer}, L" ",
         L"Folder does not exist:\n "},
        {"missing folder", L"t", HttpResult{.ok = true, .status = 200, .text = accountAnswer},
         exchange.Path(L"not there"), L"Folder does not exist:\n" + exchange.Path(L"not there")},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        RecordingPanel refused;
        refused.token = row.token;
        refused.folder = row.folder.value_or(exchange.Path());
        NewService();
        if (row.account)
            http->Answer(row.account->status, row.account->text);
        ExportAndSend(refused);
        const bool accepted = row.account && row.account->ok;
        ASSERT_EQ(refused.calls.size(), accepted ? 2u : 1u);
        EXPECT_EQ(refused.calls.back(), L"message [Brimwave Platform] " + row.message);
        EXPECT_TRUE(refused.enabled);
        ExpectSceneAsBefore();
    }
}

TEST_F(ExportSequence, TakesAFileAsExchangeFolderAndFailsWithTheExport) {
    http->Answer(200, accountAnswer);
    panel.folder = exchange.Write(L"file.txt", "x");
    ExportAndSend(panel);
    ASSERT_GE(panel.calls.size(), 2u);
    EXPECT_THAT(panel.calls[panel.calls.size() - 2], StartsWith(L"error: FBX "));
    ExpectFinished();
}

TEST_F(ExportSequence, RefusedBakeLeavesTheSceneAndReady) {
    http->Answer(200, accountAnswer);
    panel.bakeGeometry = true;
    panel.answer = false;
    ExportAndSend(panel);
    EXPECT_THAT(
        panel.calls,
        ElementsAre(
            StartsWith(L"balance: "), L"disable", L"job: ",
            L"confirm [Bake Geometry] WARNING!\n\nThe scene geometry will be baked:\n"
            L"  - Ungroup all groups\n  - Convert to Editable Poly\n  - Reset XForm\n"
            L"  - Convert to Editable Poly again\n\nModifier stacks are collapsed. These "
            L"operations modify the scene and cannot be undone.\nDo not save the scene after "
            L"export!\n\nContinue?",
            L"enable", L"status 0: Ready."));
    EXPECT_TRUE(std::filesystem::is_empty(exchange.NativePath()));
    ExpectSceneAsBefore();
}

TEST_F(ExportSequence, RenderableSplinesTravelAsMeshesUnderTheirName) {
    scene["nodes"][0]["children"][1]["material"] = "steel";
    Open();
    http->Answer(200, accountAnswer).Answer(200, L"");
    ExportAndSend(panel);
    EXPECT_EQ(panel.status, L"Done  OK  Objects: 3");
    const std::string package = http->Requests().back().body.value_or("");
    EXPECT_NE(package.find("\"object_name\": \"Cable\""), std::string::npos);
    EXPECT_EQ(package.find("_bwSplineSrc"), std::string::npos);
    const std::string fbx = TempFolder::Read(exchange.Path(JobFolder() + L"\\room.fbx"));
    using namespace std::string_literals;
    EXPECT_NE(fbx.find("Cable\0\1Model"s), std::string::npos);
    ExpectSceneAsBefore();
}

TEST_F(ExportSequence, BakesAfterYesAndStillRemovesTheTwins) {
    http->Answer(200, accountAnswer).Answer(200, L"");
    panel.bakeGeometry = true;
    std::wstring nodesAtConfirm;
    panel.onCall = [&](const std::wstring& line) {
        if (line.starts_with(L"confirm"))
            for (INode* node : AllNodes())
                nodesAtConfirm += node->GetName() + std::wstring(L" ");
    };
    ExportAndSend(panel);
    EXPECT_THAT(panel.calls, ::testing::Contains(StartsWith(L"confirm [Bake Geometry]")));
    EXPECT_EQ(panel.status, L"Done  OK  Objects: 2");
    // The twins are made before the question, and gone in the end; the group was opened.
    EXPECT_NE(nodesAtConfirm.find(L"Cable_bwSplineSrc"), std::wstring::npos);
    std::vector<std::wstring> names;
    for (INode* node : AllNodes())
        names.emplace_back(node->GetName());
    EXPECT_THAT(names, ::testing::UnorderedElementsAre(L"Wall", L"Cable", L"Door"));
    EXPECT_STREQ(NodeNamed(L"Wall")->GetObjectRef()->ClassName(false).data(), L"Editable Poly");
    EXPECT_STREQ(NodeNamed(L"Cable")->GetObjectRef()->ClassName(false).data(), L"Line");
    EXPECT_THAT(NodeMaterialNames(), ::testing::UnorderedElementsAre(L"Wall Paint", L"Wall#Paint"));
}

TEST_F(ExportSequence, TellsWhatTheVRayConversionDid) {
    scene["materials"]["vray"] = {{"class", "VRayMtl"}, {"name", "v"}};
    scene["nodes"].push_back(BoxNode("Lamp shade", "vray"));
    const ScopedVariable asked("BRIMWAVE_VRAY_CONVERT", "1");
    const ScopedVariable converter(
        "BRIMWAVE_CORONA_CONVERTER",
        WideToUtf8(work.Write(L"converter.ms",
                              "struct BW_settings (silent, printInfo)\n"
                              "struct BW_converter (converterSettings = BW_settings(),\n"
                              "    fn convertNodeArray nodes = if nodes.count > 1 do throw \"2\")\n"
                              "::CoronaConverter = BW_converter()\n")));
    Open();
    http->Answer(200, accountAnswer).Answer(200, L"");
    ExportAndSend(panel);
    EXPECT_THAT(panel.Lines(L"status 17"),
                ElementsAre(L"status 17 busy: V-Ray converted: 1 objects"));
    EXPECT_EQ(panel.status, L"Done  OK  Objects: 3");

    scene["nodes"].push_back(BoxNode("Another", "vray"));
    Open();
    ClearExchange();
    panel.calls.clear();
    NewService().Answer(200, accountAnswer);
    ExportAndSend(panel);
    ASSERT_GE(panel.calls.size(), 3u);
    EXPECT_THAT(
        std::vector(panel.calls.end() - 3, panel.calls.end()),
        ElementsAre(L"status 15 busy: Checking for V-Ray materials...",
                    StartsWith(L"error: V-Ray conversion failed:\nconvertNodeArray failed: "),
                    L"enable"));
    EXPECT_FALSE(Exists(JobFolder() + L"\\room.fbx"));
    ExpectFinished();
    ExpectSceneAsBefore();
}

TEST_F(ExportSequence, TellsEveryAnswerOfTheService) {
    const std::wstring failed = L"message! [Brimwave Platform - Send Failed] "
                                L"The job was NOT accepted by the server (";
    const std::wstring retry =
        L"\n\nNothing was submitted - check your connection/token and try again.";
    const std::wstring topUp = L"message [Brimwave Platform - Balance] Insufficient credits.\n"
                               L"Top up your balance at " +
                               std::wstring(serviceBase) + L"/dashboard";
    const struct {
        int status; // 0: the transport failed
        std::wstring text;
        std::wstring last;
        std::wstring message;
    } rows[] = {
        {402, L"{\"error\":\"insufficient balance\"}", L"Insufficient balance.", topUp},
        {503, L"insufficient balance", L"Insufficient balance.", topUp},
        {0, L"-- insufficient balance", L"Insufficient balance.", topUp},
        {402, L"Insufficient balance", L"Send failed (HTTP 402).",
         failed + L"HTTP 402).\n\nInsufficient balance" + retry},
        {500, L"", L"Send failed (HTTP 500).", failed + L"HTTP 500).\n\n" + retry},
        {302, L"moved", L"Send failed (HTTP 302).", failed + L"HTTP 302).\n\nmoved" + retry},
        {0, L"timed out", L"Send failed (no response).",
         failed + L"no response).\n\ntimed out" + retry},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(::testing::PrintToString(row.last));
        panel.calls.clear();
        ClearExchange();
        NewService().Answer(200, accountAnswer);
        if (row.status > 0)
            http->Answer(row.status, row.text);
        else
            http->Fail(row.text);
        ExportAndSend(panel);
        EXPECT_THAT(std::vector(panel.calls.end() - 3, panel.calls.end()),
                    ElementsAre(L"status 100: " + row.last, row.message, L"enable"));
        EXPECT_EQ(panel.jobLabel, L"");
        EXPECT_FALSE(Exists(JobFolder() + L"\\1.json"));
        ExpectFinished();
        ExpectSceneAsBefore();
    }
}

TEST_F(ExportSequence, TakesEverySuccessForDoneWhateverItSays) {
    for (const int status : {200, 201, 204, 299}) {
        SCOPED_TRACE(status);
        ClearExchange();
        NewService().Answer(200, accountAnswer).Answer(status, L"insufficient balance");
        ExportAndSend(panel);
        EXPECT_EQ(panel.status, L"Done  OK  Objects: 2");
        EXPECT_FALSE(Exists(JobFolder() + L"\\1.json"));
        ExpectFinished();
    }
}

TEST_F(ExportSequence, WorksInFoldersOfAnyDepthAndScript) {
    const std::wstring deep =
        std::wstring(120, L'd') + L"\\Дом é \xd83c\xdf33 木 " + std::wstring(110, L'e');
    scene["file_name"] = "C:\\Scenes\\Гостиная 木.v2.max";
    Open();
    panel.folder = exchange.Path(deep);
    std::filesystem::create_directories(TempFolder::Native(panel.folder));
    http->Answer(200, accountAnswer).Answer(200, L"");
    ExportAndSend(panel);
    ASSERT_EQ(panel.status, L"Done  OK  Objects: 2");
    const std::wstring job = panel.folder + L"\\" + panel.jobLabel.substr(5);
    ASSERT_GT(job.size() + std::wstring(L"\\1.json").size(), 260u);
    EXPECT_THAT(panel.jobLabel, StartsWith(L"Job: Гостиная 木.v2_"));
    EXPECT_TRUE(TempFolder::Exists(job + L"\\Гостиная 木.v2.fbx"));
    EXPECT_TRUE(TempFolder::Exists(job + L"\\textures\\here.png"));
    EXPECT_FALSE(TempFolder::Exists(job + L"\\1.json"));
    EXPECT_FALSE(http->Requests()[1].body.value_or("").empty());
    ExpectSceneAsBefore();
}

TEST_F(ExportSequence, NamesAnUnsavedSceneUntitled) {
    scene["file_name"] = "";
    Open();
    http->Answer(200, accountAnswer).Answer(200, L"");
    ExportAndSend(panel);
    EXPECT_THAT(JobFolder(), StartsWith(L"untitled_"));
    EXPECT_TRUE(Exists(JobFolder() + L"\\untitled.fbx"));
}

} // namespace
} // namespace brimwave
