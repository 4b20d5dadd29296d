#include "simhost/files/scene_file_loader.h"

#include <unordered_set>

namespace simhost {

namespace {
constexpr int deepestInline = 64;

// clang-format off
const std::initializer_list<std::string_view> topMembers = {
    "format", "version", "file_name", "host", "units", "unit_scale_override", "time", "render",
    "directories", "map_paths", "environment", "renderer", "color_pipeline", "maps", "materials",
    "objects", "modifiers", "nodes", "selection", "faults"};
// clang-format on
} // namespace

void SceneLoader::Load() {
    root_.Object();
    if (!root_.Has("format") || !root_.Member("format").IsText() ||
        root_.Member("format").Utf8() != "simhost-scene")
        root_.Complain("expected \"format\": \"simhost-scene\"");
    const JsonView version = root_.Member("version");
    if (!version.Raw().is_number_integer() || version.Integer() != 1)
        version.Expected("version 1");
    root_.OnlyMembers(topMembers);
    MakeAll("maps", Context::Map, maps_);
    MakeAll("materials", Context::Material, materials_);
    MakeAll("modifiers", Context::Modifier, modifiers_);
    MakeAll("objects", Context::Object, objects_);
    LoadNodes();
    FillAll("maps", Context::Map, maps_);
    FillAll("materials", Context::Material, materials_);
    FillAll("modifiers", Context::Modifier, modifiers_);
    FillAll("objects", Context::Object, objects_);
    CheckStacks();
    for (const NodeEntry& entry : nodes_)
        FillNode(entry);
    LoadSettings();
}

void SceneLoader::MakeAll(const char* member, Context context, Dictionary& made) {
    if (const auto entries = root_.Find(member))
        entries->ForMembers([&](const std::string& id, const JsonView& entry) {
            if (id.empty())
                entry.Complain("an id can't be empty");
            made.emplace(id, Make(entry, context));
        });
}

void SceneLoader::FillAll(const char* member, Context context, const Dictionary& made) {
    if (const auto entries = root_.Find(member))
        entries->ForMembers([&](const std::string& id, const JsonView& entry) {
            Fill(entry, context, made.at(id));
        });
}

void SceneLoader::CheckStacks() const {
    const auto entries = root_.Find("objects");
    if (!entries)
        return;
    entries->ForMembers([&](const std::string& id, const JsonView& entry) {
        std::unordered_set<Object*> seen;
        auto* object = dynamic_cast<Object*>(objects_.at(id).thing);
        while (auto* stack = dynamic_cast<DerivedObject*>(object)) {
            if (!seen.insert(object).second)
                entry.Complain("this stack stands on itself");
            object = stack->Base();
        }
    });
}

ReferenceTarget* SceneLoader::Named(const JsonView& view, const Dictionary& dictionary,
                                    const char* what) const {
    if (!view.IsText())
        view.Expected(std::string("the id of ") + what + ", an entry, or null");
    const auto found = dictionary.find(std::string(view.Utf8()));
    if (found == dictionary.end())
        view.Complain(std::string("no ") + what + " has the id \"" + std::string(view.Utf8()) +
                      "\"");
    return found->second.thing;
}

SceneLoader::Made SceneLoader::MakeInline(const JsonView& view, Context context) {
    if (depth_ >= deepestInline)
        view.Complain("entries are written into each other too deeply");
    ++depth_;
    const Made made = Make(view, context);
    Fill(view, context, made);
    --depth_;
    return made;
}

ReferenceTarget* SceneLoader::Resolve(const JsonView& view, ParamType2 type) {
    if (view.IsNull())
        return nullptr;
    switch (type) {
    case TYPE_TEXMAP:
        return view.IsObject() ? MakeInline(view, Context::Map).thing : Named(view, maps_, "map");
    case TYPE_MTL:
        return view.IsObject() ? MakeInline(view, Context::Material).thing
                               : Named(view, materials_, "material");
    case TYPE_INODE:
        return ResolveNode(view);
    default:
        return ResolveAny(view);
    }
}

ReferenceTarget* SceneLoader::ResolveAny(const JsonView& view) {
    if (view.Has("node")) {
        view.OnlyMembers({"node"});
        const JsonView id = view.Member("node");
        return ResolveNode(id);
    }
    if (view.IsObject())
        return MakeInline(view, Context::SubObject).thing;
    ReferenceTarget* found = nullptr;
    const std::string id(view.Utf8());
    for (const Dictionary* dictionary : {&maps_, &materials_, &objects_, &modifiers_}) {
        const auto at = dictionary->find(id);
        if (at == dictionary->end())
            continue;
        if (found)
            view.Complain("several things have the id \"" + id + "\"");
        found = at->second.thing;
    }
    if (!found)
        view.Complain("nothing has the id \"" + id + "\"");
    return found;
}

Object* SceneLoader::ResolveObject(const JsonView& view) {
    if (view.IsNull())
        return nullptr;
    ReferenceTarget* thing =
        view.IsObject() ? MakeInline(view, Context::Object).thing : Named(view, objects_, "object");
    return dynamic_cast<Object*>(thing);
}

SceneModifier* SceneLoader::ResolveModifier(const JsonView& view, Context context) {
    ReferenceTarget* thing =
        view.IsObject() ? MakeInline(view, context).thing : Named(view, modifiers_, "modifier");
    return dynamic_cast<SceneModifier*>(thing);
}

void SceneLoader::ReadFaults(const JsonView& view, Faults& faults) {
    if (const auto kind = view.Find("throw_kind")) {
        if (kind->Utf8() != "other" && kind->Utf8() != "exception")
            kind->Expected("\"exception\" or \"other\"");
        faults.ThrowOtherKind(kind->Utf8() == "other");
    }
    view.ForElementsOf("answers_nothing", [&](const JsonView& name) {
        const auto call = CallOfName(name.Utf8());
        if (!call || !CanAnswerNothing(*call))
            name.Expected("the name of a call that can answer nothing");
        faults.AddNothing(*call);
    });
    const auto throws = view.Find("throws");
    if (throws && throws->Raw().is_boolean()) {
        if (throws->Bool())
            faults.AddAll();
    } else if (throws) {
        throws->ForElements([&](const JsonView& name) {
            const auto call = CallOfName(name.Utf8());
            if (!call)
                name.Expected("the name of a call that can throw");
            faults.Add(*call);
        });
    }
}

} // namespace simhost
