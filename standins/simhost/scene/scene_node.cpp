#include "simhost/scene/scene_node.h"

#include "simhost/scene/derived_object.h"
#include "simhost/scene/scene.h"

namespace simhost {

SceneNode::SceneNode(Scene& scene, std::wstring name, ULONG handle)
    : scene_(scene), name_(std::move(name)), nodeHandle_(handle) {}

SceneNode::~SceneNode() = default;

const std::vector<SceneNode*>& SceneNode::Children() const {
    if (holes_) {
        std::erase(children_, nullptr);
        for (size_t i = 0; i < children_.size(); ++i)
            children_[i]->placeInParent_ = i;
        holes_ = false;
    }
    return children_;
}

bool SceneNode::IsAbove(const SceneNode& other) const {
    const SceneNode* node = &other;
    while (node && node != this)
        node = node->parent_;
    return node == this;
}

void SceneNode::Attach(SceneNode* child) {
    child->placeInParent_ = children_.size();
    children_.push_back(child);
    child->parent_ = this;
    ++childCount_;
}

void SceneNode::Detach(SceneNode* child) {
    if (child->placeInParent_ + 1 == children_.size()) {
        children_.pop_back();
    } else {
        children_[child->placeInParent_] = nullptr;
        holes_ = true;
    }
    child->parent_ = nullptr;
    --childCount_;
}

void SceneNode::DropWorldTM() const {
    std::vector<const SceneNode*> pending{this};
    while (!pending.empty()) {
        const SceneNode* node = pending.back();
        pending.pop_back();
        if (!node->worldKnown_)
            continue; // then nothing below it is known either
        node->worldKnown_ = false;
        for (const SceneNode* child : node->children_)
            if (child)
                pending.push_back(child);
    }
}

void SceneNode::SetLocalTM(const Matrix3& tm) {
    local_ = tm;
    DropWorldTM();
}

const Matrix3& SceneNode::WorldTM() const {
    std::vector<const SceneNode*> unknown;
    for (const SceneNode* node = this; node && !node->worldKnown_; node = node->parent_)
        unknown.push_back(node);
    for (auto it = unknown.rbegin(); it != unknown.rend(); ++it) {
        const SceneNode& node = **it;
        node.world_ = node.parent_ ? node.local_ * node.parent_->world_ : node.local_;
        node.worldKnown_ = true;
    }
    return world_;
}

void SceneNode::SetTarget(SceneNode* target) {
    if (SceneNode* old = target_.Get())
        --old->lookers_;
    target_ = target;
    if (target)
        ++target->lookers_;
}

void SceneNode::GetClassName(MSTR& s, bool /*localized*/) const {
    s = L"Node";
}

const MCHAR* SceneNode::GetName() {
    return faults.Give(Call::GetName, name_.c_str());
}

void SceneNode::SetName(const MCHAR* name) {
    faults.Check(Call::SetName);
    scene_.Renamed(*this, std::exchange(name_, name ? name : L""));
}

int SceneNode::IsRootNode() {
    return this == &scene_.Root();
}

int SceneNode::NumberOfChildren() {
    return childCount_;
}

INode* SceneNode::GetChildNode(int i) {
    const auto& children = Children();
    const bool inside = i >= 0 && i < static_cast<int>(children.size());
    INode* const child = inside ? children[static_cast<size_t>(i)] : nullptr;
    return faults.Give(Call::GetChildNode, child);
}

void SceneNode::AttachChild(INode* child, int keepPosition) {
    if (auto* node = dynamic_cast<SceneNode*>(child))
        scene_.SetParent(*node, this, keepPosition != 0);
}

INode* SceneNode::GetTarget() {
    faults.Check(Call::GetTarget);
    return target_.Get();
}

Matrix3 SceneNode::GetNodeTM(TimeValue /*t*/, Interval* /*valid*/) {
    faults.Check(Call::GetNodeTM);
    return WorldTM();
}

void SceneNode::SetNodeTM(TimeValue /*t*/, const Matrix3& tm) {
    SetLocalTM(parent_ ? tm * Inverse(parent_->WorldTM()) : tm);
}

Matrix3 SceneNode::GetObjectTM(TimeValue t, Interval* /*valid*/) {
    Matrix3 scaling, turn, stretchAxes;
    offset.scale.q.MakeMatrix(stretchAxes);
    for (int i = 0; i < 3; ++i) {
        Point3 row;
        row[i] = offset.scale.s[i];
        scaling.SetRow(i, row);
    }
    offset.rotation.MakeMatrix(turn);
    turn.SetTrans(offset.position);
    return Inverse(stretchAxes) * scaling * stretchAxes * turn * GetNodeTM(t);
}

Matrix3 SceneNode::GetObjTMAfterWSM(TimeValue t, Interval* valid) {
    return spaceStack_.Get() ? Matrix3() : GetObjectTM(t, valid);
}

Object* SceneNode::GetObjectRef() {
    return faults.Give(Call::GetObjectRef, object_.Get());
}

void SceneNode::SetObjectRef(Object* object) {
    scene_.ObjectChanges(*this, object);
    object_ = object;
    SceneMesh::TakenInto(object);
}

IDerivedObject* SceneNode::GetWSMDerivedObject() {
    return dynamic_cast<IDerivedObject*>(spaceStack_.Get());
}

const ObjectState& SceneNode::EvalWorldState(TimeValue /*t*/, BOOL /*evalHidden*/) {
    Object* const stack = spaceStack_.Get() ? spaceStack_.Get() : object_.Get();
    state_.obj = faults.Give(Call::EvalWorldState, Evaluated(stack));
    return state_;
}

Mtl* SceneNode::GetMtl() {
    return faults.Give(Call::GetMtl, material_.Get());
}

void SceneNode::SetMtl(Mtl* mtl) {
    material_ = mtl;
    scene_.Touch();
}

int SceneNode::IsHidden(DWORD /*flagBits*/, BOOL /*forRenderer*/) {
    return flags.hidden;
}

} // namespace simhost
