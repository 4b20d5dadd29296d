#pragma once
#include "strclass.h"

namespace MaxSDK::AssetManagement {

enum AssetType { kOtherAsset = 0, kBitmapAsset = 1, kPhotometricAsset = 3 };

/// A file that the scene uses, as the host keeps it.
class AssetUser {
  public:
    AssetUser() = default;
    AssetUser(MSTR fileName, AssetType type) : fileName_(std::move(fileName)), type_(type) {}
    [[nodiscard]] const MSTR& GetFileName() const { return fileName_; }
    [[nodiscard]] AssetType GetType() const { return type_; }
    /// The full path when the host finds the file, else an empty text.
    [[nodiscard]] MSTR GetFullFilePath() const;
    bool GetFullFilePath(MSTR& path) const;

  private:
    MSTR fileName_;
    AssetType type_ = kOtherAsset;
};

} // namespace MaxSDK::AssetManagement
