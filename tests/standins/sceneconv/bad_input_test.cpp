#include "tests/standins/sceneconv/convert_kit.h"

#include "sceneconv/guarded_run.h"
#include "sceneconv/write_scene.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>

#include <sys/stat.h>
#include <unistd.h>

namespace sceneconv::testing {

namespace {

using ::testing::HasSubstr;

constexpr const char* magic = "Kaydara FBX Binary  ";

TEST(BadInput, IsNamedInOneLine) {
    const TempFolder folder;
    std::string old(magic);
    old += std::string("\0\x1a\0\xd4\x17\0\0", 7) + std::string(100, '\0');
    std::string cut(magic);
    cut += std::string("\0\x1a\0\xe8\x1c\0\0", 7) + std::string(20, '\x7f');
    const struct {
        std::filesystem::path file;
        const char* wanted;
    } cases[] = {
        {folder.Path() / "none.fbx", "cannot be opened: No such file"},
        {folder.Path(), "is a folder"},
        {folder.Write("empty.fbx", ""), "is empty"},
        {folder.Write("old.fbx", old), "FBX version 6100 is too old, only 7100"},
        {folder.Write("oldtext.fbx", "; FBX 6.1.0 project file\nObjects: {}\n"),
         "version 6100 is too old"},
        {folder.Write("cut.fbx", cut), "is not a scene that can be read"},
        {folder.Write("text.gltf", "no json"), "is not a scene that can be read"},
        {folder.Write("noscene.gltf", R"({"asset": {"version": "2.0"}})"), "is not a scene"},
        {folder.Write("empty.gltf", R"({"asset": {"version": "2.0"}, "scene": 0,
            "scenes": [{"nodes": [0]}], "nodes": [{"name": "a"}]})"),
         "holds no mesh, light or camera"},
        {folder.Write("a.xyz", "what is this"), "is not a scene that can be read"},
        {folder.Write("lines.obj", "v 0 0\n"), "is not a scene that can be read"},
    };
    for (const auto& c : cases) {
        const std::string error = ErrorOf(c.file);
        EXPECT_THAT(error, HasSubstr(c.wanted));
        EXPECT_THAT(error, HasSubstr(c.file.string()));
        EXPECT_EQ(error.find('\n'), std::string::npos);
    }
}

TEST(BadInput, UnreadableFilesAndUnwritablePlaces) {
    const TempFolder folder;
    const auto good = folder.Write("a.obj", "v 0 0 0\nv 1 0 0\nv 1 1 0\nf 1 2 3\n");
    EXPECT_EQ(ErrorOf(good), "");
    sceneconv::Warnings warnings;
    const std::pair<std::filesystem::path, const char*> places[] = {
        {good, "is the input itself"},
        {folder.Path() / "none" / "out.json", "cannot be written"},
        {folder.Path(), "cannot be written"}};
    for (const auto& [place, wanted] : places) {
        try {
            sceneconv::Convert(good, place, warnings);
            ADD_FAILURE() << place << " was written";
        } catch (const sceneconv::ConvertError& error) {
            EXPECT_THAT(error.what(), HasSubstr(wanted));
        }
    }
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}), 1)
        << "nothing is left behind";
    if (geteuid() != 0) { // nothing is closed to root
        chmod(good.c_str(), 0);
        EXPECT_THAT(ErrorOf(good), HasSubstr("Permission denied"));
    }
}

TEST(GuardedRun, TellsResultsAndCrashesApart) {
    EXPECT_EQ(sceneconv::GuardedRun([] { return 0; }, "crash"), 0);
    EXPECT_EQ(sceneconv::GuardedRun([] { return 7; }, "crash"), 7);
    ::testing::internal::CaptureStderr();
    const int result = sceneconv::GuardedRun(
        [] {
            raise(SIGKILL);
            return 0;
        },
        "the file is damaged\n");
    EXPECT_EQ(result, 1);
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "the file is damaged\n");
#ifndef BRIMWAVE_SANITIZED // with it no limit can be set
    const auto greedy = [] {
        try {
            const std::vector<char> much(std::size_t{1} << 31);
            return much.empty() ? 1 : 2;
        } catch (const std::bad_alloc&) {
            return 3;
        }
    };
    EXPECT_EQ(sceneconv::GuardedRun(greedy, "crash", std::uint64_t{1} << 30), 3);
#endif
}

} // namespace

} // namespace sceneconv::testing
