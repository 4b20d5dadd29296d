#include "simhost/app/host_state.h"

#include "simhost/app/options.h"
#include "simhost/files/scene_file.h"
#include "simhost/scene/scene.h"
#include "text/utf8.h"

#include <filesystem>

namespace simhost {
namespace {

constexpr int plugInSettingsDir = 26;

std::wstring DefaultSettingsFolder() {
    const wchar_t* const base = _wgetenv(L"APPDATA");
    const std::filesystem::path folder = std::filesystem::path(base ? base : L".") / L"simhost";
    std::error_code ignored; // without the folder, settings are not kept
    std::filesystem::create_directories(folder, ignored);
    return folder.wstring();
}

} // namespace

void OpenScene(const std::wstring& file) {
    if (file.empty())
        return Scene::Reset();
    if (const LoadResult loaded = LoadSceneFile(file); !loaded)
        throw StartError(utf8::ToWide(loaded.error));
}

void SetSettingsFolder(const std::wstring& folder) {
    Scene::Current().directories[plugInSettingsDir] =
        folder.empty() ? DefaultSettingsFolder() : folder;
}

} // namespace simhost
