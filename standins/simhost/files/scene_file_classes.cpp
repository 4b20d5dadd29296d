// Which class an entry has: one of the catalogue, one of the catalogue as the entry changes it, or
// one that only the file knows. Entries with the same class and definitions share it, and with it
// the block descriptors.
#include "simhost/classes/catalogue.h"
#include "simhost/classes/kinds.h"
#include "simhost/files/scene_file_loader.h"

namespace simhost {

namespace {

/// The kind of a class that only the file knows; 0 when the file has to say.
SClass_ID DefaultKind(Context context) {
    switch (context) {
    case Context::Map:
        return TEXMAP_CLASS_ID;
    case Context::Material:
        return MATERIAL_CLASS_ID;
    case Context::Modifier:
        return OSM_CLASS_ID;
    case Context::SpaceModifier:
        return WSM_CLASS_ID;
    case Context::Renderer:
        return RENDERER_CLASS_ID;
    case Context::SubObject:
        return REF_TARGET_CLASS_ID;
    case Context::Object:
        break;
    }
    return 0;
}

bool KindFits(SClass_ID kind, Context context) {
    switch (context) {
    case Context::Object:
        return IsObjectKind(kind);
    case Context::Modifier:
    case Context::SpaceModifier:
        return kind == OSM_CLASS_ID || kind == WSM_CLASS_ID;
    case Context::SubObject:
        return true;
    default:
        return kind == DefaultKind(context);
    }
}

/// The kind that the entry asks for by name; 0 when it does not.
SClass_ID AskedKind(const JsonView& entry, Context context) {
    const auto view = entry.Find("super_class");
    if (!view || !view->IsText())
        return 0;
    const SClass_ID kind = KindOfName(view->Utf8());
    if (kind == 0)
        view->Expected("a kind of class");
    if (!KindFits(kind, context))
        view->Complain("a class of this kind can't stand here");
    return kind;
}

ClassPtr FromCatalogue(const JsonView& entry, Context context, SClass_ID asked) {
    for (const ClassPtr& info : FindClasses(entry.Member("class").Text()))
        if (asked ? info->kind == asked : KindFits(info->kind, context))
            return info;
    return nullptr;
}

// What makes the class of an entry another one than the catalogue's.
constexpr const char* changing[] = {"blocks",   "replace_blocks", "omit_params",     "slot_list",
                                    "class_id", "super_class",    "localized_class", "converts"};

/// An element of "blocks" or "slot_list" without what is of the thing rather than of its class.
void KeepClassAlone(Json& element) {
    for (const char* member : {"throws", "answers_nothing", "map", "on"})
        element.erase(member);
    if (!element.contains("params") || !element["params"].is_array())
        return;
    for (Json& param : element["params"])
        if (param.is_object())
            param.erase("value");
}

/// Equal texts, equal classes.
std::string Signature(const JsonView& entry, SClass_ID kind) {
    Json key = Json::object();
    for (const char* member : changing)
        if (const auto view = entry.Find(member)) {
            Json& copy = key[member] = view->Raw();
            if (copy.is_array())
                for (Json& element : copy)
                    if (element.is_object())
                        KeepClassAlone(element);
        }
    if (const auto roles = entry.Find("sub_objects"))
        for (const auto& item : roles->Raw().items())
            key["sub_objects"].push_back(item.key());
    return std::to_string(kind) + "|" + std::string(entry.Member("class").Utf8()) + "|" +
           key.dump(-1, ' ', false, Json::error_handler_t::replace);
}

} // namespace

const ClassVariant& SceneLoader::ClassOf(const JsonView& entry, Context context) {
    const JsonView name = entry.Member("class");
    (void)name.Text();
    const SClass_ID asked = AskedKind(entry, context);
    const ClassPtr base = FromCatalogue(entry, context, asked);
    const SClass_ID kind = base ? base->kind : asked ? asked : DefaultKind(context);
    if (!base && !entry.Has("blocks"))
        name.Complain("the class \"" + std::string(name.Utf8()) +
                      "\" is not known; expected a class of the catalogue, or its \"blocks\"");
    if (kind == 0)
        entry.Complain("an object of an unknown class needs its \"super_class\"");
    const auto [at, fresh] = variants_.try_emplace(Signature(entry, kind));
    if (!fresh)
        return at->second;
    const bool changed =
        !base || std::any_of(std::begin(changing), std::end(changing),
                             [&](const char* member) { return entry.Has(member); });
    if (changed)
        at->second = BuildVariant(entry, base, kind);
    else
        at->second.info = base;
    return at->second;
}

} // namespace simhost
