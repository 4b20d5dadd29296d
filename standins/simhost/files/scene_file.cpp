#include "simhost/files/scene_file.h"

#include "simhost/files/paths.h"
#include "simhost/files/scene_file_loader.h"
#include "text/utf8.h"

#include <windows.h>

namespace simhost {

namespace {

/// Empty when the file can't be read.
std::optional<std::string> ReadWholeFile(const std::wstring& path) {
    const HANDLE file = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return std::nullopt;
    std::string bytes;
    char buffer[1 << 16];
    DWORD got = 0;
    bool ok = true;
    while ((ok = ReadFile(file, buffer, sizeof buffer, &got, nullptr) != FALSE) && got > 0)
        bytes.append(buffer, got);
    CloseHandle(file);
    return ok ? std::optional(std::move(bytes)) : std::nullopt;
}

LoadResult Load(std::string_view text, std::wstring_view baseFolder, const std::string& file) {
    try {
        const Json json = ParseJson(text);
        auto scene = std::make_unique<Scene>();
        scene->baseFolder = baseFolder;
        const JsonView root(json);
        SceneLoader(*scene, root).Load();
        Scene::Open(std::move(scene));
        return {true, ""};
    } catch (const JsonFault& fault) {
        const std::string place = fault.Place().empty() ? "the whole file" : fault.Place();
        return {false, file + ": " + place + ": " + fault.what()};
    } catch (const std::exception& error) {
        return {false, file + ": " + error.what()};
    }
}

} // namespace

LoadResult LoadSceneText(std::string_view json, std::wstring_view baseFolder) {
    return Load(json, baseFolder, "scene text");
}

LoadResult LoadSceneFile(const std::wstring& path) {
    const std::string file = utf8::FromWide(path);
    const auto bytes = ReadWholeFile(path);
    if (!bytes)
        return {false, file + ": the file can't be read"};
    std::string_view text = *bytes;
    if (text.starts_with("\xef\xbb\xbf"))
        text.remove_prefix(3);
    return Load(text, FolderOf(path), file);
}

} // namespace simhost
