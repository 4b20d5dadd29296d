#include "simhost/bindings/node_set.h"

#include "simhost/bindings/scene_value.h"
#include "simhost/script/convert.h"

namespace simhost::script {
namespace {

class NodeSetValue final : public Object {
  public:
    NodeSetValue(std::wstring text, std::function<std::vector<SceneNode*>()> list, bool ofTree)
        : text_(std::move(text)), list_(std::move(list)), ofTree_(ofTree) {}

    void Print(Printer& printer, bool) const override { printer.Append(text_); }
    [[nodiscard]] std::wstring ClassName() const override { return L"ObjectSet"; }
    [[nodiscard]] bool IsCollection() const override { return true; }

    std::optional<Value> FindProperty(const std::wstring& name) override {
        return name == L"count" ? std::optional(Value::Count(Nodes(!ofTree_).size()))
                                : std::nullopt;
    }
    std::optional<Value> FindElement(const Value& index) override {
        const size_t position = ToPosition(index);
        const auto& nodes = Nodes(!ofTree_);
        return position < nodes.size() ? WrapThing(nodes[position]) : Value();
    }
    std::optional<Value> FindItem(size_t position) override {
        const auto& nodes = Nodes(position == 0 && !ofTree_);
        return position < nodes.size() ? std::optional(WrapThing(nodes[position])) : std::nullopt;
    }

  private:
    // Only the tree counts as a change of the scene, names do not. No two scenes share a revision,
    // so it tells another scene as well.
    const std::vector<SceneNode*>& Nodes(bool ask) {
        const unsigned long revision = Scene::Current().Revision();
        if (ask || revision != revision_)
            nodes_ = list_();
        revision_ = revision;
        return nodes_;
    }

    std::wstring text_;
    std::function<std::vector<SceneNode*>()> list_;
    bool ofTree_;
    std::vector<SceneNode*> nodes_;
    unsigned long revision_ = 0; // that of no scene
};

} // namespace

Value NodeSet(std::wstring text, std::function<std::vector<SceneNode*>()> list, bool ofTree) {
    return {std::make_shared<NodeSetValue>(std::move(text), std::move(list), ofTree)};
}

} // namespace simhost::script
