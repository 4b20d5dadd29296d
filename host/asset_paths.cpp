#include "host/asset_paths.h"

#include "host/long_path.h"
#include "host/sdk_compat.h"

#include <IFileResolutionManager.h>

#include <algorithm>

namespace brimwave {

std::wstring_view FileNameOf(std::wstring_view path) {
    const auto separator = std::find_if(path.rbegin(), path.rend(),
                                        [](wchar_t unit) { return unit == L'\\' || unit == L'/'; });
    return path.substr(static_cast<size_t>(path.rend() - separator));
}

bool PathExists(const std::wstring& path) {
    return !path.empty() && GetFileAttributesW(LongPath(path).c_str()) != INVALID_FILE_ATTRIBUTES;
}

bool AssetFinder::Exists(const std::wstring& path) {
    const std::wstring_view folder(path.data(), path.size() - FileNameOf(path).size());
    if (missingFolders_.contains(folder))
        return false;
    if (PathExists(path))
        return true;
    if (!folder.empty() && !PathExists(std::wstring(folder)))
        missingFolders_.emplace(folder);
    return false;
}

std::optional<std::wstring> AssetFinder::Resolve(const std::wstring& stored, AssetKind kind) {
    if (stored.empty())
        return std::nullopt;
    if (Exists(stored))
        return stored;
    IFileResolutionManager* const manager = IFileResolutionManager::GetInstance();
    if (!manager)
        return std::nullopt;
    const auto type = kind == AssetKind::Bitmap ? MaxSDK::AssetManagement::kBitmapAsset
                                                : MaxSDK::AssetManagement::kPhotometricAsset;
    std::wstring found = HostText(manager->GetFullFilePath(stored.c_str(), type));
    if (!Exists(found))
        return std::nullopt;
    return found;
}

} // namespace brimwave
