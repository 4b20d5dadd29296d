#include "simhost/bindings/scene_collections.h"

#include "maxapi.h"
#include "simhost/bindings/scene_value.h"
#include "simhost/script/convert.h"
#include "simhost/script/interpreter.h"
#include "simhost/script/raise.h"
#include "simhost/script/text.h"

namespace simhost::script {
namespace {

class NodeSetValue final : public Object {
  public:
    NodeSetValue(std::wstring text, std::function<std::vector<SceneNode*>()> list, bool ofTree)
        : text_(std::move(text)), list_(std::move(list)), ofTree_(ofTree) {}

    void Print(Printer& printer, bool) const override { printer.Put(text_); }
    [[nodiscard]] std::wstring ClassName() const override { return L"ObjectSet"; }
    [[nodiscard]] bool IsCollection() const override { return true; }

    bool GetProperty(Interpreter&, const std::wstring& name, Value& result) override {
        if (name == L"count")
            result = Value::Integer(static_cast<int32_t>(Nodes(!ofTree_).size()));
        else if (name == L"isempty")
            result = Value::Bool(Nodes(!ofTree_).empty());
        else
            return false;
        return true;
    }
    // A property of a set is written to all of its nodes.
    bool SetProperty(Interpreter& interpreter, const std::wstring& name,
                     const Value& value) override {
        std::vector<Value> nodes;
        for (SceneNode* node : Nodes(!ofTree_))
            nodes.push_back(WrapThing(node));
        for (const Value& node : nodes)
            interpreter.SetProperty(node, name, value);
        return true;
    }
    bool GetIndex(Interpreter&, const Value& index, Value& result) override {
        const size_t position = ToPosition(index);
        const auto& nodes = Nodes(!ofTree_);
        result = position < nodes.size() ? WrapThing(nodes[position]) : Value();
        return true;
    }
    bool Item(Interpreter&, size_t position, Value& result) override {
        const auto& nodes = Nodes(position == 0 && !ofTree_);
        if (position >= nodes.size())
            return false;
        result = WrapThing(nodes[position]);
        return true;
    }

  private:
    // Only the tree counts as a change of the scene; names and selection are asked at the start
    // of every loop. No two scenes share a revision, so it tells another scene as well.
    const std::vector<SceneNode*>& Nodes(bool ask) {
        const Scene& scene = Scene::Current();
        if (ask || scene.Revision() != revision_) {
            nodes_ = list_();
            revision_ = scene.Revision();
        }
        return nodes_;
    }

    std::wstring text_;
    std::function<std::vector<SceneNode*>()> list_;
    bool ofTree_;
    std::vector<SceneNode*> nodes_;
    unsigned long revision_ = 0; // that of no scene
};

class MaterialLibrary final : public Object {
  public:
    void Print(Printer& printer, bool) const override { printer.Put(L"SceneMaterials"); }
    [[nodiscard]] std::wstring ClassName() const override { return L"MaterialLibrary"; }
    [[nodiscard]] bool IsCollection() const override { return true; }

    bool GetProperty(Interpreter&, const std::wstring& name, Value& result) override {
        if (name != L"count")
            return false;
        result = Value::Integer(Library().Count());
        return true;
    }
    bool GetIndex(Interpreter&, const Value& index, Value& result) override {
        MtlBaseLib& library = Library();
        if (const auto* name = index.As<StringObject>()) {
            for (int i = 0; i < library.Count() && result.IsUndefined(); ++i) {
                MtlBase* mtl = library[i];
                if (mtl && EqualNoCase(mtl->GetName().data(), name->Text()))
                    result = WrapThing(mtl);
            }
            return true;
        }
        const size_t position = ToPosition(index);
        if (position < static_cast<size_t>(library.Count()))
            result = WrapThing(library[static_cast<int>(position)]);
        return true;
    }
    bool Item(Interpreter&, size_t position, Value& result) override {
        MtlBaseLib& library = Library();
        if (position >= static_cast<size_t>(library.Count()))
            return false;
        result = WrapThing(library[static_cast<int>(position)]);
        return true;
    }

  private:
    static MtlBaseLib& Library() { return *GetCOREInterface()->GetSceneMtls(); }
};

std::vector<SceneNode*> NodesNamed(const std::wstring& foldedPattern) {
    std::vector<SceneNode*> nodes;
    for (SceneNode* node : Scene::Current().AllNodes()) {
        if (MatchesWildcards(Lower(node->Name()), foldedPattern))
            nodes.push_back(node);
    }
    return nodes;
}

} // namespace

Value NodeSet(std::wstring text, std::function<std::vector<SceneNode*>()> list, bool ofTree) {
    return {std::make_shared<NodeSetValue>(std::move(text), std::move(list), ofTree)};
}

Value ChildrenOf(SceneNode& node) {
    const Ref<SceneNode> parent(&node);
    return NodeSet(
        L"<children>",
        [parent] {
            const SceneNode* owner = parent.Get();
            return owner ? owner->Children() : std::vector<SceneNode*>();
        },
        true);
}

Value ResolveNodePath(const std::wstring& pattern) {
    if (pattern.empty() || EqualNoCase(pattern, L"selection")) {
        const std::vector<SceneNode*> selected = Scene::Current().Selection();
        if (pattern.empty() && selected.empty())
            return {};
        if (pattern.empty() && selected.size() == 1)
            return WrapThing(selected[0]);
        return NodeSet(
            L"$selection", [] { return Scene::Current().Selection(); }, false);
    }
    std::wstring name = pattern;
    if (name.find(L'/') != std::wstring::npos || name.find(L"...") != std::wstring::npos)
        RaiseRuntime(L"Runtime error: this host does not support node paths with levels: $" +
                     pattern);
    const bool wild = name.find_first_of(L"*?") != std::wstring::npos;
    std::erase(name, L'\'');
    name = Lower(name);
    if (wild)
        return NodeSet(
            L"$" + pattern, [name] { return NodesNamed(name); }, false);
    const std::vector<SceneNode*> found = NodesNamed(name);
    return found.empty() ? Value() : WrapThing(found[0]);
}

Value SceneMaterialLibrary() {
    return {std::make_shared<MaterialLibrary>()};
}

} // namespace simhost::script
