#include "sceneconv/textures.h"

#include <algorithm>
#include <charconv>
#include <fstream>

#include <strings.h>

namespace sceneconv {

namespace fs = std::filesystem;

namespace {

std::string ForwardSlashes(std::string path) {
    std::replace(path.begin(), path.end(), '\\', '/');
    return path;
}

std::string PercentDecoded(const std::string& text) {
    std::string decoded;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char* digits = text.data() + i + 1;
        unsigned char byte = 0;
        if (text[i] == '%' && i + 2 < text.size() &&
            std::from_chars(digits, digits + 2, byte, 16).ptr == digits + 2) {
            decoded += static_cast<char>(byte);
            i += 2;
        } else {
            decoded += text[i];
        }
    }
    return decoded;
}

/// The file as the host's file system would find it: letter case does not count.
fs::path FindFile(const fs::path& path) {
    std::error_code error;
    if (fs::is_regular_file(path, error))
        return path;
    const std::string name = path.filename().string();
    for (const fs::directory_entry& entry : fs::directory_iterator(path.parent_path(), error)) {
        if (strcasecmp(entry.path().filename().c_str(), name.c_str()) == 0 &&
            entry.is_regular_file(error)) {
            return entry.path();
        }
    }
    return {};
}

/// A file name without anything that could lead out of a folder or offend a file system.
std::string SafeName(const std::string& stored, const aiTexture& texture, std::size_t number) {
    std::string name = FileName(stored);
    if (name.empty() || name[0] == '*')
        name = FileName(texture.mFilename.C_Str());
    name = PortableFileName(name);
    if (name.find_first_not_of('.') == std::string::npos)
        name = "texture_" + std::to_string(number);
    if (fs::path(name).extension().empty()) {
        const std::string hint = texture.mHeight == 0 ? texture.achFormatHint : "tga";
        name += "." + (hint.empty() ? "bin" : hint);
    }
    return name;
}

/// An uncompressed picture as a 32-bit TGA file.
void WritePixels(std::ostream& out, const aiTexture& texture) {
    const std::uint16_t size[] = {static_cast<std::uint16_t>(texture.mWidth),
                                  static_cast<std::uint16_t>(texture.mHeight)};
    out.write("\0\0\2\0\0\0\0\0\0\0\0\0", 12); // true colour without a palette
    out.write(reinterpret_cast<const char*>(size), sizeof size);
    out << '\x20' << '\x28'; // 32 bits, 8 of them alpha; the first row is on top
    out.write(reinterpret_cast<const char*>(texture.pcData), // b, g, r, a bytes
              static_cast<std::streamsize>(texture.mWidth) * texture.mHeight * 4);
}

} // namespace

std::string FileName(const std::string& path) {
    return path.substr(path.find_last_of("/\\") + 1); // npos + 1 is 0
}

std::string TextureFiles::Place(const std::string& stored, const std::string& relative) {
    const auto [place, isNew] = placed_.try_emplace({stored, relative});
    if (isNew)
        place->second = PlaceNew(stored, relative);
    return place->second;
}

std::string TextureFiles::PlaceNew(const std::string& stored, const std::string& relative) {
    const std::string decoded = scene_.format == Format::Gltf ? PercentDecoded(stored) : stored;
    for (const std::string& path : {relative, stored, decoded, FileName(decoded)}) {
        if (FindOnDisk(path))
            return path == decoded ? decoded : stored;
    }
    for (const std::string& name : {stored, relative}) {
        const aiTexture* embedded =
            name.empty() ? nullptr : scene_.imported->GetEmbeddedTexture(name.c_str());
        if (embedded)
            return WriteEmbedded(*embedded, stored);
    }
    warnings_.Add("texture not found: " + stored);
    return decoded;
}

bool TextureFiles::FindOnDisk(const std::string& path) {
    if (path.empty() || path[0] == '*')
        return false;
    const fs::path wanted = fs::path(ForwardSlashes(path));
    const fs::path found =
        FindFile(wanted.is_absolute() ? wanted : scene_.file.parent_path() / wanted);
    if (!found.empty())
        folders_.insert(fs::absolute(found).lexically_normal().parent_path());
    return !found.empty();
}

std::string TextureFiles::WriteEmbedded(const aiTexture& texture, const std::string& stored) {
    const fs::path folder =
        fs::absolute(output_).parent_path() / (output_.stem().string() + "_textures");
    std::string name = SafeName(stored, texture, written_.size() + 1);
    while (!written_.insert(name).second)
        name = std::to_string(written_.size() + 1) + "_" + name;
    std::error_code error;
    fs::create_directories(folder, error);
    std::ofstream out(folder / name, std::ios::binary | std::ios::trunc);
    if (texture.mHeight == 0)
        out.write(reinterpret_cast<const char*>(texture.pcData), texture.mWidth);
    else
        WritePixels(out, texture);
    if (!out.flush())
        throw ConvertError(folder / name, "cannot be written");
    folders_.insert(folder.lexically_normal());
    return FileName(stored) == name ? stored : folder.filename().string() + "/" + name;
}

Json TextureFiles::MapPaths() const {
    Json paths = Json::array();
    const fs::path base = fs::absolute(output_).lexically_normal().parent_path();
    for (const fs::path& folder : folders_) {
        const fs::path relative = folder.lexically_relative(base);
        paths.push_back(ToUtf8((relative.empty() ? folder : relative).generic_string()));
    }
    return paths;
}

} // namespace sceneconv
