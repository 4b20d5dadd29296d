#include "pipeline/texture_collection.h"

#include "host/asset_paths.h"
#include "host/attempt.h"
#include "host/files.h"
#include "host/params.h"
#include "host/paths.h"
#include "host/scene_path.h"
#include "host/sdk_compat.h"
#include "host/text.h"
#include "pipeline/scene_walk.h"

#include <IFileResolutionManager.h>
#include <max.h>
#include <stdmat.h>

#include <algorithm>
#include <optional>
#include <unordered_set>

namespace brimwave {
namespace {

bool IsHostBitmap(Texmap& map) {
    return map.ClassID() == Class_ID(BMTEX_CLASS_ID, 0);
}

bool IsLetterOrDigit(wchar_t c) {
    return (c >= L'a' && c <= L'z') || (c >= L'A' && c <= L'Z') || (c >= L'0' && c <= L'9');
}

/// The path as the map holds it; empty when it has none.
std::wstring StoredPath(Texmap& map, ParamReader& params) {
    if (IsHostBitmap(map))
        return HostText(static_cast<BitmapTex&>(map).GetMapName());
    for (const wchar_t* name : {L"filename", L"fileName", L"HDRIMapName"})
        if (const ParamValue value = params.FindParamValue(&map, name);
            value.kind == ParamKind::String)
            return value.stringValue;
    return {};
}

/// Where the host finds the file, when it finds it.
std::wstring ResolvedByHost(const std::wstring& path) {
    std::wstring resolved;
    Attempt([&] {
        if (IFileResolutionManager* manager = IFileResolutionManager::GetInstance())
            resolved = HostText(
                manager->GetFullFilePath(path.c_str(), MaxSDK::AssetManagement::kBitmapAsset));
    });
    return resolved;
}

class Collection {
  public:
    explicit Collection(const std::wstring& jobFolder)
        : folder_(jobFolder + L"\\textures\\"), sceneFolder_(FolderOf(ScenePath())) {
        MakeFolder(jobFolder + L"\\textures");
    }

    void Add(Texmap& map) {
        std::wstring stored;
        Attempt([&] {
            if (IsBitmapTexmap(map))
                stored = StoredPath(map, params_);
        });
        const std::wstring path(Trimmed(stored));
        // Equal texts lead to equal files: looking once is enough, and slow for missing ones.
        if (!path.empty() && stored_.insert(path).second)
            Take(path);
    }

    TextureCollectResult result;

  private:
    /// The first of the places where the file may be that has it; nothing when none has.
    [[nodiscard]] std::optional<std::wstring> Find(const std::wstring& path) {
        if (assets_.Exists(path))
            return path;
        if (!sceneFolder_.empty())
            for (const std::wstring_view name : {std::wstring_view(path), FileNameOf(path)})
                if (std::wstring beside = sceneFolder_ + std::wstring(name); PathExists(beside))
                    return beside;
        if (std::wstring resolved = ResolvedByHost(path); assets_.Exists(resolved))
            return resolved;
        return std::nullopt;
    }

    void Take(const std::wstring& path) {
        const std::optional<std::wstring> file = Find(path);
        if (!handled_.insert(file.value_or(path)).second)
            return;
        const std::wstring name(FileNameOf(file.value_or(path)));
        if (!file) {
            result.missing.push_back(L"Missing: " + name);
            return;
        }
        CopyOver(*file, folder_ + name);
        ++result.copied;
    }

    ParamReader params_;
    AssetFinder assets_;
    std::wstring folder_;
    std::wstring sceneFolder_; // with a separator at its end; empty: the scene was never saved
    std::unordered_set<std::wstring> stored_;  // paths as the maps hold them
    std::unordered_set<std::wstring> handled_; // paths of the files behind them
};

} // namespace

bool IsBitmapTexmap(Texmap& map) {
    if (IsHostBitmap(map))
        return true;
    std::wstring name = ClassNameOf(map);
    name.erase(name.begin(), std::find_if(name.begin(), name.end(), IsLetterOrDigit));
    name = ToLowerW(name);
    return name == L"coronabitmap" || name == L"vraybitmap" || name == L"vrayhdri";
}

TextureCollectResult CollectTextures(const std::wstring& jobFolder) {
    Collection collection(jobFolder);
    ForEachSceneMap([&](Texmap& map) { collection.Add(map); });
    return std::move(collection.result);
}

} // namespace brimwave
