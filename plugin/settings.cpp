#include "plugin/settings.h"

#include "host/attempt.h"
#include "host/sdk_compat.h"
#include "plugin/profile_encoding.h"

#include <max.h>
#include <shlobj.h>

#include <array>

namespace brimwave {
namespace {

constexpr int plugInSettingsDir = 26; // the host's number of the folder
constexpr const wchar_t* fileName = L"CoronaBlenderExporter.ini";

const std::wstring settingsSection = L"Settings";
const std::wstring tokenKey = L"apiToken";
const std::wstring folderKey = L"exchangeFolder";
const std::wstring displacementKey = L"exportDisplacement";
const std::wstring targetKey = L"blenderTarget";

std::wstring SettingsFolder() {
    std::wstring told;
    Attempt([&] {
        if (Interface* host = GetCOREInterface())
            told = HostDirectory(*host, plugInSettingsDir);
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
    return ReadSetting(SettingsPath(), settingsSection, key, {});
}

void Write(const std::wstring& key, std::wstring_view value) {
    WriteSetting(SettingsPath(), settingsSection, key, value);
}

} // namespace

std::wstring SettingsPath() {
    std::wstring path = SettingsFolder();
    if (path.empty() || path.back() != L'\\')
        path += L'\\';
    return path + fileName;
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
    settings.token = Read(tokenKey);
    settings.exchangeFolder = Read(folderKey);
    settings.exportDisplacement = Read(displacementKey) == L"true";
    settings.olderBlenderTarget = Read(targetKey) == L"5.1";
    return settings;
}

void SaveToken(std::wstring_view token) {
    Write(tokenKey, token);
}
void SaveExchangeFolder(std::wstring_view folder) {
    Write(folderKey, folder);
}
void SaveExportDisplacement(bool on) {
    Write(displacementKey, on ? L"true" : L"false");
}
void SaveBlenderTarget(bool older) {
    Write(targetKey, older ? L"5.1" : L"5.2");
}

} // namespace brimwave
