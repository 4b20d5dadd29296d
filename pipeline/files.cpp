#include "pipeline/files.h"

#include "host/long_path.h"

#include <max.h>

namespace brimwave {

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

std::wstring_view FolderOf(std::wstring_view path) {
    return path.substr(0, path.find_last_of(L"\\/") + 1); // npos + 1 is 0
}

} // namespace brimwave
