// Materials of the import library as the host's Physical Material and glTF Material.
#include "sceneconv/materials.h"

#include <assimp/GltfMaterial.h>

#include <algorithm>
#include <cmath>
#include <span>

namespace sceneconv {

namespace {

/// The value behind one of the library's AI_MATKEY macros, which stand for three arguments.
template <typename T>
std::optional<T> Find(const aiMaterial& from, const char* key, unsigned type, unsigned index) {
    T value{};
    return from.Get(key, type, index, value) == AI_SUCCESS ? std::optional<T>(value) : std::nullopt;
}

std::optional<double> FindNumber(const aiMaterial& from, const char* key, unsigned type,
                                 unsigned index) {
    const auto value = Find<float>(from, key, type, index);
    return value && std::isfinite(*value) ? std::optional<double>(*value) : std::nullopt;
}

Json Rgba(const aiColor4D& c, double alpha) {
    return {Tidy(c.r), Tidy(c.g), Tidy(c.b), Tidy(alpha)};
}

bool IsLit(const std::optional<aiColor4D>& color) {
    return color && (color->r > 0 || color->g > 0 || color->b > 0);
}

/// A slot of the host's material and the textures that may fill it: the first that there is.
struct SlotRow {
    const char* param;
    struct {
        aiTextureType type = aiTextureType_NONE;
        unsigned index = 0;
    } textures[2];
};

constexpr SlotRow physicalSlots[] = {
    {"base_color_map", {{aiTextureType_BASE_COLOR}, {aiTextureType_DIFFUSE}}},
    {"roughness_map", {{aiTextureType_DIFFUSE_ROUGHNESS}}},
    {"metalness_map", {{aiTextureType_METALNESS}}},
    {"refl_color_map", {{aiTextureType_SPECULAR}}},
    {"emit_color_map", {{aiTextureType_EMISSION_COLOR}, {aiTextureType_EMISSIVE}}},
    {"cutout_map", {{aiTextureType_OPACITY}}},
    {"displacement_map", {{aiTextureType_DISPLACEMENT}}},
    {"bump_map", {{aiTextureType_HEIGHT}}},
};
constexpr SlotRow normalSlot = {"bump_map",
                                {{aiTextureType_NORMALS}, {aiTextureType_NORMAL_CAMERA}}};

// Metalness and roughness are one picture, of an unknown type: metalness in blue, roughness in
// green.
constexpr SlotRow gltfSlots[] = {
    {"baseColorMap", {{aiTextureType_BASE_COLOR}, {aiTextureType_DIFFUSE}}},
    {"metalnessMap", {{aiTextureType_METALNESS}, {aiTextureType_UNKNOWN}}},
    {"roughnessMap", {{aiTextureType_DIFFUSE_ROUGHNESS}, {aiTextureType_UNKNOWN}}},
    {"normalMap", {{aiTextureType_NORMALS}}},
    {"ambientOcclusionMap", {{aiTextureType_LIGHTMAP}}},
    {"emissionMap", {{aiTextureType_EMISSIVE}}},
    {"clearcoatMap", {{AI_MATKEY_CLEARCOAT_TEXTURE}}},
    {"clearcoatRoughnessMap", {{AI_MATKEY_CLEARCOAT_ROUGHNESS_TEXTURE}}},
    {"clearcoatNormalMap", {{AI_MATKEY_CLEARCOAT_NORMAL_TEXTURE}}},
    {"sheenColorMap", {{AI_MATKEY_SHEEN_COLOR_TEXTURE}}},
    {"sheenRoughnessMap", {{AI_MATKEY_SHEEN_ROUGHNESS_TEXTURE}}},
    {"transmissionMap", {{AI_MATKEY_TRANSMISSION_TEXTURE}}},
};

Json FirstMap(const aiMaterial& from, const SlotRow& slot, Maps& maps) {
    for (const auto& [type, index] : slot.textures) {
        if (type == aiTextureType_NONE)
            break;
        if (Json map = maps.FromLibrary(from, type, index); !map.is_null())
            return map;
    }
    return nullptr;
}

void PutMaps(Json& params, const aiMaterial& from, std::span<const SlotRow> slots, Maps& maps) {
    for (const SlotRow& slot : slots) {
        if (Json map = FirstMap(from, slot, maps); !map.is_null())
            params[slot.param] = std::move(map);
    }
}

/// From a shading exponent, by the usual relation of Phong and microfacet lobes.
double RoughnessOf(double shininess) {
    return std::clamp(std::sqrt(2 / (std::max(shininess, 0.0) + 2)), 0.0, 1.0);
}

void PutSurface(Json& params, const aiMaterial& from) {
    auto color = Find<aiColor4D>(from, AI_MATKEY_BASE_COLOR);
    color = color ? color : Find<aiColor4D>(from, AI_MATKEY_COLOR_DIFFUSE);
    params["base_color"] = Rgba(color.value_or(aiColor4D(0.5F, 0.5F, 0.5F, 1)), 1);
    if (const auto roughness = FindNumber(from, AI_MATKEY_ROUGHNESS_FACTOR))
        params["roughness"] = Tidy(std::clamp(*roughness, 0.0, 1.0));
    else if (const auto shininess = FindNumber(from, AI_MATKEY_SHININESS))
        params["roughness"] = Tidy(RoughnessOf(*shininess));
    if (const auto metalness = FindNumber(from, AI_MATKEY_METALLIC_FACTOR)) {
        params["metalness"] = Tidy(*metalness);
    } else if (const auto specular = Find<aiColor4D>(from, AI_MATKEY_COLOR_SPECULAR)) {
        params["reflectivity"] =
            Tidy(std::clamp(std::max({specular->r, specular->g, specular->b}), 0.0F, 1.0F));
    }
    const double opacity = FindNumber(from, AI_MATKEY_OPACITY).value_or(1);
    if (opacity < 1)
        params["transparency"] = Tidy(1 - std::max(opacity, 0.0));
    if (const auto ior = FindNumber(from, AI_MATKEY_REFRACTI); ior && *ior > 1 && *ior <= 50)
        params["trans_ior"] = Tidy(*ior);
    if (const auto light = Find<aiColor4D>(from, AI_MATKEY_COLOR_EMISSIVE); IsLit(light)) {
        params["emission"] = 1.0;
        params["emit_color"] = Rgba(*light, 1);
    }
}

void PutExtensions(Json& params, const aiMaterial& from) {
    const auto put = [&](const char* param, const char* key, unsigned type, unsigned index) {
        params[param] = Tidy(FindNumber(from, key, type, index).value_or(0));
    };
    if (const auto coat = FindNumber(from, AI_MATKEY_CLEARCOAT_FACTOR); coat && *coat > 0) {
        params["enableClearCoat"] = true;
        params["clearcoat"] = Tidy(*coat);
        put("clearcoatRoughness", AI_MATKEY_CLEARCOAT_ROUGHNESS_FACTOR);
    }
    if (const auto sheen = Find<aiColor4D>(from, AI_MATKEY_SHEEN_COLOR_FACTOR); IsLit(sheen)) {
        params["enableSheen"] = true;
        params["sheenColor"] = Rgba(*sheen, 1);
        put("sheenRoughness", AI_MATKEY_SHEEN_ROUGHNESS_FACTOR);
    }
    if (const auto through = FindNumber(from, AI_MATKEY_TRANSMISSION_FACTOR);
        through && *through > 0) {
        params["enableTransmission"] = true;
        params["transmission"] = Tidy(*through);
    }
    if (const auto ior = FindNumber(from, AI_MATKEY_REFRACTI); ior && *ior != 1.5 && *ior > 0) {
        params["enableIndexOfRefraction"] = true;
        params["indexOfRefraction"] = Tidy(*ior);
    }
}

} // namespace

Json PhysicalMaterial(const aiMaterial& from, const std::string& name, Maps& maps) {
    Json params = Json::object();
    PutSurface(params, from);
    PutMaps(params, from, physicalSlots, maps);
    if (!params.contains(normalSlot.param)) {
        if (Json normals = maps.NormalMap(FirstMap(from, normalSlot, maps)); !normals.is_null())
            params[normalSlot.param] = std::move(normals);
    }
    return {{"class", "Physical Material"}, {"name", name}, {"params", std::move(params)}};
}

Json GltfMaterial(const aiMaterial& from, const std::string& name, Maps& maps) {
    Json params = Json::object();
    const auto put = [&](const char* param, double fallback, const char* key, unsigned type,
                         unsigned index) {
        params[param] = Tidy(FindNumber(from, key, type, index).value_or(fallback));
    };
    const aiColor4D base =
        Find<aiColor4D>(from, AI_MATKEY_BASE_COLOR).value_or(aiColor4D(1, 1, 1, 1));
    params["baseColor"] = Rgba(base, base.a);
    put("metalness", 1, AI_MATKEY_METALLIC_FACTOR);
    put("roughness", 1, AI_MATKEY_ROUGHNESS_FACTOR);
    const aiColor4D light =
        Find<aiColor4D>(from, AI_MATKEY_COLOR_EMISSIVE).value_or(aiColor4D(0, 0, 0, 1));
    const double strength = FindNumber(from, AI_MATKEY_EMISSIVE_INTENSITY).value_or(1);
    params["emissionColor"] = ColorJson(light.r * strength, light.g * strength, light.b * strength);
    const auto mode = Find<aiString>(from, AI_MATKEY_GLTF_ALPHAMODE);
    params["alphaMode"] = mode == aiString("MASK") ? 2 : mode == aiString("BLEND") ? 3 : 1;
    put("alphaCutoff", 0.5, AI_MATKEY_GLTF_ALPHACUTOFF);
    params["DoubleSided"] = Find<bool>(from, AI_MATKEY_TWOSIDED).value_or(false);
    params["unlit"] = Find<int>(from, AI_MATKEY_SHADING_MODEL) == aiShadingMode_Unlit;
    put("normal", 1, AI_MATKEY_GLTF_TEXTURE_SCALE(aiTextureType_NORMALS, 0));
    put("ambientOcclusion", 1, AI_MATKEY_GLTF_TEXTURE_STRENGTH(aiTextureType_LIGHTMAP, 0));
    PutExtensions(params, from);
    PutMaps(params, from, gltfSlots, maps);
    return {{"class", "glTF Material"}, {"name", name}, {"params", std::move(params)}};
}

} // namespace sceneconv
