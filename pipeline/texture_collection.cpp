#include "pipeline/texture_collection.h"

#include "host/asset_paths.h"
#include "host/attempt.h"
#include "host/bitmap_file.h"
#include "host/files.h"
#include "host/paths.h"
#include "host/scene_path.h"
#include "host/scene_walk.h"
#include "host/text.h"

#include <unordered_set>

namespace brimwave {
namespace {

class Collection {
  public:
    explicit Collection(const std::wstring& jobFolder)
        : assets_(std::wstring(FolderOf(ScenePath()))), folder_(jobFolder + L"\\textures\\") {
        MakeFolder(jobFolder + L"\\textures");
    }

    void Add(Texmap& map) {
        std::wstring stored;
        Attempt([&] {
            if (IsBitmapTexmap(map))
                stored = FindBitmapPath(params_, map).value_or(L"");
        });
        const std::wstring path(Trimmed(stored));
        // Equal texts lead to equal files: looking once is enough, and slow for missing ones.
        if (!path.empty() && stored_.insert(path).second)
            Take(path);
    }

    TextureCollectResult result;

  private:
    void Take(const std::wstring& path) {
        std::optional<std::wstring> file;
        Attempt([&] { file = assets_.Resolve(path, AssetKind::Bitmap); });
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
    std::unordered_set<std::wstring> stored_;  // paths as the maps hold them
    std::unordered_set<std::wstring> handled_; // paths of the files behind them
};

} // namespace

TextureCollectResult CollectTextures(const std::wstring& jobFolder) {
    Collection collection(jobFolder);
    for (Texmap* const map : CollectSceneMaps())
        collection.Add(*map);
    return std::move(collection.result);
}

} // namespace brimwave
