// The catalogue's files. A class is
// {"class": display name, "kind": .., "script": script name, "class_id": [a, b],
//  "behaviour": .., "converts": false,
//  "blocks": [{"name": .., "id": .., "hidden": true, "params": [[name, type, default, id], ..]}],
//  "slots": [[name, parameter, switch parameter], ..,
//            {"table": .., "on": .., "name": .., "names": [..]}],
//  "sub_materials": [[name, parameter], .., {"table": .., "name": ..}],
//  "sub_objects": [[role, class], ..]}
// where everything but class and kind may be left out, and in a parameter everything after the
// type. `params` of the class itself are one block, "Parameters".
#include "simhost/classes/catalogue_reader.h"

#include "catalogue_embedded.h"
#include "simhost/classes/json_value.h"
#include "simhost/classes/kinds.h"

#include <cstdio>
#include <cstdlib>

namespace simhost {

namespace {

ParamSpec ReadParam(const JsonView& view, ParamID nextId) {
    view.Array();
    const JsonView nameView = view.Element(0), typeView = view.Element(1);
    const auto type = TypeOfName(typeView.Utf8());
    if (!type)
        typeView.Expected("a type");
    ParamSpec spec{nameView.IsNull() ? Text() : Text(nameView.Text()), nextId, *type,
                   DefaultOf(*type)};
    if (view.Size() > 2 && !view.Element(2).IsNull())
        spec.value = ReadValue(view.Element(2), *type);
    if (view.Size() > 3)
        spec.id = static_cast<ParamID>(view.Element(3).Integer());
    return spec;
}

std::vector<ParamSpec> ReadParams(const JsonView& view) {
    std::vector<ParamSpec> params;
    view.ForElements([&](const JsonView& element) {
        params.push_back(ReadParam(
            element, params.empty() ? ParamID{0} : static_cast<ParamID>(params.back().id + 1)));
    });
    return params;
}

void ReadBlock(const JsonView& view, ClassInfo& info) {
    view.OnlyMembers({"name", "id", "hidden", "params"});
    int id = static_cast<int>(info.blocks.size());
    view.Read("id", id);
    BlockSlot slot;
    slot.desc = std::make_shared<BlockDesc>(view.Member("name").Text(), static_cast<BlockID>(id),
                                            ReadParams(view.Member("params")));
    view.Read("hidden", slot.hidden);
    info.blocks.push_back(std::move(slot));
}

ParamPlace Place(const JsonView& view, const ClassInfo& info) {
    const ParamPlace place = info.Find(view.Text());
    if (!place.Known())
        view.Complain("the class has no such parameter");
    return place;
}

void ReadSlot(const JsonView& view, ClassInfo& info) {
    SlotSpec slot;
    if (view.IsArray()) {
        slot.name = view.Element(0).Text();
        slot.map = Place(view.Element(1), info);
        if (view.Size() > 2)
            slot.on = Place(view.Element(2), info);
    } else {
        view.OnlyMembers({"table", "on", "name", "names"});
        slot.wholeTable = true;
        slot.map = Place(view.Member("table"), info);
        slot.name = view.Member("name").Text();
        if (const auto on = view.Find("on"))
            slot.on = Place(*on, info);
        view.ForElementsOf("names",
                           [&](const JsonView& name) { slot.entryNames.push_back(name.Text()); });
    }
    info.slots.push_back(std::move(slot));
}

void ReadSubMaterial(const JsonView& view, ClassInfo& info) {
    SubMtlSpec spec;
    if (view.IsArray()) {
        spec.name = view.Element(0).Text();
        spec.mtl = Place(view.Element(1), info);
    } else {
        spec.wholeTable = true;
        spec.name = view.Member("name").Text();
        spec.mtl = Place(view.Member("table"), info);
    }
    info.subMtls.push_back(std::move(spec));
}

ClassPtr ReadClass(const JsonView& view) {
    view.OnlyMembers({"class", "kind", "script", "class_id", "behaviour", "converts", "params",
                      "blocks", "slots", "sub_materials", "sub_objects"});
    auto info = std::make_shared<ClassInfo>();
    info->name = view.Member("class").Text();
    info->localizedName = info->name;
    info->scriptName = info->name;
    view.Read("script", info->scriptName);
    const JsonView kind = view.Member("kind");
    info->kind = info->superClass = KindOfName(kind.Utf8());
    if (info->kind == 0)
        kind.Expected("a kind of class");
    info->classId = ClassIdOfName(info->name);
    if (const auto id = view.Find("class_id"))
        info->classId = Class_ID(id->Element(0).Code(), id->Element(1).Code());
    view.Read("behaviour", info->behaviour);
    view.Read("converts", info->converts);
    if (const auto params = view.Find("params")) {
        BlockSlot slot;
        slot.desc = std::make_shared<BlockDesc>(L"Parameters", BlockID{0}, ReadParams(*params));
        info->blocks.push_back(std::move(slot));
    }
    view.ForElementsOf("blocks", [&](const JsonView& block) { ReadBlock(block, *info); });
    view.ForElementsOf("slots", [&](const JsonView& slot) { ReadSlot(slot, *info); });
    view.ForElementsOf("sub_materials", [&](const JsonView& sub) { ReadSubMaterial(sub, *info); });
    view.ForElementsOf("sub_objects", [&](const JsonView& sub) {
        info->subObjects.push_back({sub.Element(0).Text(), sub.Element(1).Text()});
    });
    return info;
}

void ReadFile(std::string_view name, std::string_view text, std::vector<ClassPtr>& classes) {
    try {
        const Json json = ParseJson(text);
        const JsonView root(json);
        root.Member("classes").ForElements(
            [&](const JsonView& view) { classes.push_back(ReadClass(view)); });
    } catch (const JsonFault& fault) {
        std::fprintf(stderr, "class catalogue, %.*s: %s: %s\n", static_cast<int>(name.size()),
                     name.data(), fault.Place().c_str(), fault.what());
        std::abort();
    }
}

} // namespace

std::vector<ClassPtr> ReadCatalogue() {
    std::vector<ClassPtr> classes;
#define CATALOGUE(file) ReadFile(#file, catalogue_embedded::file##_json, classes)
    CATALOGUE(objects);
    CATALOGUE(lights);
    CATALOGUE(modifiers);
    CATALOGUE(renderers);
    CATALOGUE(sub_objects);
    CATALOGUE(materials_host);
    CATALOGUE(materials_corona);
    CATALOGUE(materials_vray);
    CATALOGUE(maps_host);
    CATALOGUE(maps_corona);
    CATALOGUE(maps_vray);
#undef CATALOGUE
    return classes;
}

} // namespace simhost
