#include "host/files.h"

#include "host/attempt.h"
#include "host/long_path.h"

#include <algorithm>

namespace brimwave {
namespace {

// One call takes at most 32 bits' worth.
constexpr std::size_t longestPiece = std::size_t{64} << 20;

DWORD PieceOf(std::size_t size) {
    return static_cast<DWORD>(std::min(size, longestPiece));
}

KernelHandle OpenFile(const std::wstring& path, DWORD access, DWORD share, DWORD disposition) {
    const HANDLE file = CreateFileW(LongPath(path).c_str(), access, share, nullptr, disposition,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    return KernelHandle(file == INVALID_HANDLE_VALUE ? nullptr : file);
}

bool ReadBytes(HANDLE file, std::string& bytes) {
    std::size_t done = 0;
    while (done < bytes.size()) {
        DWORD got = 0;
        if (!ReadFile(file, bytes.data() + done, PieceOf(bytes.size() - done), &got, nullptr) ||
            got == 0)
            return false;
        done += got;
    }
    return true;
}

} // namespace

bool PathExists(const std::wstring& path) {
    return !path.empty() && GetFileAttributesW(LongPath(path).c_str()) != INVALID_FILE_ATTRIBUTES;
}

std::optional<std::string> ReadWholeFile(const std::wstring& path, std::uint64_t most) {
    const KernelHandle file = OpenFile(
        path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, OPEN_EXISTING);
    LARGE_INTEGER size{};
    if (!file || !GetFileSizeEx(file.get(), &size) ||
        static_cast<std::uint64_t>(size.QuadPart) > most)
        return std::nullopt;
    std::string bytes;
    if (!Attempt([&] { bytes.resize(static_cast<std::size_t>(size.QuadPart)); }) ||
        !ReadBytes(file.get(), bytes))
        return std::nullopt;
    return bytes;
}

NewFile::NewFile(const std::wstring& path)
    : file_(OpenFile(path, GENERIC_WRITE, 0, CREATE_ALWAYS)) {}

void NewFile::Write(std::string_view bytes) {
    while (file_ && !bytes.empty()) {
        const DWORD piece = PieceOf(bytes.size());
        DWORD written = 0;
        if (!WriteFile(file_.get(), bytes.data(), piece, &written, nullptr) || written != piece)
            file_.reset();
        bytes.remove_prefix(piece);
    }
}

void MakeFolder(const std::wstring& path) {
    CreateDirectoryW(LongPath(path).c_str(), nullptr);
}

void CopyOver(const std::wstring& from, const std::wstring& to) {
    const std::wstring source = LongPath(from);
    const std::wstring target = LongPath(to);
    if (CopyFileW(source.c_str(), target.c_str(), FALSE))
        return;
    // A copy takes over its source's attributes: a read-only one is in the way of the next.
    if (SetFileAttributesW(target.c_str(), FILE_ATTRIBUTE_NORMAL))
        CopyFileW(source.c_str(), target.c_str(), FALSE);
}

void RemoveFile(const std::wstring& path) {
    DeleteFileW(LongPath(path).c_str());
}

} // namespace brimwave
