// Nodes in scripts.
#include <functional>
#include <unordered_map>

#include "simhost/bindings/scene_collections.h"
#include "simhost/bindings/scene_ops.h"
#include "simhost/bindings/scene_params.h"
#include "simhost/bindings/scene_value.h"
#include "simhost/scene/derived_object.h"
#include "simhost/script/convert.h"
#include "simhost/script/interpreter.h"
#include "simhost/script/raise.h"
#include "simhost/script/text.h"

namespace simhost::script {
namespace {

struct NodeProperty {
    std::function<Value(SceneNode&)> read;
    std::function<void(SceneNode&, const Value&)> write; // empty: read-only
};

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

void SetMaterial(SceneNode& node, const Value& value) {
    auto* mtl = dynamic_cast<Mtl*>(ThingOf(value));
    if (!mtl && !value.IsUndefined())
        RaiseConversion(value, L"Material");
    node.SetMtl(mtl);
}

void SetBase(SceneNode& node, const Value& value) {
    auto* object = dynamic_cast<::Object*>(ThingOf(value));
    if (!object)
        RaiseConversion(value, L"MAXObject");
    node.SetObjectRef(object);
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
        const float part = std::min(255.0f, std::max(0.0f, color.At(i)));
        bits |= static_cast<DWORD>(part + 0.5f) << (8 * i);
    }
    node.SetWireColor(bits);
}

void SetPosition(SceneNode& node, const Value& value) {
    Matrix3 tm = node.WorldTM();
    tm.SetTrans(ToPoint(value));
    node.SetNodeTM(node.Owner().time, tm);
}

Value ReadRotation(SceneNode& node) {
    Point3 translation;
    Quat rotation;
    Point3 scale;
    DecomposeMatrix(node.WorldTM(), translation, rotation, scale);
    return MakeVector(VectorKind::Quat, rotation.x, rotation.y, rotation.z, rotation.w);
}

Value ReadScale(SceneNode& node) {
    Point3 translation;
    Quat rotation;
    Point3 scale;
    DecomposeMatrix(node.WorldTM(), translation, rotation, scale);
    return FromPoint(scale);
}

Value ReadModifiers(SceneNode& node) {
    std::vector<Value> modifiers;
    for (SceneModifier* modifier : ModifiersOf(node))
        modifiers.push_back(WrapThing(modifier));
    return MakeArray(std::move(modifiers));
}

NodeProperty Flag(bool SceneNode::Flags::*flag) {
    return {[flag](SceneNode& node) { return Value::Bool(node.flags.*flag); },
            [flag](SceneNode& node, const Value& value) { node.flags.*flag = ToBool(value); }};
}

NodeProperty MeshCount(int (Mesh::*count)() const, const wchar_t* name) {
    return {[count, name](SceneNode& node) {
                const Mesh* mesh = EditableMeshOf(node);
                if (!mesh)
                    RaiseUnknownProperty(name, WrapThing(&node));
                return Value::Integer((mesh->*count)());
            },
            {}};
}

void AddPlacement(std::unordered_map<std::wstring, NodeProperty>& table) {
    table[L"pos"] = {[](SceneNode& node) { return FromPoint(node.WorldTM().GetTrans()); },
                     SetPosition};
    table[L"position"] = table[L"pos"];
    table[L"transform"] = {[](SceneNode& node) { return FromMatrix(node.GetNodeTM(0)); },
                           [](SceneNode& node, const Value& value) {
                               node.SetNodeTM(node.Owner().time, ToMatrix(value));
                           }};
    table[L"rotation"] = {ReadRotation, {}};
    table[L"scale"] = {ReadScale, {}};
    table[L"objecttransform"] = {
        [](SceneNode& node) { return FromMatrix(node.GetObjectTM(node.Owner().time)); }, {}};
}

void AddLinks(std::unordered_map<std::wstring, NodeProperty>& table) {
    table[L"parent"] = {[](SceneNode& node) {
                            SceneNode* parent = node.Parent();
                            return parent && !parent->IsRootNode() ? WrapThing(parent) : Value();
                        },
                        SetParent};
    table[L"children"] = {[](SceneNode& node) { return ChildrenOf(node); }, {}};
    table[L"target"] = {[](SceneNode& node) { return WrapThing(node.GetTarget()); },
                        [](SceneNode& node, const Value& value) {
                            node.SetTarget(value.IsUndefined() ? nullptr
                                                               : &NodeOf(L"target", value));
                        }};
    table[L"istarget"] = {[](SceneNode& node) { return Value::Bool(node.IsTarget() != 0); }, {}};
    table[L"material"] = {[](SceneNode& node) { return WrapThing(node.GetMtl()); }, SetMaterial};
    table[L"mat"] = table[L"material"];
    table[L"baseobject"] = {[](SceneNode& node) { return WrapThing(BaseOf(node.GetObjectRef())); },
                            SetBase};
    table[L"modifiers"] = {ReadModifiers, {}};
    table[L"layer"] = {[](SceneNode& node) { return LayerOf(node); }, {}};
}

std::unordered_map<std::wstring, NodeProperty> MakeTable() {
    std::unordered_map<std::wstring, NodeProperty> table;
    AddPlacement(table);
    AddLinks(table);
    table[L"name"] = {
        [](SceneNode& node) { return MakeString(MSTR(node.GetName()).data()); },
        [](SceneNode& node, const Value& value) { node.SetName(ToString(value).c_str()); }};
    table[L"wirecolor"] = {ReadWireColor, SetWireColor};
    table[L"handle"] = {
        [](SceneNode& node) { return Value::Integer(static_cast<int32_t>(node.GetHandle())); }, {}};
    table[L"isselected"] = {
        [](SceneNode& node) { return Value::Bool(node.Selected() != 0); },
        [](SceneNode& node, const Value& value) { SelectNode(node, ToBool(value)); }};
    table[L"visibility"] = {[](SceneNode& node) { return Value::Bool(node.visibility > 0); }, {}};
    table[L"ishidden"] = Flag(&SceneNode::Flags::hidden);
    table[L"isfrozen"] = Flag(&SceneNode::Flags::frozen);
    table[L"renderable"] = Flag(&SceneNode::Flags::renderable);
    table[L"primaryvisibility"] = Flag(&SceneNode::Flags::primaryVisibility);
    table[L"secondaryvisibility"] = Flag(&SceneNode::Flags::secondaryVisibility);
    table[L"castshadows"] = Flag(&SceneNode::Flags::castShadows);
    table[L"receiveshadows"] = Flag(&SceneNode::Flags::receiveShadows);
    table[L"numfaces"] = MeshCount(&Mesh::getNumFaces, L"numFaces");
    table[L"numverts"] = MeshCount(&Mesh::getNumVerts, L"numVerts");
    table[L"inode"] = {[](SceneNode& node) { return WrapThing(&node); }, {}};
    return table;
}

const std::unordered_map<std::wstring, NodeProperty>& Table() {
    static const auto table = MakeTable();
    return table;
}

SceneModifier* FindModifier(SceneNode& node, const std::wstring& name) {
    for (SceneModifier* modifier : ModifiersOf(node)) {
        if (Lower(ScriptClassName(*modifier)) == name)
            return modifier;
    }
    return nullptr;
}

} // namespace

