// The tree of nodes.
#include "simhost/files/scene_file_loader.h"

#include <numbers>

namespace simhost {

namespace {

constexpr int deepestNesting = 500;

// clang-format off
const std::initializer_list<std::string_view> nodeMembers = {
    "id", "name", "parent", "children", "transform", "world_transform", "object_offset", "object",
    "modifiers", "space_modifiers", "material", "target", "hidden", "frozen", "selected",
    "renderable", "primary_visibility", "secondary_visibility", "cast_shadows", "receive_shadows",
    "visibility", "wire_color", "group_head", "group_member", "group_open", "layer", "user_props",
    "handle", "throws", "throw_kind", "answers_nothing"};
// clang-format on

Matrix3 Turn(int axis, float degrees) {
    const double a = double(degrees) * std::numbers::pi / 180;
    const auto c = static_cast<float>(std::cos(a)), s = static_cast<float>(std::sin(a));
    const int j = (axis + 1) % 3, k = (axis + 2) % 3;
    Matrix3 m;
    m[j][j] = m[k][k] = c;
    m[j][k] = s;
    m[k][j] = -s;
    return m;
}

Matrix3 ReadRotation(const JsonView& view) {
    if (!view.IsArray() || (view.Size() != 3 && view.Size() != 4))
        view.Expected("a quaternion [x,y,z,w] or three angles in degrees");
    float v[4] = {};
    for (size_t i = 0; i < view.Size(); ++i)
        v[i] = view.Element(i).Number();
    if (view.Size() == 3)
        return Turn(0, v[0]) * Turn(1, v[1]) * Turn(2, v[2]);
    const float length = std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2] + v[3] * v[3]);
    if (!(length > 0))
        view.Expected("a quaternion that is not zero");
    Matrix3 m; // the host's rotations have the opposite sign
    Quat(-v[0] / length, -v[1] / length, -v[2] / length, v[3] / length).MakeMatrix(m);
    return m;
}

Point3 ReadScale(const JsonView& view) {
    if (view.IsArray())
        return ReadPoint3(view);
    const float all = view.Number();
    return {all, all, all};
}

void ReadFlags(const JsonView& view, SceneNode& node) {
    const std::pair<const char*, bool*> flags[] = {
        {"hidden", &node.flags.hidden},
        {"frozen", &node.flags.frozen},
        {"renderable", &node.flags.renderable},
        {"primary_visibility", &node.flags.primaryVisibility},
        {"secondary_visibility", &node.flags.secondaryVisibility},
        {"cast_shadows", &node.flags.castShadows},
        {"receive_shadows", &node.flags.receiveShadows},
        {"group_head", &node.flags.groupHead},
        {"group_member", &node.flags.groupMember},
        {"group_open", &node.flags.groupOpen}};
    for (const auto& [member, flag] : flags)
        view.Read(member, *flag);
}

DWORD ReadWireColor(const JsonView& view) {
    view.Array(3);
    DWORD color = 0;
    for (size_t i = 0; i < 3; ++i) {
        const JsonView channel = view.Element(i);
        const std::uint32_t value = channel.Unsigned();
        if (value > 255)
            channel.Expected("a number from 0 to 255");
        color |= value << (8 * i);
    }
    return color;
}

} // namespace

Matrix3 ReadTransform(const JsonView& view) {
    view.OnlyMembers({"matrix", "position", "rotation", "scale"});
    if (const auto matrix = view.Find("matrix")) {
        if (view.Size() != 1)
            view.Complain("a transform has either a \"matrix\" or position, rotation and scale");
        return ReadMatrix(*matrix);
    }
    Matrix3 m;
    if (const auto rotation = view.Find("rotation"))
        m = ReadRotation(*rotation);
    if (const auto scaling = view.Find("scale")) {
        const Point3 scale = ReadScale(*scaling);
        for (int i = 0; i < 3; ++i)
            m.SetRow(i, m.GetRow(i) * scale[i]);
    }
    if (const auto position = view.Find("position"))
        m.SetTrans(ReadPoint3(*position));
    return m;
}

void SceneLoader::LoadNodes() {
    if (!root_.Has("nodes"))
        return;
    nodeLists_.push_back(root_.Member("nodes"));
    CollectNodes(nodeLists_.back(), -1, 0);
    NameNodes();
    MakeNodes();
}

void SceneLoader::CollectNodes(const JsonView& list, int parent, int depth) {
    list.Array();
    if (depth > deepestNesting)
        list.Complain("nodes are nested too deeply; use \"parent\"");
    for (size_t i = 0; i < list.Size(); ++i) {
        nodes_.push_back({list.Element(i), "", parent, {}, nullptr});
        const JsonView& view = nodes_.back().view;
        view.OnlyMembers(nodeMembers);
        (void)view.Member("name").Utf8();
        const int self = static_cast<int>(nodes_.size()) - 1;
        if (view.Has("children")) {
            nodeLists_.push_back(view.Member("children"));
            CollectNodes(nodeLists_.back(), self, depth + 1);
        }
    }
}

