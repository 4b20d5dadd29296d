#include "simhost/files/fbx_export.h"
#include "tests/standins/simhost_fbx/round_trip.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>
#include <fstream>

namespace {

using namespace fbxtest;

/// For its life no file grows past `bytes`.
class FileSizeLimit {
  public:
    explicit FileSizeLimit(rlim_t bytes) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit limit{bytes, before_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, handler_);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

  private:
    rlimit before_{};
    void (*handler_)(int);
};

TEST(FbxExport, SaysWhyThereIsNoFile) {
    const TempFolder folder;
    const auto missing = folder.Path() / "no such folder" / "scene.fbx";
    const simhost::FbxExportResult result = simhost::ExportFbx(Wide(missing).c_str());
    EXPECT_FALSE(result.ok);
    EXPECT_NE(result.error.find(L"scene.fbx"), std::wstring::npos);
    EXPECT_FALSE(simhost::ExportFbx(Wide(folder.Path()).c_str()).ok);
    EXPECT_FALSE(simhost::ExportFbx(L"").ok);
    EXPECT_FALSE(simhost::ExportFbx(nullptr).ok);
}

TEST(FbxExport, LeavesNoHalfFileOnAFullDisk) {
    const TempFolder folder;
    const auto path = folder.Path() / "scene.fbx";
    std::ofstream(path) << "old";
    {
        const FileSizeLimit limit(1000);
        EXPECT_FALSE(simhost::ExportFbx(Wide(path).c_str()).ok);
    }
    EXPECT_FALSE(std::filesystem::exists(path));
    EXPECT_TRUE(simhost::ExportFbx(Wide(path).c_str()).ok);
    EXPECT_GT(std::filesystem::file_size(path), 1000u);
}

TEST(FbxExport, MakesTheSameBytesEachTime) {
    const TempFolder folder;
    std::string bytes[2];
    for (std::string& one : bytes) {
        const auto path = folder.Path() / "scene.fbx";
        ASSERT_TRUE(simhost::ExportFbx(Wide(path).c_str()).ok);
        std::ifstream stream(path, std::ios::binary);
        one.assign((std::istreambuf_iterator<char>(stream)), {});
    }
    EXPECT_EQ(bytes[0], bytes[1]);
}

} // namespace
