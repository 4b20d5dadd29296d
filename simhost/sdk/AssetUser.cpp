#include "AssetUser.h"

#include "IFileResolutionManager.h"

namespace MaxSDK::AssetManagement {

MSTR AssetUser::GetFullFilePath() const {
    return IFileResolutionManager::GetInstance()->GetFullFilePath(fileName_.data(), type_);
}

bool AssetUser::GetFullFilePath(MSTR& path) const {
    MSTR found = GetFullFilePath();
    if (found.isNull())
        return false;
    path = found;
    return true;
}

} // namespace MaxSDK::AssetManagement
