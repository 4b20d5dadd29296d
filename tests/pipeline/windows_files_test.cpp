// What only the platform itself can show: sharing, attributes and the length of paths.
#ifdef _WIN32
#include "pipeline/texture_collection.h"

#include "tests/pipeline/sequence_kit.h"
#include <gmock/gmock.h>

namespace brimwave {
namespace {

using brimwave::testing::TempFolder;
using nlohmann::json;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

/// Collects the files through one bitmap each.
TextureCollectResult CollectFiles(const TempFolder& job, const std::vector<std::wstring>& files) {
    json scene = EmptyScene();
    for (const std::wstring& file : files) {
        const std::string id = std::to_string(scene["nodes"].size());
        const json map = {{"class", "Bitmap"}, {"file", WideToUtf8(file)}};
        scene["materials"][id] = {{"class", "Physical Material"},
                                  {"params", {{"base_color_map", map}}}};
        scene["nodes"].push_back(BoxNode("box" + id, id));
    }
    OpenScene(scene);
    return CollectTextures(job.Path());
}

/// An open file, closed at the end.
class OpenFile {
  public:
    OpenFile(const std::wstring& path, DWORD access, DWORD share)
        : handle_(CreateFileW(path.c_str(), access, share, nullptr, OPEN_EXISTING, 0, nullptr)) {
        EXPECT_NE(handle_, INVALID_HANDLE_VALUE);
    }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;
    ~OpenFile() { CloseHandle(handle_); }

  private:
    HANDLE handle_;
};

TEST(TextureFiles, LockedOnesCountAndStopNothing) {
    TempFolder work, job;
    const std::vector<std::wstring> files = {work.Write(L"locked.png", "l"),
                                             work.Write(L"shared.png", "s"),
                                             work.Write(L"fine.png", "f")};
    const OpenFile locked(files[0], GENERIC_READ | GENERIC_WRITE, 0);
    const OpenFile shared(files[1], GENERIC_READ, FILE_SHARE_READ);
    const TextureCollectResult result = CollectFiles(job, files);
    EXPECT_EQ(result.copied, 3u);
    EXPECT_THAT(result.missing, IsEmpty());
    EXPECT_FALSE(TempFolder::Exists(job.Path(L"textures\\locked.png")));
    EXPECT_EQ(TempFolder::Read(job.Path(L"textures\\shared.png")), "s");
    EXPECT_EQ(TempFolder::Read(job.Path(L"textures\\fine.png")), "f");
}

TEST(TextureFiles, SourcesAreFreeAfterwards) {
    TempFolder work, job;
    const std::wstring file = work.Write(L"wood.png", "w");
    EXPECT_EQ(CollectFiles(job, {file}).copied, 1u);
    EXPECT_TRUE(DeleteFileW(file.c_str()));
}

TEST(TextureFiles, AReadOnlyCopyIsReplacedByTheNextOfItsName) {
    TempFolder work, job;
    const std::wstring first = work.Write(L"a\\wood.png", "first");
    const std::wstring second = work.Write(L"b\\wood.png", "second");
    SetFileAttributesW(first.c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(CollectFiles(job, {first, second}).copied, 2u);
    EXPECT_EQ(TempFolder::Read(job.Path(L"textures\\wood.png")), "second");
    EXPECT_TRUE(GetFileAttributesW(first.c_str()) & FILE_ATTRIBUTE_READONLY);
    SetFileAttributesW(first.c_str(), FILE_ATTRIBUTE_NORMAL);
}

class JobFiles : public brimwave::testing::SequenceTest {
  protected:
    /// Runs the export while somebody holds the job's file open, from a progress value to the end.
    void RunWhileHeld(const wchar_t* file, int progress, DWORD access, DWORD share) {
        std::optional<OpenFile> held;
        panel.onCall = [&](const std::wstring& line) {
            if (!line.starts_with(L"status " + std::to_wstring(progress) + L" "))
                return;
            const std::wstring name = JobFolder() + L"\\" + file;
            if (!Exists(name))
                exchange.Write(name, "of somebody else");
            held.emplace(exchange.Path(name), access, share);
        };
        ClearExchange();
        panel.calls.clear();
        NewService().Answer(200, brimwave::testing::accountAnswer).Answer(200, L"");
        ExportAndSend(panel);
        ExpectFinished();
        ExpectSceneAsBefore();
    }

    [[nodiscard]] std::wstring LastBox() const { return panel.calls[panel.calls.size() - 2]; }
};

TEST_F(JobFiles, HeldBySomebodyElse) {
    RunWhileHeld(L"room.fbx", 25, GENERIC_READ, 0);
    EXPECT_THAT(LastBox(), StartsWith(L"error: FBX export failed"));
    RunWhileHeld(L"1.json", 65, GENERIC_READ, 0);
    EXPECT_EQ(LastBox(), L"error: Package export returned failure.");
    RunWhileHeld(L"1.json", 88, GENERIC_READ, 0);
    EXPECT_EQ(panel.status, L"Send failed (no response).");
    EXPECT_THAT(LastBox(), HasSubstr(L"Cannot read JSON file: " + exchange.Path(JobFolder())));
    RunWhileHeld(L"1.json", 88, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_DELETE);
    EXPECT_EQ(panel.status, L"Done  OK  Objects: 2");
    EXPECT_FALSE(Exists(JobFolder() + L"\\1.json"));
}

TEST_F(JobFiles, LightProfilesBelowLongPathsAreRead) {
    const std::wstring file =
        work.Write(std::wstring(150, L'p') + L"\\" + std::wstring(120, L'q') + L".ies",
                   "IESNA:LM-63-2002\n[TEST] far down\nTILT=NONE\n");
    ASSERT_GT(file.size(), 260u);
    scene["nodes"].push_back(
        {{"name", "lamp"},
         {"object", {{"class", "VRayIES"}, {"params", {{"ies_file", WideToUtf8(file)}}}}}});
    Open();
    NewService().Answer(200, brimwave::testing::accountAnswer).Answer(200, L"");
    ExportAndSend(panel);
    EXPECT_THAT(http->Requests().back().body.value_or(""), HasSubstr("far down"));
}

} // namespace
} // namespace brimwave
#endif
