#include "simhost/files/paths.h"

#include <windows.h>

namespace simhost {

std::wstring_view FolderOf(std::wstring_view path) {
    const size_t slash = path.find_last_of(L"\\/");
    return slash == std::wstring_view::npos ? std::wstring_view() : path.substr(0, slash + 1);
}

std::wstring_view FileNameOf(std::wstring_view path) {
    return path.substr(FolderOf(path).size());
}

bool IsAbsolutePath(std::wstring_view path) {
    if (path.empty())
        return false;
    return path[0] == L'/' || path[0] == L'\\' || (path.size() > 1 && path[1] == L':');
}

std::wstring JoinPath(std::wstring_view base, std::wstring_view relative) {
    std::wstring out(base);
    if (!out.empty() && out.back() != L'/' && out.back() != L'\\')
        out += out.find(L'\\') == std::wstring::npos && out.find(L'/') != std::wstring::npos
                   ? L'/'
                   : L'\\';
    return out.append(relative);
}

bool FileExists(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && !(attributes & FILE_ATTRIBUTE_DIRECTORY);
}

} // namespace simhost
