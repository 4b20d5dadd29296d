#pragma once
#include <string>
#include <string_view>

namespace brimwave {

/// The panel's settings as they are kept between sessions.
struct PanelSettings {
    std::wstring token;
    std::wstring exchangeFolder;
    bool exportDisplacement = false;
    bool olderBlenderTarget = false; // conversion path A
};

/// The settings file in the host's folder for plug-in settings; asked of the host anew each time.
[[nodiscard]] std::wstring SettingsPath();

/// One value of a profile file, at most 1023 characters; `fallback` when it is not there.
[[nodiscard]] std::wstring ReadSetting(const std::wstring& path, const std::wstring& section,
                                       const std::wstring& key, const std::wstring& fallback);

/// Writes one value so that ReadSetting gives it back, any script and outer blanks included.
/// A file that cannot be written is left as it is, silently.
void WriteSetting(const std::wstring& path, const std::wstring& section, const std::wstring& key,
                  std::wstring_view value);

/// All settings, from the file. A missing file or key counts as an empty text.
[[nodiscard]] PanelSettings LoadSettings();

// Each writes its one key to the file at once.
void SaveToken(std::wstring_view token);
void SaveExchangeFolder(std::wstring_view folder);
void SaveExportDisplacement(bool on);
void SaveBlenderTarget(bool older);

} // namespace brimwave
