// Where the scene's files are on this machine.
#include "IFileResolutionManager.h"

#include "simhost/files/paths.h"
#include "simhost/scene/scene.h"

namespace simhost {

namespace {

using MaxSDK::AssetManagement::AssetType;

class FileResolution final : public IFileResolutionManager {
  public:
    MSTR GetFullFilePath(const MCHAR* fileName, AssetType type, bool byPassCache) override;
};

MSTR FileResolution::GetFullFilePath(const MCHAR* fileName, AssetType /*type*/,
                                     bool /*byPassCache*/) {
    const Scene& scene = Scene::Current();
    const MCHAR* const asked = scene.faults.Give(Call::GetFullFilePath, fileName);
    if (!asked || !*asked || !scene.findsFiles)
        return MSTR();
    const std::wstring asStored = asked;
    if (FileExists(asStored))
        return MSTR(asStored);
    std::vector<std::wstring> folders;
    if (const auto folder = FolderOf(scene.filePath); !folder.empty())
        folders.emplace_back(folder);
    for (const std::wstring& path : scene.mapPaths)
        folders.push_back(IsAbsolutePath(path) || scene.baseFolder.empty()
                              ? path
                              : JoinPath(scene.baseFolder, path));
    for (const std::wstring& folder : folders) {
        if (!IsAbsolutePath(asStored))
            if (const std::wstring whole = JoinPath(folder, asStored); FileExists(whole))
                return MSTR(whole);
        if (const std::wstring named = JoinPath(folder, FileNameOf(asStored)); FileExists(named))
            return MSTR(named);
    }
    return MSTR();
}

} // namespace

} // namespace simhost

IFileResolutionManager* IFileResolutionManager::GetInstance() {
    static simhost::FileResolution manager;
    return simhost::Scene::Current().faults.Give(simhost::Call::GetInstance, &manager);
}

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
