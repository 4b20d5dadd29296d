#include "plugin/profile_encoding.h"

#include "host/files.h"
#include "host/text.h"

#include <windows.h>

#include <cstring>
#include <optional>
#include <string_view>

namespace brimwave {
namespace {

constexpr std::uint64_t largestProfile = 1 << 20; // far more than the settings ever take

/// The text of a profile that the profile calls would not write as UTF-16; nothing when it
/// already begins with a UTF-16 mark.
std::optional<std::wstring> TextToConvert(std::string_view bytes) {
    if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF"))
        return std::nullopt;
    if (bytes.starts_with("\xEF\xBB\xBF")) // saved by an editor
        return DecodeText(bytes.substr(3), TextEncoding::Utf8);
    if (bytes.find('\0') != std::string_view::npos) { // UTF-16 without a mark
        std::wstring text(bytes.size() / sizeof(wchar_t), L'\0');
        std::memcpy(text.data(), bytes.data(), text.size() * sizeof(wchar_t));
        return text;
    }
    return DecodeText(bytes, TextEncoding::System);
}

bool IsReadOnly(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY);
}

bool IsMissing(const std::wstring& path) {
    return GetFileAttributesW(path.c_str()) == INVALID_FILE_ATTRIBUTES &&
           GetLastError() == ERROR_FILE_NOT_FOUND;
}

bool WriteUnicode(const std::wstring& path, const std::wstring& text) {
    const std::wstring marked = L'\xFEFF' + text;
    NewFile file(path);
    file.Write({reinterpret_cast<const char*>(marked.data()), marked.size() * sizeof(wchar_t)});
    return file.Good();
}

/// The file is replaced in one step, so that a failure half-way loses no setting.
void Replace(const std::wstring& path, const std::wstring& text) {
    const std::wstring draft = path + L".new";
    if (!WriteUnicode(draft, text) ||
        !MoveFileExW(draft.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING))
        RemoveFile(draft);
}

/// The file's bytes; none for a missing file; nothing when it cannot be read.
std::optional<std::string> ReadProfile(const std::wstring& path) {
    return IsMissing(path) ? std::string() : ReadWholeFile(path, largestProfile);
}

} // namespace

bool EnsureUnicodeProfile(const std::wstring& path) {
    if (IsReadOnly(path))
        return false;
    const std::optional<std::string> bytes = ReadProfile(path);
    if (const auto text = bytes ? TextToConvert(*bytes) : std::nullopt) {
        Replace(path, *text);
        // Some systems keep the last profile in memory; this lets go of it.
        WritePrivateProfileStringW(nullptr, nullptr, nullptr, path.c_str());
    }
    return true;
}

} // namespace brimwave
