// What the import library loses of a glTF file: a camera or light that several nodes share, the
// vertical angle without an aspect, light colours apart from their strength, "no material".
#include "sceneconv/render_size.h"
#include "sceneconv/source_scene.h"

#include <assimp/quaternion.h>
#include <nlohmann/json.hpp>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <numbers>

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

const json none;

const json& Member(const json& owner, const char* name) {
    const auto found = owner.find(name); // the end, where the owner is no object
    return found == owner.end() ? none : *found;
}

const json& Element(const json& list, const json& index) {
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

Matrix RotationMatrix(const std::vector<double>& q) {
    const double length =
        q.empty() ? 0 : std::sqrt(q[0] * q[0] + q[1] * q[1] + q[2] * q[2] + q[3] * q[3]);
    if (!(length > 0))
        return {};
    const aiQuaterniont<double> turn(q[3] / length, q[0] / length, q[1] / length, q[2] / length);
    return Matrix(turn.GetMatrix());
}

Matrix LocalMatrix(const json& node) {
    if (const auto m = Numbers(Member(node, "matrix"), 16); !m.empty()) {
        return {m[0], m[4], m[8],  m[12], m[1], m[5], m[9],  m[13],
                m[2], m[6], m[10], m[14], m[3], m[7], m[11], m[15]};
    }
    const auto vector = [&](const char* name, double usual) {
        const auto v = Numbers(Member(node, name), 3);
        return v.empty() ? Vector(usual) : Vector(v[0], v[1], v[2]);
    };
    return Translation(vector("translation", 0)) *
           RotationMatrix(Numbers(Member(node, "rotation"), 4)) * Scaling(vector("scale", 1));
}

std::optional<Camera> ReadCamera(const json& from) {
    Camera camera;
    camera.ortho = Member(from, "type") == "orthographic";
    const json& lens = Member(from, camera.ortho ? "orthographic" : "perspective");
    camera.nearClip = Number(lens, "znear", 0);
    camera.farClip = Number(lens, "zfar", 0);
    if (camera.ortho) {
        camera.orthoWidth = 2 * Number(lens, "xmag", 1);
        return camera;
    }
    if (!lens.is_object())
        return std::nullopt;
    // The angle is the vertical one. Without an aspect the picture's own counts.
    const double aspect = Number(lens, "aspectRatio", renderAspect);
    const double vertical = Number(lens, "yfov", 0);
    camera.fov = 2 * std::atan(std::tan(vertical / 2) * (aspect > 0 ? aspect : renderAspect));
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
    light.outerCone = Number(Member(from, "spot"), "outerConeAngle", std::numbers::pi / 4);
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
        : scene_(scene), file_(file), children_(ChildLists(scene.nodes)) {}

    /// False when the library's tree is not the file's, as far as it was looked at.
    bool Apply() {
        const json first = 0U;
        const json& chosen = Member(file_, "scene");
        const json& scene =
            Element(Member(file_, "scenes"), chosen.is_number_unsigned() ? chosen : first);
        const json& roots = Member(scene, "nodes");
        scene_.dropRoot = roots.size() != 1;
        if (!scene_.dropRoot)
            open_ = {{0, &roots[0]}};
        else if (!OpenChildren(0, roots))
            return false;
        while (!open_.empty()) {
            const auto [index, id] = open_.back();
            open_.pop_back();
            const json& node = Element(Member(file_, "nodes"), *id);
            Fill(scene_.nodes[index], node);
            if (!OpenChildren(index, Member(node, "children")))
                return false;
        }
        return true;
    }

  private:
    bool OpenChildren(std::size_t parent, const json& list) {
        const std::vector<std::size_t>& children = children_[parent];
        if (children.size() != (list.is_array() ? list.size() : 0))
            return false;
        for (std::size_t i = 0; i < children.size(); ++i)
            open_.emplace_back(children[i], &list[i]);
        return true;
    }

    static const json& LightsExtension(const json& owner) {
        return Member(Member(owner, "extensions"), "KHR_lights_punctual");
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
        const json& light = Member(LightsExtension(from), "light");
        node.light = ReadLight(Element(Member(LightsExtension(file_), "lights"), light));
        if (node.light)
            node.light->source = light.get<std::int64_t>();
        node.userProperties = UserProperties(Member(from, "extras"));
    }

    SourceScene& scene_;
    const json& file_;
    std::vector<std::vector<std::size_t>> children_;
    std::vector<std::pair<std::size_t, const json*>> open_; ///< nodes to fill and their ids
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
