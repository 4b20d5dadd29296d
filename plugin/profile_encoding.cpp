#include "plugin/profile_encoding.h"

#include <windows.h>

#include <cstring>
#include <optional>
#include <string_view>

namespace brimwave {
namespace {

constexpr wchar_t byteOrderMark = 0xFEFF;
constexpr LONGLONG largestProfile = 1 << 20; // far more than the settings ever take

class File {
  public:
    File(const std::wstring& path, DWORD access, DWORD disposition)
        : handle_(CreateFileW(path.c_str(), access, FILE_SHARE_READ, nullptr, disposition,
                              FILE_ATTRIBUTE_NORMAL, nullptr)) {}
    ~File() {
        if (IsOpen())
            CloseHandle(handle_);
    }
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    [[nodiscard]] bool IsOpen() const { return handle_ != INVALID_HANDLE_VALUE; }

    [[nodiscard]] std::optional<std::string> ReadAll() const {
        LARGE_INTEGER size{};
        if (!GetFileSizeEx(handle_, &size) || size.QuadPart > largestProfile)
            return std::nullopt;
        std::string bytes(static_cast<std::size_t>(size.QuadPart), '\0');
        DWORD read = 0;
        if (!ReadFile(handle_, bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr))
            return std::nullopt;
        bytes.resize(read);
        return bytes;
    }

    [[nodiscard]] bool Write(std::wstring_view text) const {
        const auto size = static_cast<DWORD>(text.size() * sizeof(wchar_t));
        DWORD written = 0;
        return WriteFile(handle_, text.data(), size, &written, nullptr) && written == size;
    }

  private:
    HANDLE handle_;
};

std::wstring Decode(std::string_view bytes, UINT codePage) {
    const int size = static_cast<int>(bytes.size());
    const int units = MultiByteToWideChar(codePage, 0, bytes.data(), size, nullptr, 0);
    std::wstring text(static_cast<std::size_t>(units), L'\0');
    MultiByteToWideChar(codePage, 0, bytes.data(), size, text.data(), units);
    return text;
}

/// The text of a profile that the profile calls would not write as UTF-16; nothing when it
/// already begins with a UTF-16 mark.
std::optional<std::wstring> TextToConvert(std::string_view bytes) {
    if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF"))
        return std::nullopt;
    if (bytes.starts_with("\xEF\xBB\xBF")) // saved by an editor
        return Decode(bytes.substr(3), CP_UTF8);
    if (bytes.find('\0') != std::string_view::npos) { // UTF-16 without a mark
        std::wstring text(bytes.size() / sizeof(wchar_t), L'\0');
        std::memcpy(text.data(), bytes.data(), text.size() * sizeof(wchar_t));
        return text;
    }
    return Decode(bytes, CP_ACP);
}

bool IsReadOnly(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY);
}

/// The file is replaced in one step, so that a failure half-way loses no setting.
void Replace(const std::wstring& path, const std::wstring& text) {
    const std::wstring draft = path + L".new";
    const bool written =
        File(draft, GENERIC_WRITE, CREATE_ALWAYS).Write(std::wstring(1, byteOrderMark) + text);
    if (!written || !MoveFileExW(draft.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING))
        DeleteFileW(draft.c_str());
}

/// The file's bytes; none for a missing file; nothing when it cannot be read.
std::optional<std::string> ReadProfile(const std::wstring& path) {
    const File file(path, GENERIC_READ, OPEN_EXISTING);
    if (file.IsOpen())
        return file.ReadAll();
    return GetLastError() == ERROR_FILE_NOT_FOUND ? std::optional(std::string()) : std::nullopt;
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
