// The settings file: what survives a write and a read, and what the panel does with it and when.
#include "plugin/profile_encoding.h"
#include "plugin/settings.h"

#include "simhost/scene/scene.h"
#include "tests/plugin/panel_host.h"

#include <gtest/gtest.h>

#include <fstream>
#include <optional>

namespace brimwave::testing {
namespace {

const std::wstring settingsSection = L"Settings";

std::string Bytes(const std::wstring& path) {
    std::ifstream in(std::filesystem::path(path), std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

void WriteBytes(const std::wstring& path, std::string_view bytes) {
    std::ofstream(std::filesystem::path(path), std::ios::binary)
        .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    // The system may still remember the file as it was.
    WritePrivateProfileStringW(nullptr, nullptr, nullptr, path.c_str());
}

std::wstring Get(const std::wstring& path, const std::wstring& key) {
    return ReadSetting(path, settingsSection, key, L"");
}

class ProfileTest : public ::testing::Test {
  protected:
    ScratchFolder folder_;
    std::wstring file_ = folder_.File(L"CoronaBlenderExporter.ini");
};

TEST_F(ProfileTest, AnyValueComesBackAsItWasWritten) {
    const std::wstring values[] = {
        L"",
        L"C:\\Exchange",
        L"D:\\\x041E\x0431\x043C\x0435\x043D\\\x0441\x0446\x0435\x043D\x044B", // Cyrillic
        L"\x4EA4\x63DB\\\x00E4\x00DF\x20AC",
        L"\xD83D\xDE80 beyond the basic plane",
        L"  blanks at both ends\t",
        L"\"C:\\in quotes\"",
        L"'single'",
        L"\"",
        L"quote at the end\"",
        L"; like a remark",
        L"[like a section]",
        L"key=value=more",
        std::wstring(1023, L'x'),
    };
    for (const std::wstring& value : values) {
        WriteSetting(file_, settingsSection, L"before", L"kept");
        WriteSetting(file_, settingsSection, L"value", value);
        WriteSetting(file_, settingsSection, L"after", L"kept");
        EXPECT_EQ(Get(file_, L"value"), value);
        EXPECT_EQ(Get(file_, L"before"), L"kept");
        EXPECT_EQ(Get(file_, L"after"), L"kept");
    }
}

TEST_F(ProfileTest, ReadsAtMost1023Characters) {
    WriteSetting(file_, settingsSection, L"value", std::wstring(1500, L'x'));
    EXPECT_EQ(Get(file_, L"value"), std::wstring(1023, L'x'));
}

TEST_F(ProfileTest, MissingFilesAndKeysReadAsTheDefault) {
    EXPECT_EQ(ReadSetting(file_, settingsSection, L"value", L"default"), L"default");
    EXPECT_FALSE(std::filesystem::exists(file_)) << "reading makes no file";
    WriteSetting(file_, settingsSection, L"other", L"x");
    EXPECT_EQ(ReadSetting(file_, settingsSection, L"value", L"default"), L"default");
}

// Files as other programs and earlier versions leave them; all hold "old" with that value.
TEST_F(ProfileTest, OlderFilesKeepTheirValuesAndTakeAnyText) {
    const struct {
        const char* name;
        std::string bytes;
        std::wstring old;
    } files[] = {
        {"8-bit", "; remark\r\n[Settings]\r\nold=C:\\Gar\xE7on\r\n", L"C:\\Gar\x00E7on"},
        {"8-bit, no line end", "[Settings]\nold=plain", L"plain"},
        {"UTF-8 with mark", "\xEF\xBB\xBF[Settings]\r\nold=\xD0\x94\r\n", L"\x0414"},
        {"UTF-16",
         std::string("\xFF\xFE[\0S\0e\0t\0t\0i\0n\0g\0s\0]\0\r\0\n\0o\0l\0d\0=\0\x14\x04\r\0\n\0",
                     44),
         L"\x0414"},
        {"empty", "", L""},
    };
    const std::wstring cyrillic = L"D:\\\x041E\x0431\x043C\x0435\x043D";
    for (const auto& file : files) {
        WriteBytes(file_, file.bytes);
        WriteSetting(file_, settingsSection, L"new", cyrillic);
        EXPECT_EQ(Get(file_, L"old"), file.old) << file.name;
        EXPECT_EQ(Get(file_, L"new"), cyrillic) << file.name;
        EXPECT_TRUE(Bytes(file_).starts_with("\xFF\xFE")) << file.name;
        EXPECT_FALSE(std::filesystem::exists(file_ + L".new")) << file.name;
        std::filesystem::remove(file_);
    }
}

TEST_F(ProfileTest, WhatCannotBeWrittenIsLeftAlone) {
    WriteBytes(file_, "[Settings]\r\nold=kept\r\n");
    const std::string before = Bytes(file_);
    SetFileAttributesW(file_.c_str(), FILE_ATTRIBUTE_READONLY);
    WriteSetting(file_, settingsSection, L"new", L"value");
    EXPECT_EQ(Bytes(file_), before);
    EXPECT_EQ(Get(file_, L"old"), L"kept");
    SetFileAttributesW(file_.c_str(), FILE_ATTRIBUTE_NORMAL);

    const std::wstring nowhere = folder_.File(L"missing\\settings.ini");
    WriteSetting(nowhere, settingsSection, L"new", L"value");
    EXPECT_EQ(Get(nowhere, L"new"), L"");
    EXPECT_FALSE(std::filesystem::exists(folder_.File(L"missing")));
}

TEST_F(ProfileTest, TheHostNamesTheFolder) {
    simhost::Scene& host = simhost::Scene::Current();
    const std::wstring folder = folder_.Path().wstring();
    host.directories[26] = folder;
    EXPECT_EQ(SettingsPath(), folder + L"\\CoronaBlenderExporter.ini");
    host.directories[26] = folder + L"\\";
    EXPECT_EQ(SettingsPath(), folder + L"\\CoronaBlenderExporter.ini");

    // A host that names none, or fails, leaves a folder of the user's.
    const std::wstring own = std::wstring(_wgetenv(L"APPDATA")) + L"\\CoronaBlenderExporter.ini";
    host.directories.erase(26);
    EXPECT_EQ(SettingsPath(), own);
    host.faults.Add(simhost::Call::GetDir);
    EXPECT_EQ(SettingsPath(), own);
    host.faults.Clear();
}

/// The panel and its file.
class PanelSettingsTest : public ProfileTest {
  protected:
    void Start() { Start(folder_.Path().wstring()); }
    void Start(const std::wstring& folder) {
        host_.reset();
        host_.emplace(folder);
        host_->OpenPanel();
    }
    [[nodiscard]] std::wstring Stored(const std::wstring& key) const { return Get(file_, key); }

    std::optional<PanelHost> host_;
};

TEST_F(PanelSettingsTest, AFirstStartShowsTheDefaults) {
    Start();
    EXPECT_EQ(host_->Text(IDC_TOKEN), L"");
    EXPECT_EQ(host_->Text(IDC_FOLDER), L"");
    EXPECT_FALSE(host_->Checked(IDC_DISPLACEMENT));
    EXPECT_FALSE(host_->Checked(IDC_PATH_A));
    EXPECT_TRUE(host_->Checked(IDC_PATH_B));
    EXPECT_FALSE(host_->Checked(IDC_BAKE));
}

TEST_F(PanelSettingsTest, OnlyTheExactTextsCount) {
    const struct {
        const char* displacement;
        const char* target;
        bool checked, older;
    } rows[] = {
        {"true", "5.1", true, true},     {"TRUE", "5.2", false, false},
        {"1", "5.10", false, false},     {"false", "\"5.1 \"", false, false},
        {"\" true\"", "", false, false},
    };
    for (const auto& row : rows) {
        host_.reset(); // writes the folder as it closes
        WriteBytes(file_, std::string("[Settings]\r\nexportDisplacement=") + row.displacement +
                              "\r\nblenderTarget=" + row.target + "\r\n");
        Start();
        EXPECT_EQ(host_->Checked(IDC_DISPLACEMENT), row.checked) << row.displacement;
        EXPECT_EQ(host_->Checked(IDC_PATH_A), row.older) << row.target;
        EXPECT_EQ(host_->Checked(IDC_PATH_B), !row.older) << row.target;
    }
}

TEST_F(PanelSettingsTest, EachControlIsWrittenAtItsMoment) {
    Start();
    host_->Type(IDC_TOKEN, L"  abc-1 ");
    EXPECT_EQ(Stored(L"apiToken"), L"") << "not before Save";
    host_->Press(IDC_SAVE);
    EXPECT_EQ(Stored(L"apiToken"), L"abc-1");
    EXPECT_EQ(host_->Text(IDC_TOKEN), L"  abc-1 ") << "shown as typed";

    const std::wstring folder = L"D:\\\x041E\x0431\x043C\x0435\x043D x ";
    host_->Type(IDC_FOLDER, folder);
    EXPECT_EQ(Stored(L"exchangeFolder"), L"") << "not while it is typed";
    host_->User().PressKey(VK_TAB);
    EXPECT_EQ(Stored(L"exchangeFolder"), folder);

    for (const wchar_t* const value : {L"true", L"false"}) {
        host_->Press(IDC_DISPLACEMENT);
        EXPECT_EQ(Stored(L"exportDisplacement"), value);
    }
    host_->Press(IDC_PATH_A);
    EXPECT_EQ(Stored(L"blenderTarget"), L"5.1");
    host_->Press(IDC_PATH_B);
    EXPECT_EQ(Stored(L"blenderTarget"), L"5.2");
    const std::string before = Bytes(file_);
    host_->Press(IDC_BAKE);
    EXPECT_EQ(Bytes(file_), before) << "Bake Geometry is not kept";
}

TEST_F(PanelSettingsTest, TheNextOpeningShowsThem) {
    Start();
    host_->Type(IDC_TOKEN, L"\x0442\x043E\x043A\x0435\x043D-7");
    host_->Press(IDC_SAVE);
    host_->Press(IDC_DISPLACEMENT);
    host_->Press(IDC_PATH_A);
    host_->Type(IDC_FOLDER, L"C:\\\x00FCbergabe");
    host_->ClosePanel(); // the edit box still has the focus
    host_->OpenPanel();
    EXPECT_EQ(host_->Text(IDC_TOKEN), L"\x0442\x043E\x043A\x0435\x043D-7");
    EXPECT_EQ(host_->Text(IDC_FOLDER), L"C:\\\x00FCbergabe");
    EXPECT_TRUE(host_->Checked(IDC_DISPLACEMENT));
    EXPECT_TRUE(host_->Checked(IDC_PATH_A));
    Start(); // and a new host
    EXPECT_EQ(host_->Text(IDC_FOLDER), L"C:\\\x00FCbergabe");
}

TEST_F(PanelSettingsTest, WhatCannotBeKeptIsNoError) {
    const auto useEverything = [this] {
        host_->Type(IDC_TOKEN, L"typed");
        host_->Press(IDC_SAVE);
        host_->Type(IDC_FOLDER, L"C:\\typed");
        for (const int control : {IDC_DISPLACEMENT, IDC_PATH_B})
            host_->Press(control);
        EXPECT_EQ(host_->Messages(),
                  std::vector<std::wstring>{L"[Brimwave Platform] Token saved."});
        host_->ClosePanel();
        host_->OpenPanel();
    };
    WriteBytes(file_, "[Settings]\r\nexchangeFolder=C:\\kept\r\nblenderTarget=5.1\r\n");
    SetFileAttributesW(file_.c_str(), FILE_ATTRIBUTE_READONLY);
    Start();
    useEverything();
    EXPECT_EQ(host_->Text(IDC_TOKEN), L"");
    EXPECT_EQ(host_->Text(IDC_FOLDER), L"C:\\kept");
    EXPECT_FALSE(host_->Checked(IDC_DISPLACEMENT));
    EXPECT_TRUE(host_->Checked(IDC_PATH_A));
    SetFileAttributesW(file_.c_str(), FILE_ATTRIBUTE_NORMAL);

    Start(folder_.File(L"missing"));
    useEverything();
    EXPECT_EQ(host_->Text(IDC_FOLDER), L"");
    EXPECT_FALSE(std::filesystem::exists(folder_.File(L"missing")));
}

TEST_F(PanelSettingsTest, LongTextsAreKeptAsFarAsTheFileGivesThemBack) {
    const std::wstring folder = L"C:\\" + std::wstring(1500, L'_');
    Start();
    SetWindowTextW(host_->Control(IDC_FOLDER), folder.c_str());
    SetWindowTextW(host_->Control(IDC_TOKEN), std::wstring(1023, L'_').c_str());
    host_->Press(IDC_SAVE);
    host_->User().PressKey(VK_TAB); // to Refresh
    host_->User().PressKey(VK_TAB); // to the folder
    host_->User().PressKey(VK_TAB);
    Start();
    EXPECT_EQ(host_->Text(IDC_TOKEN), std::wstring(1023, L'_'));
    EXPECT_EQ(host_->Text(IDC_FOLDER), folder.substr(0, 1023));
}

TEST_F(PanelSettingsTest, TheFocusStartsWhereSomethingIsMissing) {
    const struct {
        const char* file;
        int focus;
    } rows[] = {
        {"[Settings]\r\n", IDC_TOKEN},
        {"[Settings]\r\nexchangeFolder=C:\\x\r\n", IDC_TOKEN},
        {"[Settings]\r\napiToken=t\r\n", IDC_FOLDER},
        {"[Settings]\r\napiToken=t\r\nexchangeFolder=C:\\x\r\n", IDC_EXPORT},
    };
    for (const auto& row : rows) {
        host_.reset(); // writes the folder as it closes
        WriteBytes(file_, row.file);
        Start();
        EXPECT_EQ(host_->Focus(), row.focus) << row.file;
    }
}

} // namespace
} // namespace brimwave::testing
