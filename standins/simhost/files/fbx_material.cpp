#include "simhost/files/fbx_material.h"

#include "simhost/files/fbx_guard.h"
#include "simhost/files/fbx_host_params.h"

#include <algorithm>
#include <cmath>

namespace simhost {

namespace {

using namespace std::string_view_literals;

// Multi-materials within multi-materials; deeper ones are a circle.
constexpr int deepestMulti = 64;

/// The plain properties. Spellings of the same quantity in the materials of the host and of the
/// renderers for it; the first that a material has is taken.
FbxProperties PlainProperties(const FbxHostParams& params) {
    const FbxVec3 white{1, 1, 1};
    const FbxVec3 diffuse = params.Colour(
        {"base_color", "baseColor", "diffuse", "colorDiffuse", "diffuseColor", "color"},
        {0.5, 0.5, 0.5});
    const double glow = params.Number({"emission", "selfIllumLevel", "levelSelfIllum",
                                       "selfIllumAmount", "selfIllumination_multiplier"},
                                      0);
    const double transparency =
        params.Number({"transparency", "refractionAmount", "levelRefract"}, 0);
    return {
        {"ShadingModel", FbxTypes::text, std::string("unknown")},
        {"AmbientColor", FbxTypes::color, diffuse},
        {"DiffuseColor", FbxTypes::color, diffuse},
        {"SpecularColor", FbxTypes::color,
         params.Colour({"refl_color", "specular", "reflection", "colorReflect"}, white)},
        {"SpecularFactor", FbxTypes::real, 0.0},
        {"ShininessExponent", FbxTypes::real, 1.0},
        {"TransparencyFactor", FbxTypes::real, transparency},
        {"EmissiveColor", FbxTypes::color,
         params.Colour({"emit_color", "selfIllumColor", "colorSelfIllum", "selfIllumination"},
                       {0, 0, 0})},
        {"EmissiveFactor", FbxTypes::real, glow},
    };
}

/// Plain properties that a texture can stand for.
Texmap* DiffuseMap(const FbxHostParams& params) {
    return params.Texture({"base_color_map", "baseTexmap", "texmapDiffuse", "texmap_diffuse",
                           "baseColorMap", "diffuseMap", "maps|1"});
}

Texmap* BumpMap(const FbxHostParams& params) {
    return params.Texture({"bump_map", "baseBumpTexmap", "texmapBump", "texmap_bump", "maps|8"});
}

} // namespace

Mtl* FbxFaceMaterial(Mtl* mtl, MtlID id) {
    for (int depth = 0; mtl && depth < deepestMulti; ++depth) {
        if (!FbxAsk(FALSE, [&] { return mtl->IsMultiMtl(); }))
            return mtl;
        const int count = FbxAsk(0, [&] { return mtl->NumSubMtls(); });
        if (count <= 0)
            return nullptr;
        mtl = FbxAsk<Mtl*>(nullptr, [&] { return mtl->GetSubMtl(id % count); });
    }
    return nullptr;
}

std::int64_t FbxMaterials::IdOf(Mtl& mtl) {
    const auto [place, added] = known_.try_emplace(&mtl, 0);
    if (added) {
        place->second = ids_.Next();
        order_.push_back(&mtl);
    }
    return place->second;
}

void FbxMaterials::WriteOne(FbxRecordWriter& w, Mtl& mtl, std::int64_t id) {
    const FbxHostParams params = CollectFbxHostParams(mtl, time_);
    const std::string name = FbxAsk(std::string(), [&] { return FbxText(mtl.GetName().data()); });
    w.Begin("Material", id, name + std::string("\0\x01Material"sv), "");
    w.Leaf("Version", 102);
    w.Leaf("ShadingModel", "unknown");
    w.Leaf("MultiLayer", 0);
    FbxProperties properties = PlainProperties(params);
    properties.insert(properties.end(), params.properties.begin(), params.properties.end());
    WriteFbxProperties(w, properties);
    w.End();

    for (const FbxHostLink<Texmap>& link : params.textures)
        if (const std::int64_t texture = textures_.IdOf(*link.target))
            links_.push_back({texture, id, link.property});
    if (Texmap* map = DiffuseMap(params))
        if (const std::int64_t texture = textures_.IdBelow(*map))
            links_.push_back({texture, id, "DiffuseColor"});
    if (Texmap* map = BumpMap(params))
        if (const std::int64_t texture = textures_.IdBelow(*map))
            links_.push_back({texture, id, "Bump"});
    for (const FbxHostLink<Mtl>& link : params.materials)
        links_.push_back({IdOf(*link.target), id, link.property});
}

void FbxMaterials::Write(FbxRecordWriter& writer, FbxObjectCounts& counts) {
    for (std::size_t i = 0; i < order_.size(); ++i) { // grows on the way
        WriteOne(writer, *order_[i], known_[order_[i]]);
        counts.Add(FbxObjectKind::Material);
    }
}

void FbxMaterials::WriteConnections(FbxRecordWriter& writer) const {
    for (const Link& link : links_)
        writer.Leaf("C", "OP", link.from, link.to, link.property);
}

} // namespace simhost
