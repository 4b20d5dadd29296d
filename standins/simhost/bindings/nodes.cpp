// Sets of nodes, and what is done to nodes.
#include "simhost/bindings/bindings.h"
#include "simhost/bindings/node_set.h"
#include "simhost/bindings/scene_value.h"
#include "simhost/script/interpreter.h"
#include "simhost/script/raise.h"
#include "simhost/script/text.h"

namespace simhost::script {
namespace {

// The node that `$name` means, or the set when it holds wildcards.
Value ReadPath(const std::wstring& pattern) {
    const auto named = [folded = Lower(pattern)] {
        std::vector<SceneNode*> nodes;
        for (SceneNode* node : Scene::Current().AllNodes()) {
            if (MatchesWildcards(Lower(node->Name()), folded))
                nodes.push_back(node);
        }
        return nodes;
    };
    if (pattern.find_first_of(L"*?") != std::wstring::npos)
        return NodeSet(L"$" + pattern, named, false);
    const std::vector<SceneNode*> found = named();
    return found.empty() ? Value() : WrapThing(found[0]);
}

Value Delete(Interpreter&, Arguments& args) {
    SceneNode& node = NodeOf(L"delete", args.items[0]);
    if (node.IsRootNode())
        RaiseNoFunction(L"delete", args.items[0]);
    node.Owner().DeleteNode(&node);
    return Value::Ok();
}

Value IsValidNode(Interpreter&, Arguments& args) {
    const auto* node = args.items[0].As<NodeValue>();
    return Value::Bool(node && node->Exists());
}

// One level; what is no head stays as it is.
Value Ungroup(Interpreter&, Arguments& args) {
    SceneNode& node = NodeOf(L"ungroup", args.items[0]);
    node.Owner().Ungroup(&node);
    return Value::Ok();
}

} // namespace

void RegisterNodes(Interpreter& in) {
    const Value objects = NodeSet(
        L"$*", [] { return Scene::Current().AllNodes(); }, true);
    in.DefineVariable(L"objects", [objects] { return objects; });
    in.DefineVariable(L"rootNode", [] { return WrapThing(&Scene::Current().Root()); });
    in.paths = ReadPath;
    in.DefineMapped(L"delete", 1, 1, Delete);
    in.Define(L"isValidNode", 1, 1, IsValidNode);
    in.Define(L"isGroupHead", 1, 1, [](Interpreter&, Arguments& args) {
        return Value::Bool(NodeOf(L"isGroupHead", args.items[0]).flags.groupHead);
    });
    in.Define(L"isGroupMember", 1, 1, [](Interpreter&, Arguments& args) {
        return Value::Bool(NodeOf(L"isGroupMember", args.items[0]).flags.groupMember);
    });
    in.DefineMapped(L"ungroup", 1, 1, Ungroup);
    in.Define(L"clearSelection", 0, 0, [](Interpreter&, Arguments&) {
        Scene::Current().ClearSelection();
        return Value::Ok();
    });
}

} // namespace simhost::script
