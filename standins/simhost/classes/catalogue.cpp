#include "simhost/classes/catalogue.h"

#include "simhost/classes/catalogue_reader.h"

namespace simhost {

namespace {

struct Catalogue {
    std::vector<ClassPtr> classes;
    std::unordered_map<std::wstring, std::vector<ClassPtr>> byName;   // display names
    std::unordered_map<std::wstring, std::vector<ClassPtr>> byScript; // script names
};

const Catalogue& TheCatalogue() {
    static const Catalogue catalogue = [] {
        Catalogue made;
        made.classes = ReadCatalogue();
        for (const ClassPtr& info : made.classes) {
            made.byName[info->name].push_back(info);
            made.byScript[info->scriptName].push_back(info);
        }
        return made;
    }();
    return catalogue;
}

struct KindRow {
    std::string_view name;
    SClass_ID kind;
};

constexpr KindRow kinds[] = {{"material", MATERIAL_CLASS_ID},
                             {"texmap", TEXMAP_CLASS_ID},
                             {"geometry", GEOMOBJECT_CLASS_ID},
                             {"light", LIGHT_CLASS_ID},
                             {"camera", CAMERA_CLASS_ID},
                             {"shape", SHAPE_CLASS_ID},
                             {"helper", HELPER_CLASS_ID},
                             {"modifier", OSM_CLASS_ID},
                             {"wsm", WSM_CLASS_ID},
                             {"renderer", RENDERER_CLASS_ID},
                             {"uvgen", UVGEN_CLASS_ID},
                             {"output", TEXOUTPUT_CLASS_ID},
                             {"shader", SHADER_KIND},
                             {"reference", REF_TARGET_CLASS_ID}};

} // namespace

ClassPtr FindClass(std::wstring_view name, SClass_ID kind) {
    for (const ClassPtr& info : FindClasses(name))
        if (info->kind == kind)
            return info;
    return nullptr;
}

std::vector<ClassPtr> FindClasses(std::wstring_view name) {
    const Catalogue& catalogue = TheCatalogue();
    std::vector<ClassPtr> found;
    const std::wstring key(name);
    if (const auto at = catalogue.byName.find(key); at != catalogue.byName.end())
        found = at->second;
    if (const auto at = catalogue.byScript.find(key); at != catalogue.byScript.end())
        for (const ClassPtr& info : at->second)
            if (info->name != key)
                found.push_back(info);
    return found;
}

ClassPtr FindClassById(Class_ID id, SClass_ID kind) {
    for (const ClassPtr& info : TheCatalogue().classes)
        if (info->classId == id && info->kind == kind)
            return info;
    return nullptr;
}

ClassPtr FindSubObjectClass(std::wstring_view name) {
    for (const ClassPtr& info : FindClasses(name))
        if (info->kind == UVGEN_CLASS_ID || info->kind == TEXOUTPUT_CLASS_ID ||
            info->kind == SHADER_KIND || info->kind == REF_TARGET_CLASS_ID)
            return info;
    return nullptr;
}

const std::vector<ClassPtr>& AllClasses() {
    return TheCatalogue().classes;
}

SClass_ID KindOfName(std::string_view name) {
    for (const KindRow& row : kinds)
        if (row.name == name)
            return row.kind;
    return 0;
}

std::string_view NameOfKind(SClass_ID kind) {
    for (const KindRow& row : kinds)
        if (row.kind == kind)
            return row.name;
    return "other";
}

bool IsObjectKind(SClass_ID kind) {
    return kind == GEOMOBJECT_CLASS_ID || kind == LIGHT_CLASS_ID || kind == CAMERA_CLASS_ID ||
           kind == SHAPE_CLASS_ID || kind == HELPER_CLASS_ID;
}

} // namespace simhost
