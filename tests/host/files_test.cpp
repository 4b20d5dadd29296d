#include "host/files.h"

#include "host/paths.h"
#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>

namespace brimwave {
namespace {

TEST(FileNameOf, TakesWhatFollowsTheLastSeparator) {
    EXPECT_EQ(FileNameOf(L"C:\\maps\\wood.png"), L"wood.png");
    EXPECT_EQ(FileNameOf(L"C:\\maps/sub/wood.png"), L"wood.png");
    EXPECT_EQ(FileNameOf(L"wood.png"), L"wood.png");
    EXPECT_EQ(FileNameOf(L"maps\\"), L"");
    EXPECT_EQ(FileNameOf(L""), L"");
}

TEST(FolderOf, KeepsTheSeparator) {
    EXPECT_EQ(FolderOf(L"C:\\maps/sub/wood.png"), L"C:\\maps/sub/");
    EXPECT_EQ(FolderOf(L"wood.png"), L"");
}

TEST(ReadWholeFile, GivesAllOrNothing) {
    testing::TempFolder folder;
    const std::string bytes("one\0two\r\n", 9);
    const std::wstring path = folder.Write(L"file", bytes);
    EXPECT_EQ(ReadWholeFile(path), bytes);
    EXPECT_EQ(ReadWholeFile(path, 9), bytes);
    EXPECT_EQ(ReadWholeFile(path, 8), std::nullopt);
    EXPECT_EQ(ReadWholeFile(folder.Write(L"empty", "")), "");
    EXPECT_EQ(ReadWholeFile(folder.Path(L"missing")), std::nullopt);
    EXPECT_EQ(ReadWholeFile(folder.Path()), std::nullopt);
}

TEST(NewFile, TakesThePlaceOfAnOlderOne) {
    testing::TempFolder folder;
    const std::wstring path = folder.Write(L"file", "longer than what follows");
    {
        NewFile file(path);
        file.Write("new");
        file.Write(" text");
        EXPECT_TRUE(file.Good());
    }
    EXPECT_EQ(ReadWholeFile(path), "new text");
    NewFile nowhere(folder.Path(L"missing\\file"));
    nowhere.Write("text");
    EXPECT_FALSE(nowhere.Good());
}

} // namespace
} // namespace brimwave
