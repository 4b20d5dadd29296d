// Nodes in scripts.
#include <algorithm>
#include <functional>
#include <unordered_map>

#include "simhost/bindings/node_set.h"
#include "simhost/bindings/params.h"
#include "simhost/bindings/scene_value.h"
#include "simhost/scene/derived_object.h"
#include "simhost/script/convert.h"
#include "simhost/script/error.h"
#include "simhost/script/raise.h"
#include "simhost/script/text.h"

namespace simhost::script {
namespace {

struct NodeProperty {
    std::function<Value(SceneNode&)> read;
    std::function<void(SceneNode&, const Value&)> write; // empty: read-only
};

Value ReadParent(SceneNode& node) {
    SceneNode* parent = node.Parent();
    return parent && !parent->IsRootNode() ? WrapThing(parent) : Value();
}

void SetParent(SceneNode& node, const Value& value) {
    SceneNode* parent = nullptr;
    if (!value.IsUndefined()) {
        const auto* wrapped = value.As<NodeValue>();
        if (!wrapped)
            RaiseConversion(value, L"<node>");
        parent = &wrapped->Node();
        if (node.IsAbove(*parent))
            RaiseRuntime(L"Runtime error: Cannot link a node to itself or below itself");
    }
    node.Owner().SetParent(node, parent, true);
}

Value ReadChildren(SceneNode& node) {
    const Ref<SceneNode> parent(&node);
    const auto list = [parent] {
        const SceneNode* owner = parent.Get();
        return owner ? owner->Children() : std::vector<SceneNode*>();
    };
    return NodeSet(L"<children>", list, true);
}

void SetMaterial(SceneNode& node, const Value& value) {
    auto* mtl = dynamic_cast<Mtl*>(ThingOf(value));
    if (!mtl && !value.IsUndefined())
        RaiseConversion(value, L"Material");
    node.SetMtl(mtl);
}

Value ReadWireColor(SceneNode& node) {
    const DWORD color = node.GetWireColor();
    return MakeVector(VectorKind::Color, static_cast<float>(color & 255),
                      static_cast<float>(color >> 8 & 255), static_cast<float>(color >> 16 & 255),
                      255);
}

void SetWireColor(SceneNode& node, const Value& value) {
    const VectorObject& color = ToVector(value, VectorKind::Color);
    DWORD bits = 0;
    for (size_t i = 0; i < 3; ++i) {
        const float part = std::clamp(color.At(i), 0.0f, 255.0f);
        bits |= static_cast<DWORD>(part + 0.5f) << (8 * i);
    }
    node.SetWireColor(bits);
}

NodeProperty Flag(bool SceneNode::Flags::*flag) {
    return {[flag](SceneNode& node) { return Value::Bool(node.flags.*flag); },
            [flag](SceneNode& node, const Value& value) { node.flags.*flag = ToBool(value); }};
}

// Null for a name that is none of a node's own.
const NodeProperty* FindNodeProperty(const std::wstring& name) {
    static const NodeProperty material = {[](SceneNode& node) { return WrapThing(node.GetMtl()); },
                                          SetMaterial};
    static const std::unordered_map<std::wstring, NodeProperty> properties = {
        {L"name",
         {[](SceneNode& node) { return MakeString(MSTR(node.GetName()).data()); },
          [](SceneNode& node, const Value& value) { node.SetName(ToString(value).c_str()); }}},
        {L"parent", {ReadParent, SetParent}},
        {L"children", {ReadChildren, {}}},
        {L"material", material},
        {L"mat", material},
        {L"wirecolor", {ReadWireColor, SetWireColor}},
        {L"renderable", Flag(&SceneNode::Flags::renderable)},
        {L"ishidden", Flag(&SceneNode::Flags::hidden)},
        {L"baseobject",
         {[](SceneNode& node) { return WrapThing(BaseOf(node.GetObjectRef())); }, {}}},
    };
    const auto found = properties.find(name);
    return found == properties.end() ? nullptr : &found->second;
}

} // namespace

::Object* ResultOf(SceneNode& node) {
    return node.EvalWorldState(node.Owner().time).obj;
}

void NodeValue::Print(Printer& printer, bool) const {
    if (!Exists()) {
        printer.Append(L"<Deleted scene node>");
        return;
    }
    SceneNode& node = Node();
    std::wstring className = L"Node";
    try {
        className = ClassName();
    } catch (const ScriptError&) {
        throw;
    } catch (...) { // a broken object must not hide the message that prints its node
    }
    const Point3 at = node.WorldTM().GetTrans();
    const std::wstring& name = node.Name();
    const bool plain = std::all_of(name.begin(), name.end(), IsWordUnit);
    printer.Append(L"$" + className + L":" + (plain ? name : L"'" + name + L"'") + L" @ [");
    wchar_t place[160];
    std::swprintf(place, std::size(place), L"%f,%f,%f]", static_cast<double>(at.x),
                  static_cast<double>(at.y), static_cast<double>(at.z));
    printer.Append(place);
}

std::wstring NodeValue::ClassName() const {
    ::Object* object = ResultOf(Node());
    return object ? ScriptClassName(*object) : L"UndefinedClass";
}

std::wstring NodeValue::SuperClassName() const {
    ::Object* object = ResultOf(Node());
    return object ? SuperClassNameOf(object->SuperClassID()) : L"node";
}

std::optional<Value> NodeValue::FindProperty(const std::wstring& name) {
    SceneNode& node = Node();
    if (const NodeProperty* own = FindNodeProperty(name))
        return own->read(node);
    Entity* base = EntityOf(BaseOf(node.GetObjectRef()));
    return base ? FindEntityProperty(*base, name) : std::nullopt;
}

bool NodeValue::SetProperty(const std::wstring& name, const Value& value) {
    SceneNode& node = Node();
    if (const NodeProperty* own = FindNodeProperty(name)) {
        if (!own->write)
            RaiseRuntime(L"Property is read-only: " + name);
        own->write(node, value);
        return true;
    }
    Entity* base = EntityOf(BaseOf(node.GetObjectRef()));
    return base && SetEntityProperty(*base, name, value);
}

void NodeValue::CollectPropertyNames(std::vector<std::wstring>& names) const {
    if (const Entity* base = EntityOf(BaseOf(Node().GetObjectRef())))
        CollectEntityProperties(*base, names);
}

std::optional<Value> NodeValue::Copy() {
    SceneNode& node = Node();
    return node.IsRootNode() ? std::nullopt : std::optional(WrapThing(node.Owner().CopyNode(node)));
}

} // namespace simhost::script
