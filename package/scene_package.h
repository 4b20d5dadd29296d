#pragma once
#include <string_view>

namespace brimwave {

struct PackageResult {
    bool success = false;
    int objectCount = 0;
    int logLineCount = 0;
};

/// Writes the open scene's package to `path` as UTF-8 JSON, and its log lines to a ".log" file
/// beside it. Gives clashing object names unique ones in the scene. Never throws; a file that
/// cannot be written gives success false.
[[nodiscard]] PackageResult WriteScenePackage(std::wstring_view path);

} // namespace brimwave
