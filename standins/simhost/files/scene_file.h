#pragma once
// Scene files of the stand-in host; docs/scene-file.md describes them.
#include <string>
#include <string_view>

namespace simhost {

struct LoadResult {
    bool ok = false;
    /// One line: file, place and what was expected there. UTF-8; empty when ok.
    std::string error;
    explicit operator bool() const { return ok; }
};

/// Reads a scene file and makes it the open scene. When anything is wrong with the file nothing is
/// loaded and the open scene stays. Search folders in the file are relative to the file's folder.
[[nodiscard]] LoadResult LoadSceneFile(const std::wstring& path);

/// The same for a text. `baseFolder` stands for the folder of the file.
[[nodiscard]] LoadResult LoadSceneText(std::string_view json, std::wstring_view baseFolder = {});

} // namespace simhost