SceneNode& NodeValue::Node() const {
    return static_cast<SceneNode&>(Thing());
}

void NodeValue::Print(Printer& printer, bool) const {
    if (!Exists()) {
        printer.Put(L"<Deleted scene node>");
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
    printer.Put(L"$" + className + L":" + (plain ? name : L"'" + name + L"'") + L" @ [");
    wchar_t place[160];
    std::swprintf(place, std::size(place), L"%f,%f,%f]", static_cast<double>(at.x),
                  static_cast<double>(at.y), static_cast<double>(at.z));
    printer.Put(place);
}

std::wstring NodeValue::ClassName() const {
    ::Object* object = ResultOf(Node());
    return object ? ScriptClassName(*object) : L"UndefinedClass";
}

std::wstring NodeValue::SuperClassName() const {
    ::Object* object = ResultOf(Node());
    return object ? ScriptSuperClassName(*object) : L"node";
}

bool NodeValue::GetProperty(Interpreter&, const std::wstring& name, Value& result) {
    SceneNode& node = Node();
    if (const auto found = Table().find(name); found != Table().end()) {
        result = found->second.read(node);
        return true;
    }
    Entity* base = EntityOf(BaseOf(node.GetObjectRef()));
    if (base && GetThingProperty(*base, name, result))
        return true;
    SceneModifier* modifier = FindModifier(node, name);
    result = WrapThing(modifier);
    return modifier != nullptr;
}

bool NodeValue::SetProperty(Interpreter&, const std::wstring& name, const Value& value) {
    SceneNode& node = Node();
    if (const auto found = Table().find(name); found != Table().end()) {
        if (!found->second.write)
            RaiseRuntime(L"Property is read-only: " + name);
        found->second.write(node, value);
        return true;
    }
    Entity* base = EntityOf(BaseOf(node.GetObjectRef()));
    return base && SetThingProperty(*base, name, value);
}

bool NodeValue::Copy(Interpreter& interpreter, const std::wstring& how, Arguments& arguments,
                     Value& result) {
    SceneNode& node = Node();
    Scene& scene = node.Owner();
    if (node.IsRootNode())
        return false;
    SceneNode* made = how == L"copy"       ? scene.CopyNode(node)
                      : how == L"instance" ? scene.InstanceNode(node)
                                           : scene.ReferenceNode(node);
    result = WrapThing(made);
    for (const auto& [name, value] : arguments.keywords)
        interpreter.SetProperty(result, name, value);
    return true;
}

void NodeValue::PropertyNames(std::vector<std::wstring>& names) const {
    if (const Entity* base = EntityOf(BaseOf(Node().GetObjectRef())))
        ThingPropertyNames(*base, names);
}

} // namespace simhost::script
