// What the import library loses of a glTF file: a camera or light that several nodes share, the
// vertical angle without an aspect, light colours apart from their strength, "no material".
#include "sceneconv/render_size.h"
#include "sceneconv/source_scene.h"

#include <nlohmann/json.hpp>

#include <cmath>
#include <cstdint>
#include <cstring>

namespace sceneconv {

namespace {

using nlohmann::json;

constexpr std::size_t glbHead = 12;
constexpr std::size_t chunkHead = 8;

/// The JSON part of a .gltf or .glb file.
std::string_view JsonPart(std::string_view bytes) {
    if (!bytes.starts_with("glTF") || bytes.size() < glbHead + chunkHead)
        return bytes;
    std::uint32_t size = 0;
    std::memcpy(&size, bytes.data() + glbHead, sizeof size);
    return bytes.substr(glbHead + chunkHead, size);
}

const json& Member(const json& owner, const char* name) {
    static const json none;
    const auto found = owner.is_object() ? owner.find(name) : owner.end();
    return owner.is_object() && found != owner.end() ? *found : none;
}

const json& Element(const json& list, const json& index) {
    static const json none;
    return list.is_array() && index.is_number_unsigned() && index.get<std::size_t>() < list.size()
               ? list[index.get<std::size_t>()]
               : none;
}

double Number(const json& owner, const char* name, double fallback) {
    const json& value = Member(owner, name);
    return value.is_number() ? value.get<double>() : fallback;
}

std::vector<double> Numbers(const json& list, std::size_t count) {
    std::vector<double> numbers;
    for (const json& value : list)
        numbers.push_back(value.is_number() ? value.get<double>() : std::nan(""));
    return numbers.size() == count ? numbers : std::vector<double>();
}

Matrix LocalMatrix(const json& node) {
    if (const auto m = Numbers(Member(node, "matrix"), 16); !m.empty()) {
        return {m[0], m[4], m[8],  m[12], m[1], m[5], m[9],  m[13],
                m[2], m[6], m[10], m[14], m[3], m[7], m[11], m[15]};
    }
    const auto t = Numbers(Member(node, "translation"), 3);
    const auto r = Numbers(Member(node, "rotation"), 4);
    const auto s = Numbers(Member(node, "scale"), 3);
    Matrix m;
    if (!t.empty())
        m = m * Translation({t[0], t[1], t[2]});
    if (!r.empty())
        m = m * FromQuaternion(r[0], r[1], r[2], r[3]);
    return s.empty() ? m : m * Scaling({s[0], s[1], s[2]});
}

std::optional<Camera> ReadCamera(const json& from) {
    Camera camera;
    if (Member(from, "type") == "orthographic") {
        const json& lens = Member(from, "orthographic");
        camera.ortho = true;
        camera.orthoWidth = 2 * Number(lens, "xmag", 1);
        camera.nearClip = Number(lens, "znear", 0);
        camera.farClip = Number(lens, "zfar", 0);
        return camera;
    }
    const json& lens = Member(from, "perspective");
    if (!lens.is_object())
        return std::nullopt;
    // The angle is the vertical one. Without an aspect the picture's own counts.
    const double aspect = Number(lens, "aspectRatio", renderAspect);
    const double vertical = Number(lens, "yfov", 0);
    camera.fov = 2 * std::atan(std::tan(vertical / 2) * (aspect > 0 ? aspect : renderAspect));
    camera.nearClip = Number(lens, "znear", 0);
    camera.farClip = Number(lens, "zfar", 0);
    return camera;
}

std::optional<Light> ReadLight(const json& from) {
    if (!from.is_object())
        return std::nullopt;
    Light light;
    const json& type = Member(from, "type");
    light.kind = type == "spot"          ? LightKind::Spot
                 : type == "directional" ? LightKind::Directional
                                         : LightKind::Point;
    light.unit = light.kind == LightKind::Directional ? LightUnit::Lux : LightUnit::Candela;
    light.intensity = Number(from, "intensity", 1);
    if (const auto c = Numbers(Member(from, "color"), 3); !c.empty())
        light.color = {c[0], c[1], c[2]};
    constexpr double quarterTurn = 0.78539816339744831;
    light.outerCone = Number(Member(from, "spot"), "outerConeAngle", quarterTurn);
    return light;
}

std::string UserProperties(const json& extras) {
    std::string lines;
    if (!extras.is_object())
        return lines;
    for (const auto& [key, value] : extras.items()) {
        if (value.is_primitive() && !value.is_null()) {
            lines += (lines.empty() ? "" : "\r\n") + key + " = " +
                     (value.is_string() ? value.get<std::string>() : value.dump());
        }
    }
    return lines;
}

class GltfOverlay {
  public:
    GltfOverlay(SourceScene& scene, const json& file)
        : scene_(scene), file_(file), children_(ChildLists(scene.nodes)),
          lights_(Member(Member(Member(file, "extensions"), "KHR_lights_punctual"), "lights")) {}

