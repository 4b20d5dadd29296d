#include "simhost/files/fbx_nodes.h"

#include "simhost/files/fbx_attributes.h"
#include "simhost/files/fbx_guard.h"
#include "simhost/files/fbx_host_params.h"

namespace simhost {

namespace {

using namespace std::string_view_literals;

// The host's cameras and lights look along -z. A camera of the format looks along +x, with up
// at +y; a light along -y. Each row: where the format's axis points in the host's.
const FbxAffine cameraAxes{{{{0, 0, -1}, {0, 1, 0}, {1, 0, 0}, {0, 0, 0}}}};
const FbxAffine lightAxes{{{{1, 0, 0}, {0, 0, 1}, {0, -1, 0}, {0, 0, 0}}}};

std::string_view KindOf(INode& node, Object* object) {
    if (!object || FbxAsk(0, [&] { return node.IsTarget(); }))
        return "Null";
    switch (FbxAsk(HELPER_CLASS_ID, [&] { return object->SuperClassID(); })) {
    case LIGHT_CLASS_ID:
        return "Light";
    case CAMERA_CLASS_ID:
        return "Camera";
    case SHAPE_CLASS_ID:
    case HELPER_CLASS_ID:
        return "Null";
    default:
        return "Mesh";
    }
}

/// What instances of a node have in common: the object with its modifiers. World-space
/// modifiers are the node's own, and so is their result then.
const void* SharedBy(INode& node) {
    if (FbxAsk<IDerivedObject*>(nullptr, [&] { return node.GetWSMDerivedObject(); }))
        return &node;
    const void* object = FbxAsk<Object*>(nullptr, [&] { return node.GetObjectRef(); });
    return object ? object : &node;
}

Object* Evaluated(INode& node, TimeValue t) {
    return FbxAsk<Object*>(nullptr, [&] { return node.EvalWorldState(t).obj; });
}

FbxAffine NodeMatrix(INode& node, TimeValue t) {
    return ToFbxAffine(FbxAsk(Matrix3(), [&] { return node.GetNodeTM(t); }));
}

FbxAffine ObjectMatrix(INode& node, TimeValue t) {
    return ToFbxAffine(FbxAsk(Matrix3(), [&] { return node.GetObjTMAfterWSM(t); }));
}

} // namespace

void FbxNodes::Collect(INode& root) {
    struct Visit {
        INode* node;
        int parent; // entry, -1 for the root
    };
    std::vector<Visit> waiting;
    const auto pushChildren = [&](INode& node, int parent) {
        for (int i = node.NumberOfChildren() - 1; i >= 0; --i)
            if (INode* child = node.GetChildNode(i))
                waiting.push_back({child, parent});
    };
    pushChildren(root, -1);
    while (!waiting.empty()) {
        const Visit visit = waiting.back();
        waiting.pop_back();
        Entry entry;
        entry.node = visit.node;
        entry.id = ids_.Next();
        FbxAffine parentWorld;
        if (visit.parent >= 0) {
            const Entry& parent = entries_[static_cast<std::size_t>(visit.parent)];
            entry.parentId = parent.id;
            entry.parentHidden = parent.hidden;
            parentWorld = parent.world;
        }
        entry.hidden = FbxAsk(0, [&] { return visit.node->IsHidden(); }) != 0;
        AddAttribute(entry);
        Place(entry, parentWorld);
        entries_.push_back(std::move(entry));
        pushChildren(*visit.node, static_cast<int>(entries_.size()) - 1);
    }
}

void FbxNodes::AddAttribute(Entry& entry) {
    Object* object = Evaluated(*entry.node, time_);
    entry.kind = KindOf(*entry.node, object);
    if (entry.kind == "Mesh") {
        const FbxGeometryUse& use = geometries_.Use(*entry.node, *object, SharedBy(*entry.node));
        entry.attribute = use.geometry;
        entry.materials = use.materials;
        if (!use.geometry)
            entry.kind = "Null";
    } else if (entry.kind != "Null") {
        entry.attribute = SharedAttribute(entry.kind, *object, SharedBy(*entry.node));
    }
    if (entry.kind == "Null") {
        entry.attribute = ids_.Next();
        WriteFbxAttribute(writer_, entry.attribute, "Null", {});
        counts_.Add(FbxObjectKind::NodeAttribute);
    }
}

std::int64_t FbxNodes::SharedAttribute(std::string_view kind, Object& object, const void* shared) {
    const auto [place, added] = attributes_.try_emplace(shared, 0);
    if (added) {
        place->second = ids_.Next();
        WriteFbxAttribute(writer_, place->second, kind,
                          kind == "Light" ? FbxLightProperties(object, time_)
                                          : FbxCameraProperties(object, time_));
        counts_.Add(FbxObjectKind::NodeAttribute);
    }
    return place->second;
}

void FbxNodes::Place(Entry& entry, const FbxAffine& parent) const {
    const FbxAffine toParent = Inverse(parent);
    FbxAffine node = NodeMatrix(*entry.node, time_);
    if (entry.kind == "Camera")
        node = cameraAxes * node;
    else if (entry.kind == "Light")
        node = lightAxes * node;
    const FbxAffine local = node * toParent;
    entry.placement.local = Decompose(local);
    entry.world = Compose(entry.placement.local) * parent;
    if (entry.kind != "Mesh")
        return;
    const FbxAffine object = ObjectMatrix(*entry.node, time_);
    // Without an offset, rounding shall not make one.
    const FbxAffine offset = object == node ? FbxAffine() : object * Inverse(entry.world);
    if (IsSquare(local) && IsSquare(offset)) {
        entry.placement.geometric = Decompose(offset);
    } else {
        entry.placement = SplitSkewed(object * toParent);
        entry.world = Compose(entry.placement.local) * parent;
    }
}

void FbxNodes::WriteModel(const Entry& entry) {
    INode& node = *entry.node;
    const std::string name = FbxAsk(std::string(), [&] { return FbxText(node.GetName()); });
    writer_.Begin("Model", entry.id, name + std::string("\0\x01Model"sv), entry.kind);
    writer_.Leaf("Version", 232);

    // InheritType 1: a parent's scale goes to the children as the host has it.
    FbxProperties properties{{"InheritType", FbxTypes::enumeration, 1},
                             {"DefaultAttributeIndex", FbxTypes::integer, 0}};
    const auto add = [&](const char* property, FbxType type, const FbxVec3& v, double usual) {
        if (v != FbxVec3{usual, usual, usual})
            properties.push_back({property, type, v});
    };
    const FbxTrs& local = entry.placement.local;
    const FbxTrs& geometric = entry.placement.geometric;
    add("Lcl Translation", FbxTypes::lclTranslation, local.translation, 0);
    add("Lcl Rotation", FbxTypes::lclRotation, local.rotation, 0);
    add("Lcl Scaling", FbxTypes::lclScaling, local.scale, 1);
    add("GeometricTranslation", FbxTypes::vector, geometric.translation, 0);
    add("GeometricRotation", FbxTypes::vector, geometric.rotation, 0);
    add("GeometricScaling", FbxTypes::vector, geometric.scale, 1);
    if (entry.hidden) {
        properties.push_back({"Show", FbxTypes::boolean, 0});
        properties.push_back({"Visibility", FbxTypes::visibility, 0.0});
    }
    if (entry.parentHidden) // in the host children of a hidden node stay visible
        properties.push_back({"Visibility Inheritance", FbxTypes::visibilityInheritance, 0});
    if (FbxAsk(0, [&] { return node.IsFrozen(); }))
        properties.push_back({"Freeze", FbxTypes::boolean, 1});
    properties.push_back(
        {"MaxHandle", FbxTypes::userInt,
         static_cast<std::int32_t>(FbxAsk(ULONG{0}, [&] { return node.GetHandle(); }))});
    const MSTR userText = FbxAsk(MSTR(), [&] {
        MSTR text;
        node.GetUserPropBuffer(text);
        return text;
    });
    if (userText.Length() > 0)
        properties.push_back({"UDP3DSMAX", FbxTypes::userText, FbxText(userText.data())});
    WriteFbxProperties(writer_, properties);
    writer_.Leaf("Shading", FbxChar{'T'});
    writer_.Leaf("Culling", "CullingOff");
    writer_.End();
}

void FbxNodes::WriteModels() {
    for (const Entry& entry : entries_) {
        WriteModel(entry);
        counts_.Add(FbxObjectKind::Model);
    }
}

void FbxNodes::WriteConnections() const {
    for (const Entry& entry : entries_)
        writer_.Leaf("C", "OO", entry.id, entry.parentId);
    for (const Entry& entry : entries_) {
        writer_.Leaf("C", "OO", entry.attribute, entry.id);
        for (const std::int64_t material : entry.materials)
            writer_.Leaf("C", "OO", material, entry.id);
    }
}

} // namespace simhost
