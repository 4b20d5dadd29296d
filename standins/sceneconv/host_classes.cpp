#include "sceneconv/host_classes.h"

#include "host_catalogue_embedded.h"
#include "simhost/classes/class_name_hash.h"

#include <nlohmann/json.hpp>

#include <map>
#include <string_view>
#include <tuple>

namespace sceneconv {

namespace {

using ClassKey = std::tuple<std::string, std::uint32_t, std::uint32_t>; ///< kind and both ids

std::uint32_t Code(const nlohmann::json& text) {
    return static_cast<std::uint32_t>(std::stoul(text.get<std::string>(), nullptr, 0));
}

/// The names of the catalogue's classes; of several with one id the first counts.
std::map<ClassKey, std::string> ReadCatalogue() {
    using namespace host_catalogue_embedded;
    std::map<ClassKey, std::string> names;
    for (const std::string_view file : {objects_json, lights_json, materials_host_json,
                                        materials_corona_json, materials_vray_json}) {
        const auto catalogue = nlohmann::json::parse(file);
        for (const auto& entry : catalogue.at("classes")) {
            const auto name = entry.at("class").get<std::string>();
            const std::uint64_t hash = simhost::HashClassName(name);
            ClassKey key{entry.at("kind"), hash >> 32U, hash & 0xffffffffU};
            if (entry.contains("class_id")) {
                std::get<1>(key) = Code(entry["class_id"][0]);
                std::get<2>(key) = Code(entry["class_id"][1]);
            }
            names.try_emplace(std::move(key), name);
        }
    }
    return names;
}

} // namespace

const char* KindName(std::uint32_t super) {
    switch (super) {
    case 0x20:
        return "camera";
    case 0x30:
        return "light";
    case 0xc00:
        return "material";
    default:
        return "";
    }
}

std::optional<HostClass> HostClassOf(const FbxObject& object) {
    static const std::map<ClassKey, std::string> names = ReadCatalogue();
    const FbxProperty* a = object.FindOwn("3dsMax|ClassIDa");
    const FbxProperty* b = object.FindOwn("3dsMax|ClassIDb");
    if (!a || !b)
        return std::nullopt;
    HostClass found;
    found.partA = static_cast<std::uint32_t>(a->Integer());
    found.partB = static_cast<std::uint32_t>(b->Integer());
    found.super = static_cast<std::uint32_t>(object.Integer("3dsMax|SuperClassID", 0));
    if (const auto name = names.find({KindName(found.super), found.partA, found.partB});
        name != names.end()) {
        found.name = name->second;
    }
    return found;
}

} // namespace sceneconv
