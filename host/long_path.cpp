#include "host/long_path.h"

#include <algorithm>
#include <string_view>

namespace brimwave {
namespace {

constexpr std::size_t longestPlainPath = 247; // folders get 12 characters less than files

bool HasDotSegment(std::wstring_view path) {
    for (auto at = path.find(L"\\."); at != std::wstring_view::npos; at = path.find(L"\\.", at + 1))
        if (const auto end = path.find_first_not_of(L'.', at + 1);
            end == std::wstring_view::npos || path[end] == L'\\')
            return true;
    return false;
}

} // namespace

std::wstring LongPath(const std::wstring& path) {
    if (path.size() <= longestPlainPath)
        return path;
    std::wstring full = path;
    std::replace(full.begin(), full.end(), L'/', L'\\');
    if (HasDotSegment(full)) // the extended form is taken to the letter
        return path;
    if (full[1] == L':' && full[2] == L'\\')
        return L"\\\\?\\" + full;
    if (full.starts_with(L"\\\\") && full[2] != L'?' && full[2] != L'.')
        return L"\\\\?\\UNC" + full.substr(1);
    return path;
}

} // namespace brimwave
