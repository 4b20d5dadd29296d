#include "simhost/classes/catalogue.h"

#include "simhost/classes/catalogue_reader.h"
#include "simhost/classes/kinds.h"

#include <unordered_map>

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

} // namespace simhost
