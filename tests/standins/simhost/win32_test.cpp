// The few Windows calls as this system has them.
#include "text/utf8.h"

#include <strclass.h>

#include <gtest/gtest.h>

#include <filesystem>

namespace {

class PosixFiles : public testing::Test {
  protected:
    void SetUp() override {
        char pattern[] = "/tmp/simhost_win32_XXXXXX";
        folder_ = utf8::ToWide(mkdtemp(pattern));
    }
    void TearDown() override { std::filesystem::remove_all(utf8::FromWide(folder_)); }
    std::wstring folder_;
};

void Write(const std::wstring& path, std::string_view bytes) {
    const HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(file, INVALID_HANDLE_VALUE);
    DWORD written = 0;
    EXPECT_TRUE(WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr));
    EXPECT_EQ(written, bytes.size());
    EXPECT_TRUE(CloseHandle(file));
}

std::string Read(const std::wstring& path) {
    const HANDLE file = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return "(no file)";
    LARGE_INTEGER size{};
    EXPECT_TRUE(GetFileSizeEx(file, &size));
    std::string bytes(static_cast<size_t>(size.QuadPart), '\0');
    DWORD got = 0;
    EXPECT_TRUE(ReadFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &got, nullptr));
    EXPECT_EQ(got, bytes.size());
    CloseHandle(file);
    return bytes;
}

TEST_F(PosixFiles, BothSlashesNameTheSameFile) {
    ASSERT_TRUE(CreateDirectoryW((folder_ + L"\\a").c_str(), nullptr));
    Write(folder_ + L"\\a\\schön.txt", "text");
    EXPECT_EQ(Read(folder_ + L"/a/schön.txt"), "text");
    EXPECT_TRUE(GetFileAttributesW((folder_ + L"\\a").c_str()) & FILE_ATTRIBUTE_DIRECTORY);
}

TEST_F(PosixFiles, FailuresLeaveTheirCode) {
    EXPECT_EQ(GetFileAttributesW((folder_ + L"\\none").c_str()), INVALID_FILE_ATTRIBUTES);
    EXPECT_EQ(GetLastError(), ERROR_FILE_NOT_FOUND);
    EXPECT_FALSE(CreateDirectoryW(folder_.c_str(), nullptr));
    EXPECT_EQ(GetLastError(), ERROR_ALREADY_EXISTS);
    EXPECT_FALSE(CreateDirectoryW((folder_ + L"\\x\\y").c_str(), nullptr));
    EXPECT_EQ(GetLastError(), ERROR_PATH_NOT_FOUND);
    EXPECT_EQ(CreateFileW(folder_.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr),
              INVALID_HANDLE_VALUE);
    EXPECT_EQ(GetLastError(), ERROR_ACCESS_DENIED);
}

TEST_F(PosixFiles, CopyObeysTheFlag) {
    Write(folder_ + L"\\from", std::string(200000, 'x'));
    Write(folder_ + L"\\to", "old");
    EXPECT_FALSE(CopyFileW((folder_ + L"\\from").c_str(), (folder_ + L"\\to").c_str(), TRUE));
    EXPECT_EQ(Read(folder_ + L"\\to"), "old");
    EXPECT_TRUE(CopyFileW((folder_ + L"\\from").c_str(), (folder_ + L"\\to").c_str(), FALSE));
    EXPECT_EQ(Read(folder_ + L"\\to").size(), 200000u);
    EXPECT_FALSE(CopyFileW((folder_ + L"\\none").c_str(), (folder_ + L"\\to").c_str(), FALSE));
    EXPECT_TRUE(DeleteFileW((folder_ + L"\\to").c_str()));
}

TEST(PosixText, Utf16AndUtf8) {
    const std::wstring astral = {L'a', wchar_t(0xd83d), wchar_t(0xde00)}; // two units
    EXPECT_EQ(utf8::FromWide(astral), "a\xf0\x9f\x98\x80");
    EXPECT_EQ(utf8::ToWide("a\xf0\x9f\x98\x80"), astral);
    EXPECT_EQ(utf8::FromWide(std::wstring{wchar_t(0xd83d), L'b'}), "\xef\xbf\xbd"
                                                                   "b");
    for (const char* broken : {"\xff", "\xc3", "\xed\xa0\x80", "\xf8\x88\x80\x80\x80", "\xc0\x80"})
        EXPECT_EQ(utf8::ToWide(broken)[0], wchar_t(0xfffd)) << broken;
    char small[2];
    EXPECT_EQ(WideCharToMultiByte(CP_UTF8, 0, L"abc", 3, small, 2, nullptr, nullptr), 0);
    EXPECT_EQ(WideCharToMultiByte(CP_UTF8, 0, L"\x20ac", -1, nullptr, 0, nullptr, nullptr), 4);
}

TEST(PosixText, TheSystemCodePageIsWindows1252) {
    wchar_t wide[3] = {};
    EXPECT_EQ(MultiByteToWideChar(CP_ACP, 0, "\x80 \xe9", 3, wide, 3), 3);
    EXPECT_EQ(std::wstring(wide, 3), L"\x20ac \xe9");
    char out[4] = {};
    BOOL used = FALSE;
    EXPECT_EQ(WideCharToMultiByte(CP_ACP, 0, L"\x20ac\x4e00", 2, out, 4, nullptr, &used), 2);
    EXPECT_EQ(std::string(out), "\x80?");
    EXPECT_TRUE(used);
    EXPECT_EQ(_wcsicmp(L"BaseÄ", L"bASEÄ"), 0);
    EXPECT_LT(_wcsicmp(L"base", L"basf"), 0);
}

} // namespace
