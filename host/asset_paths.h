#pragma once
#include <optional>
#include <string>
#include <string_view>

namespace brimwave {

enum class AssetKind { Bitmap, Photometric };

/// What follows the last "\" or "/"; the whole path when it has neither.
[[nodiscard]] std::wstring_view FileNameOf(std::wstring_view path);

/// True for files and folders alike.
[[nodiscard]] bool PathExists(const std::wstring& path);

/// The path as stored when it exists, else the path under which the host finds the file on this
/// machine; nothing when it is found nowhere.
[[nodiscard]] std::optional<std::wstring> ResolveAssetPath(const std::wstring& stored,
                                                           AssetKind kind);

} // namespace brimwave
