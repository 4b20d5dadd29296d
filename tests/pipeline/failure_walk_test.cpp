// Every point at which an export can fail: afterwards the scene is as it was, and the panel is
// ready for another run.
#include "simhost/scene/scene.h"
#include "tests/pipeline/sequence_kit.h"

#include <gmock/gmock.h>

#include <set>

#ifndef _WIN32
#include <unistd.h>
#endif

namespace brimwave {
namespace {

using brimwave::testing::accountAnswer;
using brimwave::testing::RecordingPanel;
using brimwave::testing::TempFolder;
using simhost::Call;
using ::testing::HasSubstr;
using ::testing::StartsWith;
namespace fs = std::filesystem;

class FailureWalk : public brimwave::testing::SequenceTest {
  protected:
    /// Calls `meddle` with the job folder when the panel shows the progress value.
    void At(int progress, std::function<void(const fs::path& jobFolder)> meddle) {
        panel.onCall = [=, this](const std::wstring& line) {
            if (line.starts_with(L"status " + std::to_wstring(progress) + L" busy"))
                meddle(exchange.NativePath() / TempFolder::Native(JobFolder()));
        };
    }

    void Run() {
        NewService().Answer(200, accountAnswer).Answer(200, L"");
        ExportAndSend(panel);
        ExpectFinished();
        ExpectSceneAsBefore();
    }

    /// The line before the button is enabled again: the box that ends a failed run.
    [[nodiscard]] std::wstring LastBox() const {
        return panel.calls.size() < 2 ? L"" : panel.calls[panel.calls.size() - 2];
    }
};

constexpr wchar_t fbxRefused[] =
    L"error: FBX export failed (FBX exporter not available or export was rejected — is the FBX "
    L"plugin installed in 3ds Max?)";

TEST_F(FailureWalk, ExporterMissingRefusingThrowingOrSilent) {
    for (const char* fault : {"absent", "refuses", "throws"}) {
        SCOPED_TRACE(fault);
        scene["faults"] = {{"exporter", fault}};
        Open();
        Run();
        EXPECT_EQ(LastBox(), fbxRefused);
    }
    ClearExchange();
    scene["faults"] = {{"exporter", "writes_nothing"}};
    Open();
    Run();
    EXPECT_EQ(LastBox(), L"error: FBX was not created:\n" +
                             exchange.Path(JobFolder() + L"\\room.fbx") +
                             L"\n\nPossible reasons:\n"
                             L"• Exchange Folder is not accessible from Windows\n"
                             L"• No write permissions\n"
                             L"• FBX export settings prohibit export");
    EXPECT_EQ(http->Requests().size(), 1u); // the token check, no job
}

TEST_F(FailureWalk, JobFolderGoneBeforeTheFbx) {
    At(25, [](const fs::path& folder) { fs::remove_all(folder); });
    Run();
    EXPECT_THAT(LastBox(), StartsWith(L"error: FBX "));
}

TEST_F(FailureWalk, JobFolderGoneBeforeTheTextures) {
    At(40, [](const fs::path& folder) { fs::remove_all(folder); });
    Run();
    EXPECT_EQ(LastBox(), L"error: Package export returned failure.");
}

TEST_F(FailureWalk, TexturesFolderInTheWayStopsNothing) {
    At(40, [](const fs::path& folder) {
        fs::remove_all(folder / "textures");
        std::ofstream(folder / "textures") << "a file";
    });
    Run();
    EXPECT_EQ(panel.status, L"Done  OK  Objects: 2");
}

TEST_F(FailureWalk, PackageCannotBeWritten) {
    At(65, [](const fs::path& folder) { fs::create_directories(folder / "1.json"); });
    Run();
    EXPECT_EQ(LastBox(), L"error: Package export returned failure.");
}

#ifndef _WIN32
/// While it lives, nothing can be made or removed in the folder, and nowhere else: root, whom no
/// permission stops, is somebody else for so long.
class ReadOnlyFolder {
  public:
    explicit ReadOnlyFolder(fs::path folder) : folder_(std::move(folder)) {
        fs::permissions(folder_, fs::perms(0555));
        if (wasRoot_ && seteuid(65534) != 0)
            ADD_FAILURE() << "still root";
    }
    ReadOnlyFolder(const ReadOnlyFolder&) = delete;
    ReadOnlyFolder& operator=(const ReadOnlyFolder&) = delete;
    ~ReadOnlyFolder() {
        if (wasRoot_ && seteuid(0) != 0)
            ADD_FAILURE() << "no longer root";
        fs::permissions(folder_, fs::perms(0755));
    }

