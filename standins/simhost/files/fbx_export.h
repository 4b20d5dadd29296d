#pragma once
#include <string>

namespace simhost {

struct FbxExportResult {
    bool ok = false;
    std::wstring error; // one line; empty when ok
};

/// Writes the open scene as a binary FBX file (version 7.5, z up, in system units). The scene is
/// read through the host's own interfaces alone. A file of that name is replaced; when writing
/// fails none is left behind. The file is built in memory, so it may take as much as it is long.
[[nodiscard]] FbxExportResult ExportFbx(const wchar_t* path);

} // namespace simhost
