#include "simhost/scene/snapshot.h"

#include "simhost/scene/derived_object.h"
#include "simhost/scene/scene.h"
#include "simhost/scene/snapshot.h"
#include "text/utf8.h"

#include <charconv>
#include <unordered_set>

namespace simhost {

namespace {

class Writer {
  public:
    std::string text;
    void Scene(simhost::Scene& scene);

  private:
    void Number(float value);
    void Point(const float* values, int count);
    void Matrix(const Matrix3& m);
    void Line(const char* key, std::wstring_view value);
    void Reference(Animatable* thing);
    void Value(const Scalar& value);
    void Things();
    void Describe(Animatable* thing);
    void Describe(const Entity& entity);
    void Node(SceneNode& node);
    std::vector<Animatable*> pending_;
    std::unordered_map<Animatable*, int> numbers_;
};

void Writer::Number(float value) {
    char buffer[40];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, value).ptr;
    text.append(buffer, end);
}

void Writer::Point(const float* values, int count) {
    text += '[';
    for (int i = 0; i < count; ++i) {
        if (i)
            text += ',';
        Number(values[i]);
    }
    text += ']';
}

void Writer::Matrix(const Matrix3& m) {
    for (int i = 0; i < 4; ++i)
        Point(&m[i].x, 3);
}

void Writer::Line(const char* key, std::wstring_view value) {
    text += "  ";
    text += key;
    text += ": \"" + utf8::FromWide(value) + "\"\n";
}

/// Things are numbered in the order in which they are met, and described once.
void Writer::Reference(Animatable* thing) {
    if (!thing) {
        text += "null";
        return;
    }
    if (auto* node = dynamic_cast<SceneNode*>(thing)) {
        text += "node " + std::to_string(node->GetHandle());
        return;
    }
    const auto [at, fresh] = numbers_.emplace(thing, static_cast<int>(numbers_.size()) + 1);
    if (fresh)
        pending_.push_back(thing);
    text += "#" + std::to_string(at->second);
}

void Writer::Value(const Scalar& value) {
    if (const auto* number = std::get_if<float>(&value))
        Number(*number);
    else if (const auto* integer = std::get_if<int>(&value))
        text += std::to_string(*integer);
    else if (const auto* three = std::get_if<Point3>(&value))
        Point(&three->x, 3);
    else if (const auto* four = std::get_if<Point4>(&value))
        Point(&four->x, 4);
    else if (const auto* held = std::get_if<Text>(&value))
        text += *held ? "\"" + utf8::FromWide(**held) + "\"" : "null";
    else if (const auto* ref = std::get_if<Ref<ReferenceTarget>>(&value))
        Reference(ref->Get());
    else
        Matrix(std::get<Matrix3>(value));
}

void Writer::Describe(const Entity& entity) {
    Line("class", entity.Class().name);
    Line("name", entity.name);
    for (size_t b = 0; b < entity.Blocks().size(); ++b) {
        const ParamBlock* block = entity.Blocks()[b].get();
        if (!block) {
            text += "  null block\n";
            continue;
        }
        for (int i = 0; i < block->Shape().count; ++i) {
            const ParamSpec& spec = block->Shape().Params()[static_cast<size_t>(i)];
            text += "  " + std::to_string(b) + "|" + std::to_string(spec.id) + " " +
                    (spec.name ? utf8::FromWide(*spec.name) : "null") + " =";
            const int count = block->CountAt(i);
            if (IsTable(spec.type))
                text += " " + std::to_string(count) + ":";
            for (int k = 0; k < count; ++k) {
                text += ' ';
                Value(*block->At(i, k));
            }
            text += '\n';
        }
    }
    for (int i = 0; i < entity.NumSlots(); ++i) {
        text += "  slot " + std::to_string(i) + (entity.SlotOn(i) ? " on " : " off ");
        Reference(entity.SlotMap(i));
        text += '\n';
    }
    for (int i = 0; i < entity.NumSubObjects(); ++i) {
        Line("role", entity.Class().subObjects[static_cast<size_t>(i)].role);
        text += "  = ";
        Reference(entity.SubObject(i));
        text += '\n';
    }
}

void Writer::Describe(Animatable* thing) {
    text += "#" + std::to_string(numbers_.at(thing)) + "\n";
    if (const Entity* entity = EntityOf(thing))
        Describe(*entity);
    if (const auto* stack = dynamic_cast<DerivedObject*>(thing)) {
        text += "  stack on ";
        Reference(stack->Base());
        for (const auto& modifier : stack->Modifiers()) {
            text += " < ";
            Reference(modifier.Get());
        }
        text += '\n';
    }
    if (const auto* modifier = dynamic_cast<SceneModifier*>(thing)) {
        text += modifier->enabled ? "  enabled " : "  disabled ";
        Matrix(modifier->matrix);
        text += '\n';
    }
    const Mesh* mesh = nullptr;
    if (const auto* plain = dynamic_cast<TriObject*>(thing))
        mesh = &plain->mesh;
    else if (const auto* geometry = dynamic_cast<SceneGeometry*>(thing))
        mesh = geometry->ownMesh.get();
    if (mesh)
        text += "  mesh of " + std::to_string(mesh->numVerts) + " vertices, " +
                std::to_string(mesh->numFaces) + " faces, " + std::to_string(mesh->numTVerts) +
                " coordinates, " + std::to_string(mesh->numCVerts) + " colours\n";
}

void Writer::Things() {
    for (size_t i = 0; i < pending_.size(); ++i)
        Describe(pending_[i]);
    pending_.clear();
}

void Writer::Node(SceneNode& node) {
    text += "node " + std::to_string(node.GetHandle()) + " below " +
            std::to_string(node.Parent()->GetHandle()) + "\n";
    Line("name", node.Name());
    text += "  transform ";
    Matrix(node.LocalTM());
    text += "\n  object ";
    Reference(node.ObjectRef());
    text += "  space ";
    Reference(node.SpaceStack());
    text += "  material ";
    Reference(node.Material());
    text += "  offset ";
    Point(&node.offset.position.x, 3);
    Point(&node.offset.rotation.x, 4);
    Point(&node.offset.scale.s.x, 3);
    const SceneNode::Flags& f = node.flags;
    text += "\n  flags ";
    for (const bool flag : {f.hidden, f.frozen, f.renderable, f.primaryVisibility,
                            f.secondaryVisibility, f.castShadows, f.receiveShadows, f.groupHead,
                            f.groupMember, f.groupOpen, node.Selected() != 0, node.IsTarget() != 0})
        text += flag ? '1' : '0';
    text += " wire " + std::to_string(node.GetWireColor()) + " visibility ";
    Number(node.visibility);
    text += '\n';
    Line("layer", node.layer);
    Line("user", node.userProps);
}

void Writer::Scene(simhost::Scene& scene) {
    Line("file", scene.filePath);
    text += "  time " + std::to_string(scene.time) + " background ";
    Point(&scene.background.x, 3);
    text += scene.useEnvironmentMap ? " map on " : " map off ";
    Reference(scene.environmentMap.Get());
    text += " renderer ";
    Reference(scene.renderer.Get());
    text += "\n  selection";
    for (SceneNode* node : scene.Selection()) {
        text += ' ';
        Reference(node);
    }
    text += '\n';
    for (SceneNode* node : scene.AllNodes())
        Node(*node);
    for (MtlBase* base : scene.AllMtlBases()) {
        Reference(base);
        text += ' ';
    }
    text += '\n';
    Things();
}

} // namespace

std::string SnapshotScene() {
    Writer writer;
    writer.Scene(Scene::Current());
    return std::move(writer.text);
}

} // namespace simhost
