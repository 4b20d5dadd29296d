#include "simhost/files/fbx_texture.h"

#include "simhost/files/fbx_guard.h"
#include "simhost/files/fbx_host_params.h"

#include <stdmat.h>

#include <algorithm>
#include <unordered_set>

namespace simhost {

namespace {

using namespace std::string_view_literals;

std::vector<std::string_view> Segments(std::string_view path) {
    std::vector<std::string_view> segments;
    std::size_t start = 0;
    for (std::size_t i = 0; i <= path.size(); ++i) {
        if (i < path.size() && path[i] != '/' && path[i] != '\\')
            continue;
        segments.push_back(path.substr(start, i - start));
        start = i + 1;
    }
    return segments;
}

/// Placement as the host's map holds it: offsets, tiling and turn of the coordinates.
void ReadPlacement(StdUVGen& uv, TimeValue t, FbxProperties& properties,
                   std::array<double, 2>& translation, std::array<double, 2>& scaling) {
    translation = {uv.GetUOffs(t), uv.GetVOffs(t)};
    scaling = {uv.GetUScl(t), uv.GetVScl(t)};
    const int tiling = uv.GetTextureTiling();
    const auto clamp = [](bool repeats) { return repeats ? 0 : 1; };
    properties = {{"UVSet", FbxTypes::text, "UVChannel_" + std::to_string(uv.GetMapChannel())},
                  {"WrapModeU", FbxTypes::enumeration, clamp(tiling & (U_WRAP | U_MIRROR))},
                  {"WrapModeV", FbxTypes::enumeration, clamp(tiling & (V_WRAP | V_MIRROR))},
                  {"Translation", FbxTypes::anyVector, FbxVec3{translation[0], translation[1], 0}},
                  {"Rotation", FbxTypes::anyVector,
                   FbxVec3{uv.GetUAng(t) * fbxDegrees, uv.GetVAng(t) * fbxDegrees,
                           uv.GetWAng(t) * fbxDegrees}},
                  {"Scaling", FbxTypes::anyVector, FbxVec3{scaling[0], scaling[1], 1}}};
}

std::string BitmapFile(BitmapTex& bitmap) {
    const std::string found =
        FbxAsk(std::string(), [&] { return FbxText(bitmap.GetMap().GetFullFilePath().data()); });
    return found.empty() ? FbxAsk(std::string(), [&] { return FbxText(bitmap.GetMapName()); })
                         : found;
}

} // namespace

std::string FbxRelativeName(std::string_view folder, std::string_view file) {
    while (folder.ends_with('/') || folder.ends_with('\\'))
        folder.remove_suffix(1);
    const auto from = Segments(folder);
    const auto to = Segments(file);
    std::size_t common = 0;
    while (common < from.size() && common + 1 < to.size() && from[common] == to[common])
        ++common;
    // A network share's root is server and share, any other the part before the first slash.
    const bool share = to.size() > 1 && to[0].empty() && to[1].empty();
    if (folder.empty() || common < (share ? 4u : 1u))
        return std::string(file);
    std::string name;
    for (std::size_t i = common; i < from.size(); ++i)
        name += "..\\";
    for (std::size_t i = common; i < to.size(); ++i)
        name += (i > common ? "\\" : "") + std::string(to[i]);
    return name;
}

bool FbxTextures::ReadFile(Texmap& map, Entry& entry) const {
    if (auto* bitmap = dynamic_cast<BitmapTex*>(&map)) {
        entry.file = BitmapFile(*bitmap);
        if (StdUVGen* uv = FbxAsk<StdUVGen*>(nullptr, [&] { return bitmap->GetUVGen(); }))
            (void)FbxAsk(0, [&] {
                ReadPlacement(*uv, time_, entry.placement, entry.translation, entry.scaling);
                return 0;
            });
    } else {
        entry.file = CollectFbxHostParams(map, time_)
                         .Text({"filename", "HDRIMapName", "bitmapname", "fileTexture"});
    }
    return !entry.file.empty();
}

std::int64_t FbxTextures::IdOf(Texmap& map) {
    const auto [place, added] = known_.try_emplace(&map, 0);
    if (!added)
        return place->second;
    Entry entry;
    if (!ReadFile(map, entry))
        return 0;
    entry.name = FbxAsk(std::string(), [&] { return FbxText(map.GetName().data()); });
    entry.relativeFile = FbxRelativeName(folder_, entry.file);
    entry.texture = ids_.Next();
    entry.video = ids_.Next();
    entries_.push_back(entry);
    return place->second = entry.texture;
}

std::int64_t FbxTextures::IdBelow(Texmap& map) {
    std::vector<Texmap*> waiting{&map};
    std::unordered_set<Texmap*> seen{&map};
    for (std::size_t i = 0; i < waiting.size(); ++i) {
        if (const std::int64_t id = IdOf(*waiting[i]))
            return id;
        const int count = FbxAsk(0, [&] { return waiting[i]->NumSubTexmaps(); });
        for (int s = 0; s < count; ++s) {
            Texmap* sub = FbxAsk<Texmap*>(nullptr, [&] { return waiting[i]->GetSubTexmap(s); });
            if (sub && seen.insert(sub).second)
                waiting.push_back(sub);
        }
    }
    return 0;
}

void FbxTextures::WriteVideo(FbxRecordWriter& w, const Entry& entry) const {
    w.Begin("Video", entry.video, entry.name + std::string("\0\x01Video"sv), "Clip");
    w.Leaf("Type", "Clip");
    WriteFbxProperties(w, {{"Path", FbxTypes::url, entry.file}});
    w.Leaf("UseMipMap", 0);
    w.Leaf("Filename", entry.file);
    w.Leaf("RelativeFilename", entry.relativeFile);
    w.End();
}

void FbxTextures::WriteTexture(FbxRecordWriter& w, const Entry& entry) const {
    const std::string textureName = entry.name + std::string("\0\x01Texture"sv);
    w.Begin("Texture", entry.texture, textureName, "");
    w.Leaf("Type", "TextureVideoClip");
    w.Leaf("Version", 202);
    w.Leaf("TextureName", textureName);
    FbxProperties properties = entry.placement;
    properties.push_back({"UseMaterial", FbxTypes::boolean, 1});
    WriteFbxProperties(w, properties);
    w.Leaf("Media", entry.name + std::string("\0\x01Video"sv));
    w.Leaf("FileName", entry.file);
    w.Leaf("RelativeFilename", entry.relativeFile);
    w.Leaf("ModelUVTranslation", entry.translation[0], entry.translation[1]);
    w.Leaf("ModelUVScaling", entry.scaling[0], entry.scaling[1]);
    w.Leaf("Texture_Alpha_Source", "None");
    w.Leaf("Cropping", 0, 0, 0, 0);
    w.End();
}

void FbxTextures::Write(FbxRecordWriter& writer, FbxObjectCounts& counts) const {
    for (const Entry& entry : entries_) {
        WriteVideo(writer, entry);
        counts.Add(FbxObjectKind::Video);
    }
    for (const Entry& entry : entries_) {
        WriteTexture(writer, entry);
        counts.Add(FbxObjectKind::Texture);
    }
}

void FbxTextures::WriteConnections(FbxRecordWriter& writer) const {
    for (const Entry& entry : entries_)
        writer.Leaf("C", "OO", entry.video, entry.texture);
}

} // namespace simhost
