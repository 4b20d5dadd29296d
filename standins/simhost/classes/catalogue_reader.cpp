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
#include "simhost/classes/catalogue.h"
#include "simhost/classes/class_name_hash.h"
#include "simhost/files/json_value.h"

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
    view.Array();
    for (size_t i = 0; i < view.Size(); ++i) {
        const JsonView element = view.Element(i);
        params.push_back(ReadParam(
            element, params.empty() ? ParamID{0} : static_cast<ParamID>(params.back().id + 1)));
    }
    return params;
}

void ReadBlock(const JsonView& view, ClassInfo& info) {
    view.OnlyMembers({"name", "id", "hidden", "params"});
    const auto id = static_cast<BlockID>(view.Has("id") ? view.Member("id").Integer()
                                                        : static_cast<int>(info.blocks.size()));
    const JsonView params = view.Member("params");
    BlockSlot slot;
    slot.desc = std::make_shared<BlockDesc>(view.Member("name").Text(), id, ReadParams(params),
                                            info.Descriptor());
    slot.hidden = view.Has("hidden") && view.Member("hidden").Bool();
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
        if (view.Has("on"))
            slot.on = Place(view.Member("on"), info);
        if (view.Has("names")) {
            const JsonView names = view.Member("names");
            for (size_t i = 0; i < names.Size(); ++i)
                slot.entryNames.push_back(names.Element(i).Text());
        }
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

template <class Read>
void ForElements(const JsonView& view, const char* member, ClassInfo& info, Read read) {
    if (!view.Has(member))
        return;
    const JsonView list = view.Member(member);
    list.Array();
    for (size_t i = 0; i < list.Size(); ++i)
        read(list.Element(i), info);
}

ClassPtr ReadClass(const JsonView& view) {
    view.OnlyMembers({"class", "kind", "script", "class_id", "behaviour", "converts", "params",
                      "blocks", "slots", "sub_materials", "sub_objects"});
    auto info = std::make_shared<ClassInfo>();
    info->name = view.Member("class").Text();
    info->localizedName = info->name;
    info->scriptName = view.Has("script") ? view.Member("script").Text() : info->name;
    const JsonView kind = view.Member("kind");
    info->kind = info->superClass = KindOfName(kind.Utf8());
    if (info->kind == 0)
        kind.Expected("a kind of class");
    info->classId = ClassIdOfName(info->name);
    if (view.Has("class_id")) {
        const JsonView id = view.Member("class_id");
        info->classId = Class_ID(id.Element(0).Code(), id.Element(1).Code());
    }
    if (view.Has("behaviour"))
        info->behaviour = view.Member("behaviour").Text();
    if (view.Has("converts"))
        info->converts = view.Member("converts").Bool();
    if (view.Has("params")) {
        const JsonView params = view.Member("params");
        BlockSlot slot;
        slot.desc = std::make_shared<BlockDesc>(L"Parameters", BlockID{0}, ReadParams(params),
                                                info->Descriptor());
        info->blocks.push_back(std::move(slot));
    }
    ForElements(view, "blocks", *info, ReadBlock);
    ForElements(view, "slots", *info, ReadSlot);
    ForElements(view, "sub_materials", *info, ReadSubMaterial);
    ForElements(view, "sub_objects", *info, [](const JsonView& sub, ClassInfo& of) {
        of.subObjects.push_back({sub.Element(0).Text(), sub.Element(1).Text()});
    });
    return info;
}

void ReadFile(std::string_view name, std::string_view text, std::vector<ClassPtr>& classes) {
    try {
        const Json json = ParseJson(text);
        const JsonView root(json);
        const JsonView list = root.Member("classes");
        for (size_t i = 0; i < list.Size(); ++i)
            classes.push_back(ReadClass(list.Element(i)));
    } catch (const JsonFault& fault) {
        std::fprintf(stderr, "class catalogue, %.*s: %s: %s\n", static_cast<int>(name.size()),
                     name.data(), fault.Place().c_str(), fault.what());
        std::abort();
    }
}

} // namespace

Class_ID ClassIdOfName(std::wstring_view name) {
    const std::uint64_t hash = HashClassName(name);
    return {static_cast<ULONG>(hash >> 32), static_cast<ULONG>(hash)};
}

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
