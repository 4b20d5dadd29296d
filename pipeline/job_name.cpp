#include "pipeline/job_name.h"

#include "host/paths.h"
#include "host/scene_path.h"

#include <windows.h>

namespace brimwave {
namespace {

constexpr std::wstring_view untitledName = L"untitled";
constexpr std::wstring_view notInFileNames = L"\"*/:<>?\\|";
constexpr std::wstring_view suffixDigits = L"abcdefghijklmnopqrstuvwxyz0123456789";
constexpr int suffixLength = 8;

} // namespace

std::wstring JobNameOf(std::wstring_view scenePath) {
    const std::wstring_view file = FileNameOf(scenePath);
    // No dot gives npos, which keeps the whole text.
    std::wstring name(file.substr(0, file.rfind(L'.')));
    for (wchar_t& c : name)
        if (c < 32 || notInFileNames.find(c) != std::wstring_view::npos)
            c = L'_';
    name.resize(name.find_last_not_of(L". ") + 1);
    return name.empty() ? std::wstring(untitledName) : name;
}

std::wstring SceneJobName() {
    return JobNameOf(ScenePath());
}

std::wstring JobSuffix(std::uint64_t milliseconds) {
    std::wstring suffix;
    for (int i = 0; i < suffixLength; ++i) {
        suffix += suffixDigits[milliseconds % suffixDigits.size()];
        milliseconds /= suffixDigits.size();
    }
    return suffix;
}

std::wstring NewJobFolderName() {
    return SceneJobName() + L"_" + JobSuffix(GetTickCount64());
}

} // namespace brimwave
