#include "sceneconv/scene_nodes.h"

#include "sceneconv/light_camera.h"
#include "sceneconv/mesh_data.h"

namespace sceneconv {

namespace {

/// The frame of what the node is for the host; a node that also has a mesh stays as it is.
Matrix HostFrame(const SourceNode& node) {
    if (!node.pieces.empty())
        return {};
    return node.camera ? node.camera->frame : node.light ? node.light->frame : Matrix();
}

std::string NameOf(const SourceNode& node, const SourceScene& scene) {
    const std::string name = ToUtf8(node.name);
    return name.empty() ? ToUtf8(scene.file.stem().string()) : name;
}

} // namespace

Json Objects::AddMesh(const std::string& name, Json mesh) {
    Json object = {{"class", "Editable Mesh"}, {"mesh", std::move(mesh)}};
    std::vector<std::string>& equals = meshes_[std::hash<Json>()(object)];
    return AddOnce(name, std::move(object), equals);
}

Json Objects::Add(const std::string& name, Json object, std::int64_t source) {
    std::vector<std::string> none;
    return AddOnce(name, std::move(object), source < 0 ? none : bySource_[source]);
}

std::string Objects::AddOnce(const std::string& name, Json object,
                             std::vector<std::string>& candidates) {
    for (const std::string& id : candidates) {
        if (objects_[id] == object)
            return id;
    }
    const std::string id = ids_.Next(name);
    objects_[id] = std::move(object);
    candidates.push_back(id);
    return id;
}

Nodes::Nodes(const SourceScene& scene, Objects& objects, Materials& materials, Warnings& warnings)
    : scene_(scene), objects_(objects), materials_(materials), warnings_(warnings) {}

Json Nodes::Write() {
    Place();
    Json list = Json::array();
    for (std::size_t i = 0; i < scene_.nodes.size(); ++i) {
        if (!IsDropped(i)) {
            Json node = WriteNode(i);
            Json extra = Json::array();
            AddObjects(node, i, extra);
            list.push_back(std::move(node));
            for (Json& more : extra)
                list.push_back(std::move(more));
        }
    }
    return list;
}

void Nodes::Place() {
    for (const SourceNode& node : scene_.nodes) {
        if (node.target)
            targets_.insert(*node.target);
        Placed place;
        place.frame = HostFrame(node);
        place.world = node.local * place.frame;
        if (node.parent) {
            const Placed& parent = placed_[*node.parent];
            place.world = parent.world * InverseOrIdentity(parent.frame) * node.local * place.frame;
        }
        if (!IsDropped(placed_.size())) {
            place.id = ids_.Next(NameOf(node, scene_));
            ++names_[NameOf(node, scene_)];
        }
        placed_.push_back(std::move(place));
    }
}

Json Nodes::LocalTransform(std::size_t index) const {
    const SourceNode& node = scene_.nodes[index];
    const Matrix& frame = placed_[index].frame;
    if (!IsTop(node))
        return TransformJson(InverseOrIdentity(placed_[*node.parent].frame) * node.local * frame);
    const Matrix above = node.parent ? scene_.nodes.front().local : Matrix();
    return TransformJson(scene_.toHost * above * node.local * frame);
}

Json Nodes::WriteNode(std::size_t index) {
    const SourceNode& from = scene_.nodes[index];
    Json node;
    node["name"] = NameOf(from, scene_);
    // Left out, the id is the name, which only works for a name of one node.
    if (placed_[index].id != node["name"] || names_[placed_[index].id] > 1)
        node["id"] = placed_[index].id;
    if (!IsTop(from))
        node["parent"] = placed_[*from.parent].id;
    node["transform"] = LocalTransform(index);
    if (!from.pieces.empty() && !from.objectOffset.Equal(Matrix(), 1e-12))
        node["object_offset"] = TransformJson(from.objectOffset);
    if (from.hidden)
        node["hidden"] = true;
    if (!from.userProperties.empty())
        node["user_props"] = ToUtf8(from.userProperties);
    if (from.wireColor)
        node["wire_color"] = *from.wireColor;
    return node;
}

double Nodes::TargetDistance(std::size_t index) const {
    const std::optional<std::size_t> target = scene_.nodes[index].target;
    return target ? (Position(placed_[*target].world) - Position(placed_[index].world)).Length()
                  : 0;
}

void Nodes::AddObjects(Json& node, std::size_t index, Json& extra) {
    const SourceNode& from = scene_.nodes[index];
    const std::string name = NameOf(from, scene_);
    const Reference reference = [this](const FbxObject& o) { return materials_.OfFbx(o); };
    if (!from.pieces.empty()) {
        if (Json mesh = MeshJson(from, *scene_.imported, warnings_); !mesh.is_null()) {
            node["object"] = objects_.AddMesh(name, std::move(mesh));
            node["material"] = materials_.OfNode(from);
        }
    }
    const auto place = [&](Json object, const char* what, const NodeAttribute& held) {
        Json* holder = &node;
        if (node.contains("object")) { // the host has one object a node
            extra.push_back({{"name", name + what}, {"parent", placed_[index].id}});
            holder = &extra.back();
            (*holder)["transform"] = TransformJson(held.frame);
        }
        (*holder)["object"] = objects_.Add(name, std::move(object), held.source);
        if (from.target)
            (*holder)["target"] = placed_[*from.target].id;
    };
    if (from.camera) {
        place(CameraObject(*from.camera, TargetDistance(index), reference), " camera",
              *from.camera);
    }
    if (from.light) {
        place(LightObject(*from.light, scene_.unit, TargetDistance(index), reference), " light",
              *from.light);
    }
    if (!node.contains("object") && !targets_.contains(index))
        node["object"] = {{"class", "Dummy"}};
}

} // namespace sceneconv
