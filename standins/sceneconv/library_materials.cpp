// Materials of the import library as the host's Physical Material and glTF Material.
#include "sceneconv/materials.h"

#include <assimp/GltfMaterial.h>

#include <algorithm>
#include <cmath>

namespace sceneconv {

namespace {

class Reader {
  public:
    explicit Reader(const aiMaterial& from) : from_(from) {}

    [[nodiscard]] std::optional<double> Number(const char* key, unsigned type,
                                               unsigned index) const {
        float value = 0;
        return from_.Get(key, type, index, value) == AI_SUCCESS && std::isfinite(value)
                   ? std::optional<double>(value)
                   : std::nullopt;
    }

    [[nodiscard]] std::optional<aiColor4D> Color(const char* key, unsigned type,
                                                 unsigned index) const {
        aiColor4D value;
        return from_.Get(key, type, index, value) == AI_SUCCESS ? std::optional<aiColor4D>(value)
                                                                : std::nullopt;
    }

    [[nodiscard]] bool Flag(const char* key, unsigned type, unsigned index) const {
        bool value = false;
        return from_.Get(key, type, index, value) == AI_SUCCESS && value;
    }

  private:
    const aiMaterial& from_;
};

Json Rgba(const aiColor4D& c, double alpha) {
    return {Tidy(c.r), Tidy(c.g), Tidy(c.b), Tidy(alpha)};
}

bool IsLit(const std::optional<aiColor4D>& color) {
    return color && (color->r > 0 || color->g > 0 || color->b > 0);
}

void PutMap(Json& params, const char* name, const Json& map) {
    if (!map.is_null())
        params[name] = map;
}

/// The first of several textures that serve one purpose.
Json FirstMap(const aiMaterial& from, Maps& maps, std::initializer_list<aiTextureType> types) {
    for (const aiTextureType type : types) {
        if (Json map = maps.FromLibrary(from, type); !map.is_null())
            return map;
    }
    return nullptr;
}

/// From a shading exponent, by the usual relation of Phong and microfacet lobes.
double RoughnessOf(double shininess) {
    return std::clamp(std::sqrt(2 / (std::max(shininess, 0.0) + 2)), 0.0, 1.0);
}

void PutSurface(Json& params, const Reader& read) {
    std::optional<aiColor4D> color = read.Color(AI_MATKEY_BASE_COLOR);
    color = color ? color : read.Color(AI_MATKEY_COLOR_DIFFUSE);
    params["base_color"] = Rgba(color.value_or(aiColor4D(0.5F, 0.5F, 0.5F, 1)), 1);
    if (const auto roughness = read.Number(AI_MATKEY_ROUGHNESS_FACTOR))
        params["roughness"] = Tidy(std::clamp(*roughness, 0.0, 1.0));
    else if (const auto shininess = read.Number(AI_MATKEY_SHININESS))
        params["roughness"] = Tidy(RoughnessOf(*shininess));
    if (const auto metalness = read.Number(AI_MATKEY_METALLIC_FACTOR)) {
        params["metalness"] = Tidy(*metalness);
    } else if (const auto specular = read.Color(AI_MATKEY_COLOR_SPECULAR)) {
        params["reflectivity"] =
            Tidy(std::clamp(std::max({specular->r, specular->g, specular->b}), 0.0F, 1.0F));
    }
    const double opacity = read.Number(AI_MATKEY_OPACITY).value_or(1);
    if (opacity < 1)
        params["transparency"] = Tidy(1 - std::max(opacity, 0.0));
    if (const auto ior = read.Number(AI_MATKEY_REFRACTI); ior && *ior > 1 && *ior <= 50)
        params["trans_ior"] = Tidy(*ior);
    if (const auto light = read.Color(AI_MATKEY_COLOR_EMISSIVE); IsLit(light)) {
        params["emission"] = 1.0;
        params["emit_color"] = Rgba(*light, 1);
    }
}

void PutExtensions(Json& params, const Reader& read) {
    if (const auto coat = read.Number(AI_MATKEY_CLEARCOAT_FACTOR); coat && *coat > 0) {
        params["enableClearCoat"] = true;
        params["clearcoat"] = Tidy(*coat);
        params["clearcoatRoughness"] =
            Tidy(read.Number(AI_MATKEY_CLEARCOAT_ROUGHNESS_FACTOR).value_or(0));
    }
    if (const auto sheen = read.Color(AI_MATKEY_SHEEN_COLOR_FACTOR); IsLit(sheen)) {
        params["enableSheen"] = true;
        params["sheenColor"] = Rgba(*sheen, 1);
        params["sheenRoughness"] = Tidy(read.Number(AI_MATKEY_SHEEN_ROUGHNESS_FACTOR).value_or(0));
    }
    if (const auto through = read.Number(AI_MATKEY_TRANSMISSION_FACTOR); through && *through > 0) {
        params["enableTransmission"] = true;
        params["transmission"] = Tidy(*through);
    }
    if (const auto ior = read.Number(AI_MATKEY_REFRACTI); ior && *ior != 1.5 && *ior > 0) {
        params["enableIndexOfRefraction"] = true;
        params["indexOfRefraction"] = Tidy(*ior);
    }
}

} // namespace

Json PhysicalMaterial(const aiMaterial& from, const std::string& name, Maps& maps) {
    Json params = Json::object();
    PutSurface(params, Reader(from));
    PutMap(params, "base_color_map",
           FirstMap(from, maps, {aiTextureType_BASE_COLOR, aiTextureType_DIFFUSE}));
    PutMap(params, "roughness_map", FirstMap(from, maps, {aiTextureType_DIFFUSE_ROUGHNESS}));
    PutMap(params, "metalness_map", FirstMap(from, maps, {aiTextureType_METALNESS}));
    PutMap(params, "refl_color_map", FirstMap(from, maps, {aiTextureType_SPECULAR}));
    PutMap(params, "emit_color_map",
           FirstMap(from, maps, {aiTextureType_EMISSION_COLOR, aiTextureType_EMISSIVE}));
    PutMap(params, "cutout_map", FirstMap(from, maps, {aiTextureType_OPACITY}));
    PutMap(params, "displacement_map", FirstMap(from, maps, {aiTextureType_DISPLACEMENT}));
    Json bump = FirstMap(from, maps, {aiTextureType_HEIGHT});
    if (bump.is_null()) {
        bump = maps.NormalMap(
            FirstMap(from, maps, {aiTextureType_NORMALS, aiTextureType_NORMAL_CAMERA}), 1);
    }
    PutMap(params, "bump_map", bump);
    return {{"class", "Physical Material"}, {"name", name}, {"params", std::move(params)}};
}

Json GltfMaterial(const aiMaterial& from, const std::string& name, Maps& maps) {
    const Reader read(from);
    Json params = Json::object();
    const aiColor4D base = read.Color(AI_MATKEY_BASE_COLOR).value_or(aiColor4D(1, 1, 1, 1));
    params["baseColor"] = Rgba(base, base.a);
    params["metalness"] = Tidy(read.Number(AI_MATKEY_METALLIC_FACTOR).value_or(1));
    params["roughness"] = Tidy(read.Number(AI_MATKEY_ROUGHNESS_FACTOR).value_or(1));
    const aiColor4D light = read.Color(AI_MATKEY_COLOR_EMISSIVE).value_or(aiColor4D(0, 0, 0, 1));
    const double strength = read.Number(AI_MATKEY_EMISSIVE_INTENSITY).value_or(1);
    params["emissionColor"] = ColorJson(light.r * strength, light.g * strength, light.b * strength);
    aiString mode;
    (void)from.Get(AI_MATKEY_GLTF_ALPHAMODE, mode);
    const std::string alpha = mode.C_Str();
    params["alphaMode"] = alpha == "MASK" ? 2 : alpha == "BLEND" ? 3 : 1; // 1 is opaque
    params["alphaCutoff"] = Tidy(read.Number(AI_MATKEY_GLTF_ALPHACUTOFF).value_or(0.5));
    params["DoubleSided"] = read.Flag(AI_MATKEY_TWOSIDED);
    int shading = 0;
    params["unlit"] =
        from.Get(AI_MATKEY_SHADING_MODEL, shading) == AI_SUCCESS && shading == aiShadingMode_Unlit;
    params["normal"] =
        Tidy(read.Number(AI_MATKEY_GLTF_TEXTURE_SCALE(aiTextureType_NORMALS, 0)).value_or(1));
    params["ambientOcclusion"] =
        Tidy(read.Number(AI_MATKEY_GLTF_TEXTURE_STRENGTH(aiTextureType_LIGHTMAP, 0)).value_or(1));
    PutExtensions(params, read);
    PutMap(params, "baseColorMap",
           FirstMap(from, maps, {aiTextureType_BASE_COLOR, aiTextureType_DIFFUSE}));
    // One picture: metalness in blue, roughness in green.
    PutMap(params, "metalnessMap",
           FirstMap(from, maps, {aiTextureType_METALNESS, aiTextureType_UNKNOWN}));
    PutMap(params, "roughnessMap",
           FirstMap(from, maps, {aiTextureType_DIFFUSE_ROUGHNESS, aiTextureType_UNKNOWN}));
    PutMap(params, "normalMap", FirstMap(from, maps, {aiTextureType_NORMALS}));
    PutMap(params, "ambientOcclusionMap", FirstMap(from, maps, {aiTextureType_LIGHTMAP}));
    PutMap(params, "emissionMap", FirstMap(from, maps, {aiTextureType_EMISSIVE}));
    PutMap(params, "clearcoatMap", maps.FromLibrary(from, AI_MATKEY_CLEARCOAT_TEXTURE));
    PutMap(params, "clearcoatRoughnessMap",
           maps.FromLibrary(from, AI_MATKEY_CLEARCOAT_ROUGHNESS_TEXTURE));
    PutMap(params, "clearcoatNormalMap",
           maps.FromLibrary(from, AI_MATKEY_CLEARCOAT_NORMAL_TEXTURE));
    PutMap(params, "sheenColorMap", maps.FromLibrary(from, AI_MATKEY_SHEEN_COLOR_TEXTURE));
    PutMap(params, "sheenRoughnessMap", maps.FromLibrary(from, AI_MATKEY_SHEEN_ROUGHNESS_TEXTURE));
    PutMap(params, "transmissionMap", maps.FromLibrary(from, AI_MATKEY_TRANSMISSION_TEXTURE));
    return {{"class", "glTF Material"}, {"name", name}, {"params", std::move(params)}};
}

} // namespace sceneconv
