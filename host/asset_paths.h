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
    /// `sceneFolder`: where else to look, with its separator; empty for nowhere else. The
    /// files of a job are searched there, what a package says of a file is the host's word alone.
    explicit AssetFinder(std::wstring sceneFolder = {}) : sceneFolder_(std::move(sceneFolder)) {}

    /// PathExists for a file.
    [[nodiscard]] bool Exists(const std::wstring& path);
    /// The first of these that exists, nothing when none does: the path as stored, the same beside
    /// the scene, the file's name beside the scene, the path under which the host finds the file on
    /// this machine. What the host throws passes through.
    [[nodiscard]] std::optional<std::wstring> Resolve(const std::wstring& stored, AssetKind kind);

  private:
    std::wstring sceneFolder_;
    std::set<std::wstring, std::less<>> missingFolders_;
};

} // namespace brimwave
