#pragma once
#include <filesystem>
#include <string>
#include <string_view>

namespace simhost::script {

/// A script's path, with either separator, as a path of the machine the host runs on.
[[nodiscard]] std::filesystem::path ToHostPath(std::wstring_view path);
/// And back: UTF-16, with "\" as separator on Windows and "/" elsewhere.
[[nodiscard]] std::wstring FromHostPath(const std::filesystem::path& path);

} // namespace simhost::script
