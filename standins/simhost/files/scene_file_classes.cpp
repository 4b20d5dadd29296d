// Which class an entry has: one of the catalogue, one of the catalogue as the entry changes it, or
// one that only the file knows. Entries with the same class and definitions share it, and with it
// the block descriptors.
#include "simhost/classes/catalogue.h"
#include "simhost/files/scene_file_loader.h"

namespace simhost {

namespace {

bool KindFits(SClass_ID kind, Context context) {
    switch (context) {
    case Context::Map:
        return kind == TEXMAP_CLASS_ID;
    case Context::Material:
        return kind == MATERIAL_CLASS_ID;
    case Context::Object:
        return IsObjectKind(kind);
    case Context::Modifier:
    case Context::SpaceModifier:
        return kind == OSM_CLASS_ID || kind == WSM_CLASS_ID;
    case Context::Renderer:
        return kind == RENDERER_CLASS_ID;
    case Context::SubObject:
        return true;
    }
    return false;
}

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

/// The kind that the entry asks for by name; 0 when it does not.
SClass_ID AskedKind(const JsonView& entry, Context context) {
    if (!entry.Has("super_class"))
        return 0;
    const JsonView view = entry.Member("super_class");
    if (!view.IsText())
        return 0;
    const SClass_ID kind = KindOfName(view.Utf8());
    if (kind == 0)
        view.Expected("a kind of class");
    if (!KindFits(kind, context))
        view.Complain("a class of this kind can't stand here");
    return kind;
}

ClassPtr FromCatalogue(const JsonView& entry, Context context, SClass_ID asked) {
    for (const ClassPtr& info : FindClasses(entry.Member("class").Text()))
        if (asked ? info->kind == asked : KindFits(info->kind, context))
            return info;
    return nullptr;
}

/// Everything of an entry that makes its class another one; equal texts, equal classes.
std::string Signature(const JsonView& entry, SClass_ID kind) {
    static constexpr const char* changing[] = {"blocks",          "replace_blocks", "omit_params",
                                               "slot_list",       "class_id",       "super_class",
                                               "localized_class", "converts",       "sub_objects"};
    Json key = Json::object();
    for (const char* member : changing) {
        if (!entry.Has(member))
            continue;
        Json copy = entry.Raw().at(member);
        if (copy.is_array())
            for (Json& element : copy) {
                if (!element.is_object())
                    continue;
                element.erase("throws");
                element.erase("answers_nothing");
                element.erase("map");
                element.erase("on");
                if (element.contains("params") && element["params"].is_array())
                    for (Json& param : element["params"])
                        if (param.is_object())
                            param.erase("value");
            }
        if (std::string_view(member) == "sub_objects" && copy.is_object()) {
            Json roles = Json::array();
            for (const auto& item : copy.items())
                roles.push_back(item.key());
            copy = roles;
        }
        key[member] = copy;
    }
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
    const bool changed = !base || entry.Has("blocks") || entry.Has("omit_params") ||
                         entry.Has("slot_list") || entry.Has("class_id") ||
                         entry.Has("super_class") || entry.Has("localized_class") ||
                         entry.Has("converts") || entry.Has("replace_blocks");
    if (changed)
        at->second = BuildVariant(entry, base, kind);
    else
        at->second.info = base;
    return at->second;
}

} // namespace simhost
