// What only the platform itself can show: sharing, attributes and the length of paths.
#ifdef _WIN32
#include "pipeline/texture_collection.h"

#include "tests/pipeline/scene_kit.h"
#include "tests/support/temp_folder.h"

#include <gmock/gmock.h>

namespace brimwave {
namespace {

using brimwave::testing::TempFolder;
using nlohmann::json;
using ::testing::IsEmpty;

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

} // namespace
} // namespace brimwave
#endif
