#pragma once
#include <cstdint>
#include <string>
#include <string_view>

namespace brimwave {

/// The name that a job takes from its scene's file: no folder, no extension, nothing that a file
/// name cannot hold; "untitled" when nothing is left.
[[nodiscard]] std::wstring JobNameOf(std::wstring_view scenePath);

/// JobNameOf for the open scene.
[[nodiscard]] std::wstring SceneJobName();

/// 8 characters made from a millisecond count: its low 8 digits in base 36, lowest digit first,
/// written a..z for 0..25 and 0..9 for 26..35.
[[nodiscard]] std::wstring JobSuffix(std::uint64_t milliseconds);

/// Folder name of a job that starts now: the scene's job name, "_" and the suffix. Two within one
/// millisecond share it.
[[nodiscard]] std::wstring NewJobFolderName();

} // namespace brimwave