void SceneLoader::NameNodes() {
    // Ids come first; a name serves as id when it is the only one and no id.
    for (size_t i = 0; i < nodes_.size(); ++i) {
        const JsonView& view = nodes_[i].view;
        if (!view.Has("id"))
            continue;
        const JsonView id = view.Member("id");
        if (id.Utf8().empty())
            id.Complain("an id can't be empty");
        if (!nodeIds_.emplace(id.Utf8(), static_cast<int>(i)).second)
            id.Complain("another node has this id");
    }
    const auto ids = nodeIds_;
    for (size_t i = 0; i < nodes_.size(); ++i) {
        const JsonView& view = nodes_[i].view;
        const std::string name(view.Member("name").Utf8());
        if (view.Has("id") || ids.contains(name))
            continue;
        const auto [at, fresh] = nodeIds_.emplace(name, static_cast<int>(i));
        if (!fresh)
            at->second = -1;
    }
}

void SceneLoader::MakeNodes() {
    std::vector<int> top;
    for (size_t i = 0; i < nodes_.size(); ++i) {
        NodeEntry& entry = nodes_[i];
        if (entry.view.Has("parent")) {
            const JsonView parent = entry.view.Member("parent");
            if (entry.parent >= 0)
                parent.Complain("a node inside \"children\" has its parent already");
            if (!parent.IsNull()) {
                const auto found = nodeIds_.find(std::string(parent.Utf8()));
                if (found == nodeIds_.end() || found->second < 0)
                    parent.Complain("no single node has this id");
                entry.parent = found->second;
            }
        }
        auto& siblings =
            entry.parent < 0 ? top : nodes_[static_cast<size_t>(entry.parent)].children;
        siblings.push_back(static_cast<int>(i));
    }
    std::vector<int> pending(top.rbegin(), top.rend());
    size_t made = 0;
    while (!pending.empty()) {
        NodeEntry& entry = nodes_[static_cast<size_t>(pending.back())];
        pending.pop_back();
        SceneNode* parent =
            entry.parent < 0 ? nullptr : nodes_[static_cast<size_t>(entry.parent)].node;
        const ULONG handle = entry.view.Has("handle") ? entry.view.Member("handle").Unsigned() : 0;
        entry.node = scene_.CreateNode(entry.view.Member("name").Text(), nullptr, parent, handle);
        ++made;
        pending.insert(pending.end(), entry.children.rbegin(), entry.children.rend());
    }
    if (made != nodes_.size())
        for (const NodeEntry& entry : nodes_)
            if (!entry.node)
                entry.view.Member("parent").Complain("this node stands below itself");
}

SceneNode* SceneLoader::ResolveNode(const JsonView& view) const {
    if (view.IsNull())
        return nullptr;
    const auto found = nodeIds_.find(std::string(view.Utf8()));
    if (found == nodeIds_.end())
        view.Complain("no node has the id \"" + std::string(view.Utf8()) + "\"");
    if (found->second < 0)
        view.Complain("several nodes have this name; give the node an \"id\"");
    return nodes_[static_cast<size_t>(found->second)].node;
}

void SceneLoader::FillNodeObject(const JsonView& view, SceneNode& node) {
    Object* object = view.Has("object") ? ResolveObject(view.Member("object")) : nullptr;
    if (!object && node.flags.groupHead)
        object = dynamic_cast<Object*>(scene_.Create(L"Dummy", HELPER_CLASS_ID));
    if (view.Has("modifiers")) {
        auto* stack = scene_.Own(std::make_unique<DerivedObject>(object));
        FillStack(view, "modifiers", *stack, Context::Modifier);
        object = stack;
    }
    if (object)
        node.SetObjectRef(object);
    if (view.Has("space_modifiers")) {
        auto* stack = scene_.Own(std::make_unique<DerivedObject>(object, WSM_DERIVOB_CLASS_ID));
        FillStack(view, "space_modifiers", *stack, Context::SpaceModifier);
        node.SetSpaceStack(stack);
    }
}

void SceneLoader::FillNode(const NodeEntry& entry) {
    const JsonView& view = entry.view;
    SceneNode& node = *entry.node;
    const auto local = view.Find("transform"), world = view.Find("world_transform");
    if (local && world)
        view.Complain("a node has either a \"transform\" or a \"world_transform\"");
    if (local)
        node.SetLocalTM(ReadTransform(*local));
    if (world)
        node.SetNodeTM(0, ReadTransform(*world));
    if (const auto offset = view.Find("object_offset"))
        DecomposeMatrix(ReadTransform(*offset), node.offset.position, node.offset.rotation,
                        node.offset.scale.s);
    ReadFlags(view, node);
    FillNodeObject(view, node);
    if (const auto material = view.Find("material"))
        node.SetMtl(static_cast<Mtl*>(Resolve(*material, TYPE_MTL)));
    if (const auto targetView = view.Find("target")) {
        SceneNode* target = ResolveNode(*targetView);
        node.SetTarget(target);
        if (target && !target->ObjectRef())
            target->SetObjectRef(
                dynamic_cast<Object*>(scene_.Create(L"Targetobject", GEOMOBJECT_CLASS_ID)));
    }
    view.Read("visibility", node.visibility);
    if (const auto color = view.Find("wire_color"))
        node.SetWireColor(ReadWireColor(*color));
    view.Read("layer", node.layer);
    view.Read("user_props", node.userProps);
    bool selected = false;
    view.Read("selected", selected);
    if (selected)
        scene_.Select(&node);
    ReadFaults(view, node.faults);
}

} // namespace simhost