    /// False when the library's tree is not the file's, as far as it was looked at.
    bool Apply() {
        const json& scenes = Member(file_, "scenes");
        const json first = 0U;
        const json& chosen = Member(file_, "scene");
        const json& roots =
            Member(Element(scenes, chosen.is_number_unsigned() ? chosen : first), "nodes");
        scene_.dropRoot = roots.size() != 1;
        if (!scene_.dropRoot)
            return Apply(0, roots[0]);
        return ApplyList(0, roots);
    }

  private:
    bool ApplyList(int parent, const json& list) {
        std::vector<std::pair<int, json>> open;
        if (!Push(open, parent, list))
            return false;
        while (!open.empty()) {
            const auto [index, id] = open.back();
            open.pop_back();
            const json& node = Element(Member(file_, "nodes"), id);
            Fill(scene_.nodes[static_cast<std::size_t>(index)], node);
            if (!Push(open, index, Member(node, "children")))
                return false;
        }
        return true;
    }

    bool Apply(int index, const json& id) {
        const json& node = Element(Member(file_, "nodes"), id);
        Fill(scene_.nodes[static_cast<std::size_t>(index)], node);
        return ApplyList(index, Member(node, "children"));
    }

    bool Push(std::vector<std::pair<int, json>>& open, int parent, const json& list) {
        const std::vector<int>& children = children_[static_cast<std::size_t>(parent)];
        const std::size_t count = list.is_array() ? list.size() : 0;
        if (children.size() != count)
            return false;
        for (std::size_t i = 0; i < count; ++i)
            open.emplace_back(children[i], list[i]);
        return true;
    }

    void Fill(SourceNode& node, const json& from) {
        if (!from.is_object())
            return;
        const json& name = Member(from, "name");
        if (name.is_string() && !name.get_ref<const std::string&>().empty())
            node.name = name.get<std::string>();
        if (const Matrix local = LocalMatrix(from); IsFinite(local))
            node.local = local;
        const json& camera = Member(from, "camera");
        node.camera = ReadCamera(Element(Member(file_, "cameras"), camera));
        if (node.camera)
            node.camera->source = camera.get<std::int64_t>();
        const json& light =
            Member(Member(Member(from, "extensions"), "KHR_lights_punctual"), "light");
        node.light = ReadLight(Element(lights_, light));
        if (node.light)
            node.light->source = light.get<std::int64_t>();
        node.userProperties = UserProperties(Member(from, "extras"));
    }

    SourceScene& scene_;
    const json& file_;
    std::vector<std::vector<int>> children_;
    const json& lights_;
};

} // namespace

void OverlayGltf(SourceScene& scene, std::string_view bytes, Warnings& warnings) {
    const json file = json::parse(JsonPart(bytes), nullptr, false);
    if (!file.is_object() || !GltfOverlay(scene, file).Apply()) {
        warnings.Add("the node tree could not be compared with the file's; "
                     "shared cameras and lights may be missing");
    }
    // Behind the file's own materials the library adds one for meshes that have none.
    const json& materials = Member(file, "materials");
    const std::size_t count = materials.is_array() ? materials.size() : 0;
    for (SourceNode& node : scene.nodes) {
        for (MaterialSource& material : node.materials) {
            if (material.importedIndex >= static_cast<int>(count))
                material.importedIndex = -1;
        }
    }
}

} // namespace sceneconv
