#include "sceneconv/scene_json.h"
#include "sceneconv/source_scene.h"

#include <assimp/commonMetaData.h>
#include <assimp/config.h>
#include <assimp/postprocess.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <utility>

namespace sceneconv {

namespace {

std::string ReadBytes(const std::filesystem::path& file) {
    std::error_code error;
    if (std::filesystem::is_directory(file, error))
        throw ConvertError(file, "is a folder, not a scene file");
    errno = 0;
    std::ifstream stream(file, std::ios::binary);
    if (!stream)
        throw ConvertError(file, std::string("cannot be opened: ") + std::strerror(errno));
    stream.seekg(0, std::ios::end);
    const std::streamoff size = stream.tellg();
    if (size <= 0)
        throw ConvertError(file, size < 0 ? "cannot be read" : "is empty");
    std::string bytes(static_cast<std::size_t>(size), '\0');
    stream.seekg(0);
    if (!stream.read(bytes.data(), size))
        throw ConvertError(file, "cannot be read to its end");
    return bytes;
}

void RefuseOldFbx(const std::filesystem::path& file, const FbxHead& head) {
    if (head.isFbx && head.version != 0 && head.version < 7100) {
        throw ConvertError(file, "FBX version " + std::to_string(head.version) +
                                     " is too old, only 7100 (FBX 2011) and later can be read; "
                                     "save it again in a newer version");
    }
}

void Import(SourceScene& scene) {
    scene.importer = std::make_unique<Assimp::Importer>();
    // The pivot chains of FBX nodes are put together by OverlayFbx.
    scene.importer->SetPropertyBool(AI_CONFIG_IMPORT_FBX_PRESERVE_PIVOTS, false);
    scene.importer->SetPropertyBool(AI_CONFIG_IMPORT_FBX_READ_ANIMATIONS, false);
    scene.importer->SetPropertyBool(AI_CONFIG_IMPORT_COLLADA_USE_COLLADA_NAMES, true);
    scene.imported = scene.importer->ReadFile(scene.file.string(), aiProcess_Triangulate);
    if (!scene.imported || !scene.imported->mRootNode) {
        std::string reason = scene.importer->GetErrorString();
        std::replace_if(reason.begin(), reason.end(), IsControl, ' ');
        throw ConvertError(scene.file, "is not a scene that can be read" +
                                           (reason.empty() ? "" : ": " + reason));
    }
}

/// Metres in the unit that a Collada file names in its head; 1 when it names none.
double ColladaMetres(std::string_view bytes) {
    const std::size_t unit = bytes.substr(0, 65536).find("<unit");
    const std::string_view tag =
        unit == std::string_view::npos ? "" : bytes.substr(unit, bytes.find('>', unit) - unit);
    constexpr std::string_view attribute = "meter=";
    const std::size_t at = tag.find(attribute);
    const double metres =
        at == std::string_view::npos
            ? 1
            : std::atof(std::string(tag.substr(at + attribute.size() + 1)).c_str());
    return metres > 0 && std::isfinite(metres) ? metres : 1;
}

/// The library scales the root node to metres; the file's unit serves as well and leaves the
/// lengths of cameras and lights right.
void KeepColladaUnit(SourceScene& scene, std::string_view bytes, Warnings& warnings) {
    const double metres = ColladaMetres(bytes);
    Matrix& root = scene.nodes.front().local;
    const double applied = static_cast<float>(metres); // in single precision, as the library does
    root = root * Scaling({1 / applied, 1 / applied, 1 / applied});
    scene.unit = UnitOf(metres * 100, warnings);
}

/// What the format's own rules say, and what the library loses of it.
void ApplyFormat(SourceScene& scene, std::string_view bytes, Warnings& warnings) {
    aiString library;
    if (scene.imported->mMetaData)
        scene.imported->mMetaData->Get(AI_METADATA_SOURCE_FORMAT, library);
    const std::string_view format = library.C_Str();
    if (scene.fbx) {
        OverlayFbx(scene, warnings);
    } else if (format == "glTF2 Importer") {
        scene.unit = {"meters", 1};
        scene.format = Format::Gltf;
        OverlayGltf(scene, bytes, warnings);
    } else if (format == "glTF Importer") {
        scene.unit = {"meters", 1};
    } else if (format == "Collada Importer") {
        KeepColladaUnit(scene, bytes, warnings);
    }
}

void ReadFbx(SourceScene& scene, std::string_view bytes, Warnings& warnings) {
    try {
        scene.fbx = std::make_unique<FbxDocument>(bytes);
        scene.format = Format::Fbx;
    } catch (const std::runtime_error& error) {
        warnings.Add(error.what() + std::string("; host parameters and exact names are missing"));
    }
}

void RefuseEmpty(const SourceScene& scene) {
    if (std::none_of(scene.nodes.begin(), scene.nodes.end(), [](const SourceNode& node) {
            return !node.pieces.empty() || node.camera || node.light;
        })) {
        throw ConvertError(scene.file, "holds no mesh, light or camera");
    }
}

constexpr std::pair<const char*, double> unitCentimetres[] = {
    {"millimeters", 0.1}, {"centimeters", 1},  {"inches", 2.54},      {"feet", 30.48},
    {"meters", 100},      {"miles", 160934.4}, {"kilometers", 100000}};

} // namespace

double Unit::Metres() const {
    const auto* unit = std::find_if(std::begin(unitCentimetres), std::end(unitCentimetres),
                                    [&](const auto& candidate) { return candidate.first == type; });
    return unit->second / 100 * scale;
}

Unit UnitOf(double centimeters, Warnings& warnings) {
    for (const auto& [type, size] : unitCentimetres) {
        if (std::abs(centimeters - size) < 1e-6 * size)
            return {type, 1};
    }
    if (std::isfinite(centimeters) && centimeters > 0)
        return {"centimeters", centimeters};
    warnings.Add("the file's unit makes no sense; taken as centimeters");
    return {};
}

std::vector<std::vector<std::size_t>> ChildLists(const std::vector<SourceNode>& nodes) {
    std::vector<std::vector<std::size_t>> children(nodes.size());
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        if (nodes[i].parent)
            children[*nodes[i].parent].push_back(i);
    }
    return children;
}

SourceScene ReadSource(const std::filesystem::path& file, Warnings& warnings) {
    SourceScene scene;
    scene.file = file;
    std::string bytes = ReadBytes(file);
    const FbxHead head = ReadFbxHead(bytes);
    RefuseOldFbx(file, head);
    if (head.isFbx) {
        ReadFbx(scene, bytes, warnings);
        bytes = {};
    }
    Import(scene);
    scene.toHost = AxisRotation(0, 90); // y up, which is what the library makes of most formats
    BuildFromLibrary(scene, warnings);
    ApplyFormat(scene, bytes, warnings);
    LinkTargetsByName(scene);
    RefuseEmpty(scene);
    return scene;
}

} // namespace sceneconv
