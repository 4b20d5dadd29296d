#include "sceneconv/textures.h"

#include <assimp/GltfMaterial.h>
#include <assimp/material.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace sceneconv {

namespace {

/// Placement of a map on its object, in the host's terms.
struct Placement {
    int channel = 1;
    double offset[2] = {0, 0};
    double tiling[2] = {1, 1};
    double angle = 0; ///< radians
    aiTextureMapMode mode[2] = {aiTextureMapMode_Wrap, aiTextureMapMode_Wrap};
};

Json PlacementJson(const Placement& from) {
    Json params = Json::object();
    const auto put = [&](const char* name, double value, double usual) {
        if (std::isfinite(value) && Tidy(value) != usual)
            params[name] = Tidy(value);
    };
    put("U_Offset", from.offset[0], 0);
    put("V_Offset", from.offset[1], 0);
    put("U_Tiling", from.tiling[0], 1);
    put("V_Tiling", from.tiling[1], 1);
    put("W_Angle", from.angle, 0);
    const char* const tile[] = {"U_Tile", "V_Tile"};
    const char* const mirror[] = {"U_Mirror", "V_Mirror"};
    for (int i = 0; i < 2; ++i) {
        if (from.mode[i] != aiTextureMapMode_Wrap)
            params[tile[i]] = false;
        if (from.mode[i] == aiTextureMapMode_Mirror)
            params[mirror[i]] = true;
    }
    if (from.channel != 1)
        params["mapChannel"] = from.channel;
    return params;
}

Json BitmapJson(const std::string& name, const std::string& file, const Placement& placement) {
    Json map = {{"class", "Bitmap"}, {"name", ToUtf8(name)}, {"file", ToUtf8(file)}};
    if (Json params = PlacementJson(placement); !params.empty())
        map["sub_objects"] = {{"uvgen", {{"params", std::move(params)}}}};
    return map;
}

std::string Stem(const std::string& path) {
    const std::string name = FileName(path);
    return name.substr(0, name.rfind('.'));
}

Placement FbxPlacement(const FbxObject& texture) {
    Placement placement;
    const FbxRecord* offset = texture.record.Child("ModelUVTranslation");
    const FbxRecord* tiling = texture.record.Child("ModelUVScaling");
    const FbxProperty* translation = texture.FindOwn("Translation");
    const FbxProperty* scaling = texture.FindOwn("Scaling");
    for (std::size_t i = 0; i < 2; ++i) {
        placement.offset[i] = translation ? translation->Number(i) : offset ? offset->Number(i) : 0;
        placement.tiling[i] = scaling ? scaling->Number(i) : tiling ? tiling->Number(i) : 1;
        if (texture.Integer(i == 0 ? "WrapModeU" : "WrapModeV", 0) == 1)
            placement.mode[i] = aiTextureMapMode_Clamp;
    }
    if (const FbxProperty* rotation = texture.FindOwn("Rotation"))
        placement.angle = rotation->Number(2) * std::numbers::pi / 180;
    if (const FbxProperty* set = texture.FindOwn("UVSet"))
        placement.channel = std::max(HostUvChannel(set->Text()), 1);
    return placement;
}

std::string FileOf(const FbxObject& texture, const char* member, const char* videoMember) {
    const FbxRecord* own = texture.record.Child(member);
    if (own && !own->Text(0).empty())
        return own->Text(0);
    const FbxObject* video = texture.Source("Video");
    const FbxRecord* theirs = video ? video->record.Child(videoMember) : nullptr;
    return theirs ? theirs->Text(0) : std::string();
}

/// The library applies scale, then turn about the centre, then shift; the host shifts before it
/// tiles about the centre.
void SetTransform(Placement& placement, const aiUVTransform& t) {
    const double scale[2] = {t.mScaling.x, t.mScaling.y};
    const double shift[2] = {t.mTranslation.x, t.mTranslation.y};
    for (int i = 0; i < 2; ++i) {
        placement.tiling[i] = scale[i];
        if (scale[i] != 0)
            placement.offset[i] = (0.5 - 0.5 * scale[i] - shift[i]) / scale[i];
    }
    placement.angle = t.mRotation;
}

} // namespace

Json Maps::FromFbx(const FbxObject& texture) {
    const auto [place, isNew] = fbx_.try_emplace(&texture, nullptr);
    if (!isNew)
        return place->second; // also ends a ring of layered textures
    if (texture.kind == "LayeredTexture") {
        const FbxObject* layer = texture.Source("Texture");
        return place->second = layer ? FromFbx(*layer) : Json();
    }
    const std::string file = FileOf(texture, "FileName", "Filename");
    const std::string relative = FileOf(texture, "RelativeFilename", "RelativeFilename");
    if (file.empty() && relative.empty())
        return nullptr;
    const std::string placed = files_.Place(file.empty() ? relative : file, relative);
    const std::string name = texture.name.empty() ? Stem(placed) : texture.name;
    return place->second = Add(name, BitmapJson(name, placed, FbxPlacement(texture)));
}

Json Maps::FromLibrary(const aiMaterial& material, aiTextureType type, unsigned index) {
    aiString path;
    unsigned channel = 0;
    Placement placement;
    if (material.GetTexture(type, index, &path, nullptr, &channel, nullptr, nullptr,
                            placement.mode) != AI_SUCCESS ||
        path.length == 0) {
        return nullptr;
    }
    placement.channel = channel < 98 ? static_cast<int>(channel) + 1 : 1;
    aiUVTransform transform;
    if (material.Get(AI_MATKEY_UVTRANSFORM(type, index), transform) == AI_SUCCESS)
        SetTransform(placement, transform);
    const std::string placed = files_.Place(path.C_Str(), "");
    Json map = BitmapJson(Stem(placed), placed, placement);
    return AddOnce(Stem(placed), std::move(map));
}

Json Maps::NormalMap(const Json& map) {
    if (map.is_null())
        return map;
    const std::string name = map.get<std::string>() + " normal";
    return AddOnce(name,
                   {{"class", "Normal Bump"}, {"name", name}, {"params", {{"normal_map", map}}}});
}

std::string Maps::AddOnce(const std::string& wantedId, Json entry) {
    const auto [place, isNew] = known_.try_emplace(entry.dump());
    if (isNew)
        place->second = Add(wantedId, std::move(entry));
    return place->second;
}

std::string Maps::Add(const std::string& wantedId, Json entry) {
    const std::string id = ids_.Next(ToUtf8(wantedId));
    maps_[id] = std::move(entry);
    return id;
}

} // namespace sceneconv
