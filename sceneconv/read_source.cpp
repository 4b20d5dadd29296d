#include "sceneconv/source_scene.h"

#include <assimp/commonMetaData.h>
#include <assimp/config.h>
#include <assimp/postprocess.h>

#include <cerrno>
#include <cstring>
#include <fstream>
#include <new>

namespace sceneconv {

namespace {

std::string Shown(const std::filesystem::path& file) {
    return file.string();
}

std::string ReadBytes(const std::filesystem::path& file) {
    std::error_code error;
    if (std::filesystem::is_directory(file, error)) {
        throw ConvertError(Shown(file) + ": is a folder, not a scene file");
    }
    errno = 0;
    std::ifstream stream(file, std::ios::binary);
    if (!stream) {
        throw ConvertError(Shown(file) + ": cannot be opened: " + std::strerror(errno));
    }
    stream.seekg(0, std::ios::end);
    const std::streamoff size = stream.tellg();
    if (size <= 0) {
        throw ConvertError(Shown(file) + (size < 0 ? ": cannot be read" : ": is empty"));
    }
    std::string bytes(static_cast<std::size_t>(size), '\0');
    stream.seekg(0);
    if (!stream.read(bytes.data(), size)) {
        throw ConvertError(Shown(file) + ": cannot be read to its end");
    }
    return bytes;
}

void RefuseOldFbx(const std::filesystem::path& file, const FbxHead& head) {
    if (head.isFbx && head.version != 0 && head.version < 7100) {
        throw ConvertError(Shown(file) + ": FBX version " + std::to_string(head.version) +
                           " is too old, only 7100 (FBX 2011) and later can be read; "
                           "save it again in a newer version");
    }
}

std::string OneLine(std::string text) {
    for (char& c : text) {
        if (static_cast<unsigned char>(c) < ' ') {
            c = ' ';
        }
    }
    return text;
}

void Import(SourceScene& scene) {
    scene.importer = std::make_unique<Assimp::Importer>();
    // The pivot chains of FBX nodes are put together by OverlayFbx.
    scene.importer->SetPropertyBool(AI_CONFIG_IMPORT_FBX_PRESERVE_PIVOTS, false);
    scene.importer->SetPropertyBool(AI_CONFIG_IMPORT_FBX_READ_ANIMATIONS, false);
    scene.library = scene.importer->ReadFile(scene.file.string(), aiProcess_Triangulate);
    if (!scene.library || !scene.library->mRootNode) {
        const std::string reason = OneLine(scene.importer->GetErrorString());
        throw ConvertError(Shown(scene.file) + ": is not a scene that can be read" +
                           (reason.empty() ? "" : ": " + reason));
    }
}

std::string LibraryFormat(const aiScene& library) {
    aiString format;
    const bool known =
        library.mMetaData && library.mMetaData->Get(AI_METADATA_SOURCE_FORMAT, format);
    return known ? format.C_Str() : "";
}

void SetFormat(SourceScene& scene) {
    const std::string format = LibraryFormat(*scene.library);
    scene.format = scene.fbx                    ? Format::Fbx
                   : format == "glTF2 Importer" ? Format::Gltf
                                                : Format::Other;
    if (format == "glTF2 Importer" || format == "glTF Importer" || format == "Collada Importer") {
        scene.unit = {"meters", 1}; // by definition, or made so by the library
    }
    scene.toHost = AxisRotation(0, 90); // y up, which is what the library makes of most formats
}

void RefuseEmpty(const SourceScene& scene) {
    bool anything = false;
    for (const SourceNode& node : scene.nodes) {
        anything = anything || !node.pieces.empty() || node.camera || node.light;
    }
    if (!anything) {
        throw ConvertError(Shown(scene.file) + ": holds no mesh, light or camera");
    }
}

} // namespace

std::vector<std::vector<int>> ChildLists(const std::vector<SourceNode>& nodes) {
    std::vector<std::vector<int>> children(nodes.size());
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        if (nodes[i].parent >= 0) {
            children[static_cast<std::size_t>(nodes[i].parent)].push_back(static_cast<int>(i));
        }
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
        try {
            scene.fbx = std::make_unique<FbxDocument>(bytes);
        } catch (const std::runtime_error& error) {
            throw ConvertError(Shown(file) + ": " + error.what());
        }
        bytes = {};
    }
    Import(scene);
    SetFormat(scene);
    BuildFromLibrary(scene, warnings);
    if (scene.format == Format::Fbx) {
        OverlayFbx(scene, warnings);
    } else if (scene.format == Format::Gltf) {
        OverlayGltf(scene, bytes, warnings);
    }
    LinkTargetsByName(scene);
    RefuseEmpty(scene);
    return scene;
}

} // namespace sceneconv
