#include "sceneconv/host_params.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdio>
#include <iterator>
#include <set>

namespace sceneconv {

namespace {

constexpr std::string_view prefix = "3dsMax|";

/// A property's place: block, name, and the index when it is one entry of a table.
struct Place {
    std::string block;
    std::string name;
    int index = -1;
};

std::optional<Place> PlaceOf(std::string_view property) {
    if (!property.starts_with(prefix))
        return std::nullopt;
    property.remove_prefix(prefix.size());
    const std::size_t cut = property.find('|');
    if (cut == std::string_view::npos)
        return std::nullopt;
    Place place{std::string(property.substr(0, cut)), std::string(property.substr(cut + 1)), -1};
    const std::size_t last = place.name.rfind('|');
    const std::string tail = last == std::string::npos ? "" : place.name.substr(last + 1);
    if (!tail.empty() && tail.size() < 7 &&
        std::all_of(tail.begin(), tail.end(), [](char c) { return c >= '0' && c <= '9'; })) {
        place.index = std::stoi(tail);
        place.name.resize(last);
    }
    return place;
}

std::string Lower(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), [](char c) {
        return static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    });
    return text;
}

/// The host's types and the names that FBX files have for them.
const std::pair<const char*, std::set<std::string_view>> typeRows[] = {
    {"float", {"Float", "float", "double", "Number", "Real", "FieldOfView"}},
    {"int", {"Integer", "int", "Short", "enum", "Enum", "Long"}},
    {"bool", {"Bool", "bool"}},
    {"rgba", {"Color", "ColorRGB"}},
    {"frgba", {"ColorAndAlpha", "ColorRGBA"}},
    {"point2", {"Vector2D"}},
    {"point3", {"Vector3D", "Vector"}},
    {"point4", {"Vector4D"}},
    {"string", {"KString"}},
    {"filename", {"Url", "XRefUrl"}},
    {"timevalue", {"KTime", "Time"}},
    {"reference", {"Reference", "object"}},
};

/// The host's type; empty for a property that holds no value (Compound and the like).
std::string TypeOf(const FbxProperty& property) {
    const auto* row = std::find_if(std::begin(typeRows), std::end(typeRows),
                                   [&](const auto& r) { return r.second.contains(property.type); });
    const std::string type = row == std::end(typeRows) ? "" : row->first;
    const bool isFile = property.label == "Url" || property.label == "XRefUrl" ||
                        Lower(property.name).find("file") != std::string::npos;
    return type == "string" && isFile ? "filename" : type;
}

/// What an empty reference would refer to: its name is all there is to tell.
std::string EmptyReferenceType(const std::string& name) {
    const std::string lower = Lower(name);
    const auto has = [&](const char* part) { return lower.find(part) != std::string::npos; };
    if (has("mtl") || has("material"))
        return "mtl";
    return has("map") || has("tex") ? "texmap" : "reftarg";
}

Json Numbers(const FbxProperty& property, std::size_t count) {
    Json list = Json::array();
    for (std::size_t i = 0; i < count; ++i) {
        // A colour that lost its alpha is opaque.
        list.push_back(i < property.values.size() ? Tidy(property.Number(i)) : 1.0);
    }
    return list;
}

Json ValueOf(const FbxProperty& property, const std::string& type) {
    constexpr std::int64_t ktimeInTick = 9622116; // 46186158000 and 4800 in a second
    if (type == "float")
        return Tidy(property.Number());
    if (type == "int")
        return static_cast<std::int32_t>(property.Integer());
    if (type == "timevalue")
        return static_cast<std::int32_t>(property.Integer() / ktimeInTick);
    if (type == "bool")
        return property.Integer() != 0;
    if (type == "string" || type == "filename")
        return ToUtf8(property.Text());
    return Numbers(property, type == "point2" ? 2 : type == "frgba" || type == "point4" ? 4 : 3);
}

/// Puts a value into `blocks`, which hold {"type", "value"} by block and name. Later values win:
/// connections come behind the empty references that they fill.
void Put(Json& blocks, const Place& place, const std::string& type, Json value) {
    Json& param = blocks[place.block][place.name];
    if (place.index < 0) {
        param["type"] = type;
        param["value"] = std::move(value);
        return;
    }
    constexpr std::size_t longest = 10000;
    const auto index = static_cast<std::size_t>(place.index);
    param["type"] = type + "_tab";
    Json& list = param["value"];
    if (!list.is_array())
        list = Json::array();
    while (list.size() <= index && list.size() < longest)
        list.push_back(value); // gaps do not happen; one would repeat the next entry
    if (index < longest)
        list[index] = std::move(value);
}

/// What stands under names as the scene file lists it: an entry a name.
Json NamedList(const Json& members, const std::function<Json(const Json&)>& entryOf) {
    Json list = Json::array();
    for (const auto& [name, member] : members.items()) {
        Json entry = {{"name", ToUtf8(name)}};
        entry.update(entryOf(member));
        list.push_back(std::move(entry));
    }
    return list;
}

Json CollectBlocks(const FbxObject& object, const Reference& reference) {
    Json blocks = Json::object();
    for (const FbxProperty& property : object.properties) {
        const std::optional<Place> place = PlaceOf(property.name);
        const std::string type = TypeOf(property);
        if (place && type == "reference")
            Put(blocks, *place, EmptyReferenceType(place->name), nullptr);
        else if (place && !type.empty())
            Put(blocks, *place, type, ValueOf(property, type));
    }
    for (const FbxConnection& source : object.Sources()) {
        if (const std::optional<Place> place = PlaceOf(source.property)) {
            const bool isMaterial = source.object->kind == "Material";
            Put(blocks, *place, isMaterial ? "mtl" : "texmap", reference(*source.object));
        }
    }
    return NamedList(blocks, [](const Json& params) -> Json {
        return {{"params", NamedList(params, [](const Json& param) { return param; })}};
    });
}

/// Slots of a class that is not in the catalogue: its texture parameters, with the switch that
/// the host's classes usually have beside them.
Json SlotList(const Json& blocks) {
    Json slots = Json::array();
    for (const Json& block : blocks) {
        for (const Json& param : block["params"]) {
            if (param["type"] != "texmap")
                continue;
            const std::string& name = param["name"].get_ref<const std::string&>();
            Json slot = {{"name", name}, {"param", name}};
            for (const Json& other : block["params"]) {
                if (other["type"] == "bool" &&
                    (other["name"] == name + "_on" || other["name"] == name + "On")) {
                    slot["on_param"] = other["name"];
                }
            }
            slots.push_back(std::move(slot));
        }
    }
    return slots;
}

} // namespace

Json HostEntry(const FbxObject& object, const HostClass& hostClass, const std::string& name,
               const Reference& reference) {
    Json blocks = CollectBlocks(object, reference);
    const bool known = !hostClass.name.empty();
    std::array<char, 32> ids{};
    std::snprintf(ids.data(), ids.size(), "Class 0x%08x,0x%08x", hostClass.partA, hostClass.partB);
    Json entry;
    entry["class"] = known ? hostClass.name : ids.data();
    if (!name.empty())
        entry["name"] = ToUtf8(name);
    entry["class_id"] = {hostClass.partA, hostClass.partB};
    if (!known) {
        const std::string kind = KindName(hostClass.super);
        entry["super_class"] = kind.empty() ? Json(hostClass.super) : Json(kind);
        if (hostClass.IsMaterial())
            entry["slot_list"] = SlotList(blocks);
    }
    entry["blocks"] = std::move(blocks);
    return entry;
}

} // namespace sceneconv
