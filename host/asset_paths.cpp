#include "host/asset_paths.h"

#include "host/files.h"
#include "host/paths.h"
#include "host/sdk_compat.h"

#include <IFileResolutionManager.h>

namespace brimwave {

bool AssetFinder::Exists(const std::wstring& path) {
    const std::wstring_view folder = FolderOf(path);
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
    if (!sceneFolder_.empty())
        for (const std::wstring_view name : {std::wstring_view(stored), FileNameOf(stored)})
            if (std::wstring beside = sceneFolder_ + std::wstring(name); Exists(beside))
                return beside;
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