  private:
    fs::path folder_;
    bool wasRoot_ = geteuid() == 0;
};

TEST_F(FailureWalk, FoldersTurnReadOnly) {
    const struct {
        int from, until;    // progress values
        const char* folder; // in the job folder; null: the Exchange Folder
        std::wstring status, box;
    } rows[] = {
        {8, 12, nullptr, L"Error.", fbxRefused},
        {25, 40, "", L"Error.", fbxRefused},
        {40, 55, "textures", L"Done  OK  Objects: 2", L""},
        {65, 78, "", L"Error.", L"error: Package export returned failure."},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.from);
        ClearExchange();
        panel.calls.clear();
        std::optional<ReadOnlyFolder> locked;
        panel.onCall = [&](const std::wstring& line) {
            const fs::path job = exchange.NativePath() / TempFolder::Native(JobFolder());
            if (line.starts_with(L"status " + std::to_wstring(row.from)))
                locked.emplace(row.folder ? job / row.folder : exchange.NativePath());
            else if (line.starts_with(L"status " + std::to_wstring(row.until)) ||
                     line.starts_with(L"error"))
                locked.reset();
        };
        Run();
        EXPECT_EQ(panel.status, row.status);
        if (panel.status == L"Error.") {
            EXPECT_EQ(LastBox(), row.box);
        }
    }
}

// A full disk on demand: the device that takes nothing.

TEST_F(FailureWalk, DiskFullWhileTexturesAndLogAreWritten) {
    At(40, [](const fs::path& folder) {
        fs::create_symlink("/dev/full", folder / "textures" / "here.png");
        fs::create_symlink("/dev/full", folder / "1.log");
    });
    Run();
    EXPECT_EQ(panel.status, L"Done  OK  Objects: 2");
    EXPECT_THAT(panel.Lines(L"status 55"),
                ::testing::ElementsAre(L"status 55 busy: Textures: 1  (2 missing)"));
}

TEST_F(FailureWalk, DiskFullWhileThePackageIsWritten) {
    At(65, [](const fs::path& folder) { fs::create_symlink("/dev/full", folder / "1.json"); });
    Run();
    EXPECT_EQ(LastBox(), L"error: Package export returned failure.");
}

TEST_F(FailureWalk, DiskFullWhileTheFbxIsWritten) {
    At(25, [](const fs::path& folder) { fs::create_symlink("/dev/full", folder / "room.fbx"); });
    Run();
    EXPECT_EQ(LastBox(), fbxRefused);
}

#endif

TEST_F(FailureWalk, PackageGoneBeforeItIsSent) {
    At(88, [](const fs::path& folder) { fs::remove(folder / "1.json"); });
    Run();
    EXPECT_EQ(panel.status, L"Send failed (no response).");
    EXPECT_THAT(LastBox(), HasSubstr(L"Cannot read JSON file: "));
    EXPECT_EQ(http->Requests().size(), 1u);
}

TEST_F(FailureWalk, TransportThrows) {
    for (const std::size_t failing : {1u, 2u}) {
        SCOPED_TRACE(failing);
        panel.calls.clear();
        NewService().Answer(200, accountAnswer).Answer(200, L"");
        http->OnRequest([&](const auto&) {
            if (http->Requests().size() == failing)
                throw std::runtime_error("the transport broke");
        });
        ExportAndSend(panel);
        EXPECT_THAT(LastBox(), StartsWith(L"error: "));
        ExpectFinished();
        ExpectSceneAsBefore();
    }
    EXPECT_FALSE(Exists(JobFolder() + L"\\1.json"));
}

// Every call of the host, broken while one stage runs.
TEST_F(FailureWalk, AnyCallOfTheHostFailsDuringAnyStage) {
    const Call calls[] = {
        Call::GetRootNode,   Call::GetCurFilePath,     Call::GetEnvironmentMap,
        Call::GetBackGround, Call::GetCurrentRenderer, Call::GetSceneMtls,
        Call::GetInstance,   Call::GetFullFilePath,    Call::ExecuteMAXScriptScript};
    // The first stands for the spline twins, which show no status.
    const wchar_t* const stages[] = {L"job: ",      L"status 8 ",  L"status 12 ",
                                     L"status 15 ", L"status 20 ", L"status 25 ",
                                     L"status 40 ", L"status 65 ", L"status 88 "};
    std::set<std::wstring> outcomes;
    const ScopedVariable asked("BRIMWAVE_VRAY_CONVERT", "1");
    bool otherKind = false;
    for (const Call call : calls)
        for (const bool throws : {true, false})
            for (const wchar_t* const stage : stages) {
                if (!throws && !simhost::CanAnswerNothing(call))
                    continue;
                SCOPED_TRACE(std::string(NameOfCall(call)) +
                             (throws ? " throws during " : " answers nothing during ") +
                             WideToUtf8(stage));
                otherKind = !otherKind;
                panel.onCall = [&](const std::wstring& line) {
                    simhost::Faults& faults = simhost::Scene::Current().faults;
                    faults.Clear();
                    faults.ThrowOtherKind(otherKind);
                    if (line.starts_with(stage))
                        throws ? faults.Add(call) : faults.AddNothing(call);
                };
                Run();
                outcomes.insert(panel.status);
                ClearExchange();
            }
    // Without its nodes or its name the scene is exported as far as it goes; what the walk of the
    // package cannot do without ends the run.
    EXPECT_THAT(outcomes, ::testing::IsSubsetOf(std::vector<std::wstring>{
                              L"Done  OK  Objects: 2", L"Done  OK  Objects: 0", L"Error."}));
    EXPECT_THAT(outcomes, ::testing::Contains(L"Done  OK  Objects: 2"));
}

TEST_F(FailureWalk, ThirdPartyClassesAnswerNothing) {
    const struct {
        const char* place; // in the scene file
        std::vector<const char*> calls;
        const wchar_t* status;
    } rows[] = {
        {"/materials/paint", {"GetName"}, L"Done  OK  Objects: 2"},
        {"/materials/paint", {"GetParamBlock", "GetReference"}, L"Done  OK  Objects: 2"},
        {"/materials/paint", {"NumSubTexmaps", "NumSubMtls"}, L"Done  OK  Objects: 2"},
        {"/materials/paint", {"GetSubTexmap", "GetSubMtl"}, L"Done  OK  Objects: 2"},
        {"/materials/paint/params/base_color_map",
         {"GetName", "GetMapName", "GetParamBlock", "GetSubTexmap"},
         L"Done  OK  Objects: 2"},
        {"/nodes/0", {"GetChildNode"}, L"Done  OK  Objects: 1"},
        {"/nodes/0/children/0/object", {"GetParamBlock", "GetReference"}, L"Done  OK  Objects: 2"},
        {"/nodes/0/children/1", {"GetObjectRef", "EvalWorldState"}, L"Done  OK  Objects: 2"},
        {"/nodes/1", {"EvalWorldState"}, L"Done  OK  Objects: 1"},
        {"/nodes/1", {"GetMtl"}, L"Done  OK  Objects: 1"},
        {"/nodes/1", {"GetObjectRef", "GetName"}, L"Done  OK  Objects: 2"},
    };
    const nlohmann::json sound = scene;
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.place) + ": " + row.calls[0]);
        scene = sound;
        scene[nlohmann::json::json_pointer(row.place)]["answers_nothing"] = row.calls;
        Open();
        Run();
        EXPECT_EQ(panel.status, row.status);
    }
}

