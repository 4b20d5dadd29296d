#include "sceneconv/write_scene.h"

#include "sceneconv/materials.h"
#include "sceneconv/render_size.h"
#include "sceneconv/scene_json.h"
#include "sceneconv/scene_nodes.h"
#include "sceneconv/source_scene.h"
#include "sceneconv/textures.h"

#include <fstream>

namespace sceneconv {

namespace {

void WriteFile(const std::filesystem::path& path, const Json& scene) {
    const std::filesystem::path part = path.string() + ".part";
    std::ofstream out(part, std::ios::binary | std::ios::trunc);
    if (!out)
        throw ConvertError(path, "cannot be written");
    out << scene.dump(1) << '\n';
    out.close();
    std::error_code error;
    if (out)
        std::filesystem::rename(part, path, error);
    if (!out || error) {
        std::filesystem::remove(part, error);
        throw ConvertError(path, "cannot be written");
    }
}

/// `output` is where the file is going to be: embedded pictures are written beside it.
Json SceneJson(const SourceScene& scene, const std::filesystem::path& output, Warnings& warnings) {
    TextureFiles files(scene, output, warnings);
    Maps maps(files);
    Materials materials(scene, maps, warnings);
    Objects objects;
    Json nodes = Nodes(scene, objects, materials, warnings).Write();

    Json json;
    json["format"] = "simhost-scene";
    json["version"] = 1;
    // The scene's own name in the host: a Windows path whose last part is the input's.
    json["file_name"] =
        "C:\\Scenes\\" + PortableFileName(ToUtf8(scene.file.stem().string())) + ".max";
    json["units"] = {{"type", scene.unit.type}, {"scale", Tidy(scene.unit.scale)}};
    json["render"] = {{"width", renderWidth}, {"height", renderHeight}};
    json["map_paths"] = files.MapPaths();
    json["maps"] = maps.Entries();
    json["materials"] = materials.Entries();
    json["objects"] = objects.Entries();
    json["nodes"] = std::move(nodes);
    return json;
}

} // namespace

Summary Convert(const std::filesystem::path& input, const std::filesystem::path& output,
                Warnings& warnings) {
    std::error_code error;
    if (std::filesystem::equivalent(input, output, error))
        throw ConvertError(output, "is the input itself");
    const SourceScene scene = ReadSource(input, warnings);
    const Json json = SceneJson(scene, output, warnings);
    WriteFile(output, json);
    return {json["nodes"].size(), json["objects"].size(), json["materials"].size(),
            json["maps"].size()};
}

} // namespace sceneconv
