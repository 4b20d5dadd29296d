#include "service/jobs.h"

#include "service/url.h"

#include <windows.h>

#include <algorithm>
#include <memory>
#include <optional>

namespace brimwave {
namespace {

struct HandleCloser {
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};
using FileHandle = std::unique_ptr<void, HandleCloser>;

FileHandle OpenForReading(const std::wstring& path) {
    const HANDLE file = CreateFileW(path.c_str(), GENERIC_READ,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    return FileHandle(file == INVALID_HANDLE_VALUE ? nullptr : file);
}

// The file's bytes, read straight into a string of its size: a package of many megabytes must
// not be held twice. Nothing when it cannot be opened or read to its end.
std::optional<std::string> ReadWholeFile(const std::wstring& path) {
    const FileHandle file = OpenForReading(path);
    LARGE_INTEGER size{};
    if (!file || !GetFileSizeEx(file.get(), &size))
        return std::nullopt;
    std::string bytes(static_cast<std::size_t>(size.QuadPart), '\0');
    constexpr std::size_t piece = std::size_t{64} << 20; // one call reads at most 32 bits' worth
    std::size_t done = 0;
    while (done < bytes.size()) {
        const auto wanted = static_cast<DWORD>(std::min(piece, bytes.size() - done));
        DWORD got = 0;
        if (!ReadFile(file.get(), bytes.data() + done, wanted, &got, nullptr) || got == 0)
            return std::nullopt;
        done += got;
    }
    return bytes;
}

} // namespace

HttpResult SubmitJob(std::wstring_view baseAddress, const std::wstring& packagePath,
                     std::wstring_view token, std::wstring_view jobName,
                     std::wstring_view targetVersion) {
    const std::optional<std::string> body = ReadWholeFile(packagePath);
    if (!body)
        return {.text = L"Cannot read JSON file: " + packagePath};
    return PostJobRequest(std::wstring(baseAddress).append(L"/node/api/v1/jobs"), token, *body,
                          jobName, targetVersion);
}

HttpResult PostJobRequest(std::wstring_view url, std::wstring_view token, std::string_view body,
                          std::wstring_view jobName, std::wstring_view targetVersion) {
    std::wstring headers = L"X-Job-Name: " + UrlEncode(jobName);
    if (targetVersion == L"5.1" || targetVersion == L"5.2")
        headers.append(L"\r\nX-Blender-Target-Version: ").append(targetVersion);
    return HttpRequest(url, L"POST", token, body, headers);
}

} // namespace brimwave
