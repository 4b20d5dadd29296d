// What is done to nodes: deleting, selecting, hiding, grouping, user properties.
#include "simhost/bindings/bindings.h"
#include "simhost/bindings/scene_ops.h"
#include "simhost/bindings/scene_value.h"
#include "simhost/script/convert.h"
#include "simhost/script/interpreter.h"
#include "simhost/script/raise.h"
#include "simhost/script/text.h"

namespace simhost::script {
namespace {

void DefineSwitch(Interpreter& in, const wchar_t* name, bool SceneNode::Flags::*flag, bool on) {
    in.DefineMapped(name, 1, 1, [name, flag, on](Interpreter&, Arguments& args) {
        NodeOf(name, args.items[0]).flags.*flag = on;
        return Value::Ok();
    });
}

// Whether one line of user properties is `key = ...`, keys in any case.
bool IsLineOf(std::wstring_view line, std::wstring_view key) {
    const size_t equals = line.find(L'=');
    if (equals == std::wstring_view::npos)
        return false;
    size_t end = equals;
    while (end > 0 && IsBlank(line[end - 1]))
        --end;
    return EqualNoCase(line.substr(0, end), key);
}

void SetUserProperty(SceneNode& node, const std::wstring& key, const std::wstring& text) {
    std::wstring buffer;
    const std::wstring& old = node.userProps;
    for (size_t start = 0; start < old.size();) {
        const size_t end = std::min(old.find(L'\n', start), old.size());
        const std::wstring line = old.substr(start, end - start);
        if (!line.empty() && !IsLineOf(line, key))
            buffer += line + L"\n";
        start = end + 1;
    }
    node.userProps = buffer + key + L" = " + text + L"\n";
}

void RegisterUserProperties(Interpreter& in) {
    in.Define(L"getUserProp", 2, 2, [](Interpreter&, Arguments& args) {
        SceneNode& node = NodeOf(L"getUserProp", args.items[0]);
        MSTR value;
        if (!node.GetUserPropString(MSTR(ToNameText(args.items[1])), value))
            return Value();
        return MakeString(value.data());
    });
    in.Define(L"setUserProp", 3, 3, [](Interpreter&, Arguments& args) {
        SetUserProperty(NodeOf(L"setUserProp", args.items[0]), ToNameText(args.items[1]),
                        TextOf(args.items[2]));
        return Value::Ok();
    });
    in.Define(L"getUserPropBuffer", 1, 1, [](Interpreter&, Arguments& args) {
        return MakeString(NodeOf(L"getUserPropBuffer", args.items[0]).userProps);
    });
    in.Define(L"setUserPropBuffer", 2, 2, [](Interpreter&, Arguments& args) {
        NodeOf(L"setUserPropBuffer", args.items[0]).userProps = ToString(args.items[1]);
        return Value::Ok();
    });
}

void RegisterSelection(Interpreter& in) {
    in.Define(L"clearSelection", 0, 0, [](Interpreter&, Arguments&) {
        Scene::Current().ClearSelection();
        return Value::Ok();
    });
    const auto select = [](Interpreter& i, const Value& what, const wchar_t* name, bool on) {
        const bool many = what.AsObject() && what.AsObject()->IsCollection();
        for (const Value& item : many ? i.Items(what) : std::vector<Value>{what})
            SelectNode(NodeOf(name, item), on);
        return Value::Ok();
    };
    in.Define(L"select", 1, 1, [select](Interpreter& i, Arguments& args) {
        // The set may be the selection itself.
        const Value what = args.items[0].AsObject() && args.items[0].AsObject()->IsCollection()
                               ? MakeArray(i.Items(args.items[0]))
                               : args.items[0];
        Scene::Current().ClearSelection();
        return select(i, what, L"select", true);
    });
    in.Define(L"selectMore", 1, 1, [select](Interpreter& i, Arguments& args) {
        return select(i, args.items[0], L"selectMore", true);
    });
    in.Define(L"deselect", 1, 1, [select](Interpreter& i, Arguments& args) {
        return select(i, args.items[0], L"deselect", false);
    });
}

} // namespace

void RegisterNodes(Interpreter& in) {
    in.DefineMapped(L"delete", 1, 1, [](Interpreter&, Arguments& args) {
        SceneNode& node = NodeOf(L"delete", args.items[0]);
        if (node.IsRootNode())
            RaiseNoFunction(L"delete", args.items[0]);
        node.Owner().DeleteNode(&node);
        return Value::Ok();
    });
    in.Define(L"isValidNode", 1, 1, [](Interpreter&, Arguments& args) {
        const auto* node = args.items[0].As<NodeValue>();
        return Value::Bool(node && node->Exists());
    });
    in.Define(L"isValidObj", 1, 1, [](Interpreter&, Arguments& args) {
        const auto* thing = args.items[0].As<SceneValue>();
        return Value::Bool(thing && thing->Exists());
    });
    in.Define(L"isDeleted", 1, 1, [](Interpreter&, Arguments& args) {
        const auto* thing = args.items[0].As<SceneValue>();
        return Value::Bool(thing && !thing->Exists());
    });
    DefineSwitch(in, L"hide", &SceneNode::Flags::hidden, true);
    DefineSwitch(in, L"unhide", &SceneNode::Flags::hidden, false);
    DefineSwitch(in, L"freeze", &SceneNode::Flags::frozen, true);
    DefineSwitch(in, L"unfreeze", &SceneNode::Flags::frozen, false);
    RegisterSelection(in);
    RegisterUserProperties(in);
}

namespace {

void DefineQuestion(Interpreter& in, const wchar_t* name, bool (*ask)(SceneNode&)) {
    in.Define(name, 1, 1, [name, ask](Interpreter&, Arguments& args) {
        return Value::Bool(ask(NodeOf(name, args.items[0])));
    });
}

Value GroupNodes(Interpreter& in, Arguments& args) {
    std::vector<SceneNode*> members;
    const Value& what = args.items[0];
    const bool many = what.AsObject() && what.AsObject()->IsCollection();
    for (const Value& item : many ? in.Items(what) : std::vector<Value>{what})
        members.push_back(&NodeOf(L"group", item));
    Scene& scene = Scene::Current();
    const Value* name = args.Keyword(L"name");
    return WrapThing(scene.Group(members, name ? ToString(*name) : scene.UniqueName(L"Group")));
}

// One level; what is no head stays as it is.
Value Ungroup(Interpreter&, Arguments& args) {
    SceneNode& node = NodeOf(L"ungroup", args.items[0]);
    node.Owner().Ungroup(&node);
    return Value::Ok();
}

Value ExplodeGroup(Interpreter&, Arguments& args) {
    std::vector<SceneNode*> open{&NodeOf(L"explodeGroup", args.items[0])};
    while (!open.empty()) {
        SceneNode* node = open.back();
        open.pop_back();
        if (!node->flags.groupHead)
            continue;
        const std::vector<SceneNode*> members = node->Children();
        open.insert(open.end(), members.begin(), members.end());
        node->Owner().Ungroup(node);
    }
    return Value::Ok();
}

} // namespace

void RegisterGroups(Interpreter& in) {
    DefineQuestion(in, L"isGroupHead", [](SceneNode& node) { return node.flags.groupHead; });
    DefineQuestion(in, L"isGroupMember", [](SceneNode& node) { return node.flags.groupMember; });
    DefineQuestion(in, L"isOpenGroupHead",
                   [](SceneNode& node) { return node.flags.groupHead && node.flags.groupOpen; });
    DefineQuestion(in, L"isOpenGroupMember", [](SceneNode& node) {
        return node.flags.groupMember && node.Parent() && node.Parent()->flags.groupOpen;
    });
    in.Define(L"setGroupOpen", 2, 2, [](Interpreter&, Arguments& args) {
        SceneNode& node = NodeOf(L"setGroupOpen", args.items[0]);
        const bool open = ToBool(args.items[1]);
        if (node.flags.groupHead)
            node.flags.groupOpen = open;
        return Value::Ok();
    });
    in.Define(L"setGroupHead", 2, 2, [](Interpreter&, Arguments& args) {
        NodeOf(L"setGroupHead", args.items[0]).flags.groupHead = ToBool(args.items[1]);
        return Value::Ok();
    });
    in.Define(L"setGroupMember", 2, 2, [](Interpreter&, Arguments& args) {
        NodeOf(L"setGroupMember", args.items[0]).flags.groupMember = ToBool(args.items[1]);
        return Value::Ok();
    });
    in.Define(L"group", 1, 1, GroupNodes);
    in.DefineMapped(L"ungroup", 1, 1, Ungroup);
    in.DefineMapped(L"explodeGroup", 1, 1, ExplodeGroup);
}

} // namespace simhost::script
