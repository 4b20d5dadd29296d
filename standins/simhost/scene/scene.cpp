#include "simhost/scene/scene.h"

#include "simhost/classes/catalogue.h"
#include "simhost/scene/factory.h"

#include <algorithm>
#include <unordered_set>

namespace simhost {

namespace {

std::unique_ptr<Scene>& OpenScene() {
    static std::unique_ptr<Scene> scene;
    return scene;
}

/// "Line001" is "Line" and 3 digits; the digits' count is kept when numbers are made.
std::pair<std::wstring, size_t> SplitNumber(std::wstring_view name) {
    size_t end = name.size();
    while (end > 0 && name[end - 1] >= L'0' && name[end - 1] <= L'9')
        --end;
    return {std::wstring(name.substr(0, end)), name.size() - end};
}

} // namespace

Scene::Scene() : root_(std::make_unique<SceneNode>(*this, L"Scene Root", 0)) {
    if (auto* scanline = Create(L"Scanline Renderer", RENDERER_CLASS_ID))
        renderer = scanline;
}

Scene::~Scene() = default;

unsigned long Scene::NextRevision() {
    static unsigned long last = 0;
    return ++last;
}

Scene& Scene::Current() {
    auto& scene = OpenScene();
    if (!scene)
        scene = std::make_unique<Scene>();
    return *scene;
}

void Scene::Open(std::unique_ptr<Scene> scene) {
    OpenScene() = std::move(scene);
}

ReferenceTarget* Scene::Create(std::wstring_view className, SClass_ID kind) {
    const ClassPtr info = FindClass(className, kind);
    return info ? Own(MakeThing(info)) : nullptr;
}

void Scene::Delete(ReferenceTarget* thing) {
    things_.erase(Animatable::GetHandleByAnim(thing));
    Touch();
}

std::vector<MtlBase*> Scene::AllMtlBases() const {
    std::vector<MtlBase*> found;
    for (const auto& [handle, thing] : things_)
        if (auto* base = dynamic_cast<MtlBase*>(thing.get()))
            found.push_back(base);
    return found;
}

SceneNode* Scene::CreateNode(std::wstring_view name, Object* object, SceneNode* parent,
                             ULONG handle) {
    if (handle == 0 || nodes_.contains(handle))
        handle = nextHandle_;
    nextHandle_ = std::max(nextHandle_, handle + 1);
    auto made = std::make_unique<SceneNode>(*this, std::wstring(name), handle);
    SceneNode* node = made.get();
    nodes_[handle] = std::move(made);
    byName_[node->Name()].insert(handle);
    (parent ? parent : root_.get())->Attach(node);
    node->DropWorldTM();
    if (object)
        node->SetObjectRef(object);
    Touch();
    return node;
}

void Scene::DeleteNode(SceneNode* node) {
    if (!node || node == root_.get())
        return;
    const std::vector<SceneNode*> orphans = node->Children();
    for (SceneNode* child : orphans)
        SetParent(*child, root_.get(), true);
    node->SetTarget(nullptr);
    ForgetName(node->Name(), node->nodeHandle_);
    ObjectChanges(*node, nullptr);
    if (node->selected_)
        std::erase(selection_, Animatable::GetHandleByAnim(node));
    node->parent_->Detach(node);
    nodes_.erase(node->nodeHandle_);
    Touch();
}

void Scene::SetParent(SceneNode& node, SceneNode* parent, bool keepPosition) {
    if (!parent)
        parent = root_.get();
    if (&node == root_.get() || node.IsAbove(*parent))
        return; // a node can't stand below itself
    const Matrix3 world = node.WorldTM();
    node.parent_->Detach(&node);
    parent->Attach(&node);
    if (keepPosition)
        node.SetNodeTM(time, world);
    else
        node.DropWorldTM();
    Touch();
}

std::wstring Scene::UniqueName(std::wstring_view name) {
    auto [stem, digits] = SplitNumber(name);
    digits = std::max<size_t>(digits, 3);
    int& next = nextNumber_[stem];
    for (;;) {
        std::wstring number = std::to_wstring(++next);
        if (number.size() < digits)
            number.insert(0, digits - number.size(), L'0');
        std::wstring candidate = stem + number;
        if (!byName_.contains(candidate))
            return candidate;
    }
}

SceneNode* Scene::FindByName(std::wstring_view name) const {
    const auto found = byName_.find(std::wstring(name));
    return found == byName_.end() ? nullptr : FindByHandle(*found->second.begin());
}

SceneNode* Scene::FindByHandle(ULONG handle) const {
    const auto found = nodes_.find(handle);
    return found == nodes_.end() ? nullptr : found->second.get();
}

std::vector<SceneNode*> Scene::AllNodes() const {
    std::vector<SceneNode*> order;
    order.reserve(nodes_.size());
    const auto pushChildren = [](std::vector<SceneNode*>& to, const SceneNode& of) {
        to.insert(to.end(), of.Children().rbegin(), of.Children().rend());
    };
    std::vector<SceneNode*> pending;
    pushChildren(pending, *root_);
    while (!pending.empty()) {
        SceneNode* node = pending.back();
        pending.pop_back();
        order.push_back(node);
        pushChildren(pending, *node);
    }
    return order;
}

std::vector<SceneNode*> Scene::NodesOf(Object* object) const {
    std::vector<SceneNode*> found;
    const auto users = byObject_.find(Animatable::GetHandleByAnim(object));
    if (users != byObject_.end())
        for (const ULONG handle : users->second)
            found.push_back(FindByHandle(handle));
    return found;
}

const std::vector<Mtl*>& Scene::MaterialsInUse() const {
    if (materialsRevision_ != revision_) {
        materialsInUse_.clear();
        std::unordered_set<Mtl*> seen;
        for (const SceneNode* node : AllNodes())
            if (Mtl* mtl = node->Material(); mtl && seen.insert(mtl).second)
                materialsInUse_.push_back(mtl);
        materialsRevision_ = revision_;
    }
    return materialsInUse_;
}

void Scene::Select(SceneNode* node) {
    if (!node || node->selected_ || node == root_.get())
        return;
    node->selected_ = true;
    selection_.push_back(Animatable::GetHandleByAnim(node));
}

void Scene::ClearSelection() {
    for (SceneNode* node : Selection())
        node->selected_ = false;
    selection_.clear();
}

std::vector<SceneNode*> Scene::Selection() const {
    std::vector<SceneNode*> nodes;
    for (const AnimHandle handle : selection_)
        nodes.push_back(static_cast<SceneNode*>(Animatable::GetAnimByHandle(handle)));
    return nodes;
}

void Scene::Renamed(const SceneNode& node, const std::wstring& oldName) {
    if (&node == root_.get())
        return;
    ForgetName(oldName, node.nodeHandle_);
    byName_[node.Name()].insert(node.nodeHandle_);
}

void Scene::ForgetName(const std::wstring& name, ULONG handle) {
    const auto found = byName_.find(name);
    if (found == byName_.end())
        return;
    found->second.erase(handle);
    if (found->second.empty())
        byName_.erase(found);
}

void Scene::ObjectChanges(SceneNode& node, Object* object) {
    if (const AnimHandle old = node.object_.Handle()) {
        const auto users = byObject_.find(old);
        if (users != byObject_.end()) {
            users->second.erase(node.nodeHandle_);
            if (users->second.empty())
                byObject_.erase(users);
        }
    }
    if (object)
        byObject_[Animatable::GetHandleByAnim(object)].insert(node.nodeHandle_);
    Touch();
}

} // namespace simhost
