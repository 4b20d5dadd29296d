#include "host/asset_paths.h"

#include "host/long_path.h"
#include "host/sdk_compat.h"

#include <IFileResolutionManager.h>

namespace brimwave {

std::wstring_view FileNameOf(std::wstring_view path) {
    const size_t separator = path.find_last_of(L"\\/");
    return separator == std::wstring_view::npos ? path : path.substr(separator + 1);
}

bool PathExists(const std::wstring& path) {
    return !path.empty() && GetFileAttributesW(LongPath(path).c_str()) != INVALID_FILE_ATTRIBUTES;
}

std::optional<std::wstring> ResolveAssetPath(const std::wstring& stored, AssetKind kind) {
    if (stored.empty())
        return std::nullopt;
    if (PathExists(stored))
        return stored;
    IFileResolutionManager* const manager = IFileResolutionManager::GetInstance();
    if (!manager)
        return std::nullopt;
    const auto type = kind == AssetKind::Bitmap ? MaxSDK::AssetManagement::kBitmapAsset
                                                : MaxSDK::AssetManagement::kPhotometricAsset;
    std::wstring found = HostText(manager->GetFullFilePath(stored.c_str(), type));
    if (!PathExists(found))
        return std::nullopt;
    return found;
}

} // namespace brimwave