TEST_F(FailureWalk, ThirdPartyClassesAndTheHostItselfThrow) {
    const struct {
        const char* what;
        const char* place; // in the scene file
        nlohmann::json throws;
    } rows[] = {
        {"material, all of it", "/materials/paint", true},
        {"material's name", "/materials/paint", {"GetName"}},
        {"material's renaming", "/materials/steel", {"SetName"}},
        {"material's maps", "/materials/paint", {"NumSubTexmaps", "GetSubTexmap"}},
        {"map", "/materials/paint/params/base_color_map", true},
        {"object", "/nodes/0/children/0/object", true},
        {"spline", "/nodes/0/children/1/object", true},
        {"node's evaluation", "/nodes/1", {"EvalWorldState"}},
        {"node's material", "/nodes/1", {"GetMtl"}},
        {"host",
         "/faults",
         {"GetEnvironmentMap", "GetBackGround", "GetCurFilePath", "GetCurFileName",
          "GetFullFilePath", "GetCurrentRenderer", "GetSceneMtls"}},
    };
    const nlohmann::json sound = scene;
    for (const auto& row : rows)
        for (const char* kind : {"exception", "other"}) {
            SCOPED_TRACE(std::string(row.what) + ", " + kind);
            scene = sound;
            auto& entry = scene[nlohmann::json::json_pointer(row.place)];
            entry["throws"] = row.throws;
            if (std::string_view(row.place) != "/faults")
                entry["throw_kind"] = kind;
            Open();
            NewService().Answer(200, accountAnswer).Answer(200, L"");
            ExportAndSend(panel);
            ExpectFinished();
            ExpectSceneAsBefore();
            EXPECT_THAT(panel.status, StartsWith(L"Done  OK  Objects: "));
        }
}

TEST_F(FailureWalk, PanelThrowsAtAnyCall) {
    NewService().Answer(200, accountAnswer).Answer(200, L"");
    ExportAndSend(panel);
    const std::size_t calls = panel.calls.size();
    ASSERT_GT(calls, 12u);

    for (std::size_t failing = 0; failing < calls; ++failing) {
        SCOPED_TRACE(failing);
        panel.calls.clear();
        panel.onCall = [&](const std::wstring&) {
            if (panel.calls.size() == failing + 1)
                throw std::bad_alloc();
        };
        NewService().Answer(200, accountAnswer).Answer(200, L"");
        ExportAndSend(panel);
        ExpectFinished();
        ExpectSceneAsBefore();
        EXPECT_EQ(panel.calls.back(), L"enable");
    }
}

} // namespace
} // namespace brimwave
