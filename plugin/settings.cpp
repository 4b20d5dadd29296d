#include "plugin/settings.h"

#include "host/attempt.h"
#include "plugin/profile_encoding.h"

#include <max.h>
#include <shlobj.h>

#include <array>

namespace brimwave {
namespace {

constexpr int kPlugInSettingsDir = 26; // the host's number of the folder
constexpr const wchar_t* kFileName = L"CoronaBlenderExporter.ini";

const std::wstring kSection = L"Settings";
const std::wstring kToken = L"apiToken";
const std::wstring kFolder = L"exchangeFolder";
const std::wstring kDisplacement = L"exportDisplacement";
const std::wstring kTarget = L"blenderTarget";

std::wstring SettingsFolder() {
    std::wstring told;
    Attempt([&] {
        if (Interface* host = GetCOREInterface())
            told = MSTR(host->GetDir(kPlugInSettingsDir)).data();
    });
    if (!told.empty())
        return told;
    // Without an answer from the host: the user's own folder rather than the drive's root.
    std::array<wchar_t, MAX_PATH> folder{};
    if (SUCCEEDED(
            SHGetFolderPathW(nullptr, CSIDL_APPDATA, nullptr, SHGFP_TYPE_CURRENT, folder.data())))
        return folder.data();
    return L".";
}

bool IsBlank(wchar_t c) {
    return c == L' ' || c == L'\t';
}

/// Reading a profile strips outer blanks and one pair of outer quotes. Quotes of our own around
/// a value that has such ends keep it whole.
bool NeedsQuotes(std::wstring_view value) {
    if (value.empty())
        return false;
    const wchar_t first = value.front();
    const wchar_t last = value.back();
    return IsBlank(first) || IsBlank(last) ||
           ((first == L'"' || first == L'\'') && first == last && value.size() > 1);
}

std::wstring Read(const std::wstring& key) {
    return ReadSetting(SettingsPath(), kSection, key, {});
}

void Write(const std::wstring& key, std::wstring_view value) {
    WriteSetting(SettingsPath(), kSection, key, value);
}

} // namespace

std::wstring SettingsPath() {
    std::wstring path = SettingsFolder();
    if (path.empty() || path.back() != L'\\')
        path += L'\\';
    return path + kFileName;
}

std::wstring ReadSetting(const std::wstring& path, const std::wstring& section,
                         const std::wstring& key, const std::wstring& fallback) {
    std::array<wchar_t, 1024> buffer{};
    const DWORD copied =
        GetPrivateProfileStringW(section.c_str(), key.c_str(), fallback.c_str(), buffer.data(),
                                 static_cast<DWORD>(buffer.size()), path.c_str());
    return std::wstring(buffer.data(), copied);
}

void WriteSetting(const std::wstring& path, const std::wstring& section, const std::wstring& key,
                  std::wstring_view value) {
    if (!EnsureUnicodeProfile(path))
        return;
    std::wstring text(value);
    if (NeedsQuotes(value))
        text = L'"' + text + L'"';
    WritePrivateProfileStringW(section.c_str(), key.c_str(), text.c_str(), path.c_str());
}

PanelSettings LoadSettings() {
    PanelSettings settings;
    settings.token = Read(kToken);
    settings.exchangeFolder = Read(kFolder);
    settings.exportDisplacement = Read(kDisplacement) == L"true";
    settings.olderBlenderTarget = Read(kTarget) == L"5.1";
    return settings;
}

void SaveToken(std::wstring_view token) {
    Write(kToken, token);
}
void SaveExchangeFolder(std::wstring_view folder) {
    Write(kFolder, folder);
}
void SaveExportDisplacement(bool on) {
    Write(kDisplacement, on ? L"true" : L"false");
}
void SaveBlenderTarget(bool older) {
    Write(kTarget, older ? L"5.1" : L"5.2");
}

} // namespace brimwave
