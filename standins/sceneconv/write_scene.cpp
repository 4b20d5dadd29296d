#include "sceneconv/write_scene.h"

#include "sceneconv/materials.h"
#include "sceneconv/render_size.h"
#include "sceneconv/scene_nodes.h"
#include "sceneconv/textures.h"

#include <fstream>

namespace sceneconv {

namespace {

/// The scene's own name in the host: a Windows path whose last part is the input's.
std::string HostFileName(const std::filesystem::path& input) {
    std::string name = ToUtf8(input.stem().string());
    for (char& c : name) {
        if (std::string_view("<>:\"/\\|?*").find(c) != std::string_view::npos ||
            static_cast<unsigned char>(c) < ' ') {
            c = '_';
        }
    }
    return "C:\\Scenes\\" + name + ".max";
}

void WriteFile(const std::filesystem::path& path, const Json& scene) {
    const std::filesystem::path part = path.string() + ".part";
    std::ofstream out(part, std::ios::binary | std::ios::trunc);
    if (!out)
        throw ConvertError(path.string() + ": cannot be written");
    out << scene.dump(1) << '\n';
    out.close();
    std::error_code error;
    if (out)
        std::filesystem::rename(part, path, error);
    if (!out || error) {
        std::filesystem::remove(part, error);
        throw ConvertError(path.string() + ": cannot be written");
    }
}

} // namespace

Json SceneJson(const SourceScene& scene, const std::filesystem::path& output, Warnings& warnings) {
    TextureFiles files(scene, output, warnings);
    Maps maps(files);
    Materials materials(scene, maps, warnings);
    Objects objects;
    Json nodes = Nodes(scene, objects, materials, warnings).Write();

    Json json;
    json["format"] = "simhost-scene";
    json["version"] = 1;
    json["file_name"] = HostFileName(scene.file);
    json["units"] = {{"type", scene.unit.type}, {"scale", Tidy(scene.unit.scale)}};
    json["render"] = {{"width", renderWidth}, {"height", renderHeight}};
    json["map_paths"] = files.MapPaths();
    json["maps"] = maps.Entries();
    json["materials"] = materials.Entries();
    json["objects"] = objects.Entries();
    json["nodes"] = std::move(nodes);
    return json;
}

Summary Convert(const std::filesystem::path& input, const std::filesystem::path& output,
                Warnings& warnings) {
    std::error_code error;
    if (std::filesystem::equivalent(input, output, error))
        throw ConvertError(output.string() + ": is the input itself");
    const SourceScene scene = ReadSource(input, warnings);
    const Json json = SceneJson(scene, output, warnings);
    WriteFile(output, json);
    return {json["nodes"].size(), json["objects"].size(), json["materials"].size(),
            json["maps"].size()};
}

} // namespace sceneconv
