#include "AssetUser.h"

#include "IFileResolutionManager.h"

namespace MaxSDK::AssetManagement {

MSTR AssetUser::GetFullFilePath() const {
    IFileResolutionManager* const manager = IFileResolutionManager::GetInstance();
    return manager ? manager->GetFullFilePath(fileName_.data(), type_) : MSTR();
}

bool AssetUser::GetFullFilePath(MSTR& path) const {
    MSTR found = GetFullFilePath();
    if (found.isNull())
        return false;
    path = found;
    return true;
}

} // namespace MaxSDK::AssetManagement
