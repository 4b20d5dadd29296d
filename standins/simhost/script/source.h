#pragma once
// Script files come in the encodings that editors of two decades wrote.
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace simhost::script {

/// The text of a script file as UTF-16: UTF-8 and UTF-16 (both byte orders) by their marks, UTF-8
/// without a mark when all bytes are valid UTF-8, Windows-1252 otherwise. The mark is not part of
/// the text.
[[nodiscard]] std::wstring DecodeSource(std::string_view bytes);

/// The bytes of a script file; nothing when it cannot be read or cannot be a script that short.
[[nodiscard]] std::optional<std::string> FindSource(std::wstring_view path);

/// A script's path, with either separator, as a path of the machine that the host runs on.
[[nodiscard]] std::filesystem::path ToFilePath(std::wstring_view path);

} // namespace simhost::script
