#include "package/ies_profile.h"

#include "host/asset_paths.h"
#include "host/json_text.h"
#include "host/long_path.h"

#include <algorithm>
#include <new>
#include <stdexcept>

namespace brimwave {
namespace {

/// Closes the file on every path.
class InputFile {
  public:
    explicit InputFile(const std::wstring& path)
        : file_(CreateFileW(LongPath(path).c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                            OPEN_EXISTING, 0, nullptr)) {}
    ~InputFile() {
        if (IsOpen())
            CloseHandle(file_);
    }
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    [[nodiscard]] bool IsOpen() const { return file_ != INVALID_HANDLE_VALUE; }
    [[nodiscard]] size_t Size() const {
        LARGE_INTEGER size{};
        return GetFileSizeEx(file_, &size) && size.QuadPart > 0 ? static_cast<size_t>(size.QuadPart)
                                                                : 0;
    }
    /// Bytes read, 0 at the end and on failure.
    size_t Read(char* bytes, size_t size) const {
        DWORD read = 0;
        const auto part = static_cast<DWORD>(std::min<size_t>(size, 1u << 20));
        return ReadFile(file_, bytes, part, &read, nullptr) ? read : 0;
    }

  private:
    HANDLE file_;
};

/// Empty for a file that is empty, cannot be opened or does not fit into memory.
std::string ReadBytes(const std::wstring& path) {
    const InputFile file(path);
    if (!file.IsOpen())
        return {};
    try {
        std::string bytes(file.Size(), '\0');
        size_t done = 0;
        while (done < bytes.size()) {
            const size_t read = file.Read(bytes.data() + done, bytes.size() - done);
            if (read == 0)
                break;
            done += read;
        }
        bytes.resize(done);
        return bytes;
    } catch (const std::bad_alloc&) {
        return {};
    } catch (const std::length_error&) {
        return {};
    }
}

/// Length of the next piece to convert. It ends behind a blank or a control character: no code
/// page has those inside of a character of several bytes.
size_t PieceLength(std::string_view bytes) {
    constexpr size_t aim = 64 * 1024;
    if (bytes.size() <= aim)
        return bytes.size();
    const auto ends = [](char c) { return static_cast<unsigned char>(c) <= 0x20; };
    const auto cut = std::find_if(bytes.begin() + aim, bytes.end(), ends);
    return cut == bytes.end() ? bytes.size() : static_cast<size_t>(cut - bytes.begin()) + 1;
}

std::wstring FromSystemCodePage(std::string_view bytes) {
    const int size = static_cast<int>(bytes.size());
    const int length = MultiByteToWideChar(CP_ACP, 0, bytes.data(), size, nullptr, 0);
    std::wstring text(static_cast<size_t>(std::max(length, 0)), L'\0');
    if (length > 0)
        MultiByteToWideChar(CP_ACP, 0, bytes.data(), size, text.data(), length);
    return text;
}

} // namespace

IesProfile ReadIesProfile(PackageContext& package, Animatable& light, std::wstring_view parameter) {
    IesProfile profile;
    ParamValue path = package.params.FindParamValue(&light, parameter);
    profile.stored = std::move(path.stringValue);
    profile.resolved = package.assets.Resolve(profile.stored, AssetKind::Photometric);
    if (profile.resolved)
        profile.bytes = ReadBytes(*profile.resolved);
    return profile;
}

size_t AppendIesText(Utf8Store& out, std::string_view bytes) {
    size_t characters = 0;
    std::wstring escaped;
    while (!bytes.empty()) {
        const size_t length = PieceLength(bytes);
        const std::wstring text = FromSystemCodePage(bytes.substr(0, length));
        bytes.remove_prefix(length);
        characters += text.size();
        escaped.clear();
        AppendJsonEscaped(escaped, text);
        out.Append(escaped);
    }
    return characters;
}

} // namespace brimwave
