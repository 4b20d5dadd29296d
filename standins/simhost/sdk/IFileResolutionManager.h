#pragma once
#include "AssetUser.h"

/// Finds the scene's files on this machine: the path as stored, then beside the scene, then in
/// the user's search folders by file name.
class IFileResolutionManager {
  public:
    static IFileResolutionManager* GetInstance();
    virtual ~IFileResolutionManager() = default;
    /// Empty when the file is found nowhere.
    virtual MSTR GetFullFilePath(const MCHAR* fileName, MaxSDK::AssetManagement::AssetType type,
                                 bool byPassCache = false) = 0;
};
