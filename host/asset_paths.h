#pragma once
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace brimwave {

enum class AssetKind { Bitmap, Photometric };

/// Finds the files that a scene names; one finder serves one export. A folder that was missing once
/// is not looked into again: the drive or server of another machine can take seconds to be missing,
/// for each file anew.
class AssetFinder {
  public:
    /// PathExists for a file.
    [[nodiscard]] bool Exists(const std::wstring& path);
    /// The path as stored when it exists, else the path under which the host finds the file on this
    /// machine; nothing when it is found nowhere.
    [[nodiscard]] std::optional<std::wstring> Resolve(const std::wstring& stored, AssetKind kind);

  private:
    std::set<std::wstring, std::less<>> missingFolders_;
};

} // namespace brimwave
