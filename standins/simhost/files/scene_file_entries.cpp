// Making the things of the file and filling in their values.
#include "simhost/files/scene_file_loader.h"
#include "simhost/scene/factory.h"
#include "simhost/scene/materials.h"
#include "text/utf8.h"

namespace simhost {

namespace {

void CheckMembers(const JsonView& entry, Context context) {
    if (context == Context::Object)
        entry.OnlyMembers(
            {"class",       "name",        "params",          "blocks",      "replace_blocks",
             "omit_params", "sub_objects", "class_id",        "super_class", "localized_class",
             "throws",      "throw_kind",  "answers_nothing", "mesh",        "splines",
             "camera",      "box",         "modifiers",       "base",        "use_light",
             "converts"});
    else if (context == Context::Modifier || context == Context::SpaceModifier)
        entry.OnlyMembers({"class", "name", "params", "blocks", "replace_blocks", "omit_params",
                           "sub_objects", "class_id", "super_class", "localized_class", "throws",
                           "throw_kind", "answers_nothing", "enabled", "matrix"});
    else
        entry.OnlyMembers({"class",
                           "name",
                           "params",
                           "blocks",
                           "replace_blocks",
                           "omit_params",
                           "slots",
                           "slots_off",
                           "slot_list",
                           "sub_materials",
                           "sub_material_names",
                           "sub_material_ids",
                           "sub_objects",
                           "file",
                           "class_id",
                           "super_class",
                           "localized_class",
                           "throws",
                           "throw_kind",
                           "answers_nothing"});
}

/// Room for so many slots where the last of them are one table.
void GrowSlots(Entity& entity, int count) {
    const auto& specs = entity.Class().slots;
    const int missing = count - entity.NumSlots();
    const auto tables = std::count_if(specs.begin(), specs.end(),
                                      [](const SlotSpec& spec) { return spec.wholeTable; });
    if (missing <= 0 || tables != 1 || !specs.back().wholeTable)
        return;
    for (const ParamPlace place : {specs.back().map, specs.back().on}) {
        if (!place.Known())
            continue;
        const auto& block = entity.Blocks()[static_cast<size_t>(place.block)];
        Table table = std::get<Table>(block->Value(place.index));
        const ParamType2 type = entity.TypeOf(place);
        const Scalar filler = StorageOf(type) == Storage::Integer ? Scalar(1) : ZeroOf(type);
        table.resize(table.size() + static_cast<size_t>(missing), filler);
        block->Put(place.index, std::move(table));
    }
}

void GrowSubMaterials(Entity& entity, int count) {
    if (auto* multi = dynamic_cast<SceneMultiMtl*>(&entity)) {
        multi->SetNumSubMtls(count);
        return;
    }
    const auto& specs = entity.Class().subMtls;
    const int missing = count - entity.NumMtls();
    if (missing <= 0 || specs.empty() || !specs.back().wholeTable)
        return;
    const ParamPlace place = specs.back().mtl;
    const auto& block = entity.Blocks()[static_cast<size_t>(place.block)];
    Table table = std::get<Table>(block->Value(place.index));
    table.resize(table.size() + static_cast<size_t>(missing), ZeroOf(TYPE_MTL));
    block->Put(place.index, std::move(table));
}

} // namespace

SceneLoader::Made SceneLoader::Make(const JsonView& entry, Context context) {
    entry.Object();
    CheckMembers(entry, context);
    if (context == Context::Object && entry.Has("base")) {
        if (entry.Has("class"))
            entry.Complain("an object has either a \"class\" or a \"base\"");
        return {scene_.Own(std::make_unique<DerivedObject>(nullptr)), nullptr, nullptr};
    }
    const ClassVariant& variant = ClassOf(entry, context);
    ReferenceTarget* thing = scene_.Own(MakeThing(variant.info));
    Made made{thing, EntityOf(thing), &variant};
    if (context == Context::Object && entry.Has("modifiers"))
        made.thing = scene_.Own(std::make_unique<DerivedObject>(dynamic_cast<Object*>(thing)));
    return made;
}

void SceneLoader::Fill(const JsonView& entry, Context context, const Made& made) {
    if (made.entity) {
        if (entry.Has("name"))
            made.entity->name = entry.Member("name").Text();
        FillBlocks(entry, made);
        FillParams(entry, *made.entity);
        FillSlots(entry, *made.entity);
        FillSubMaterials(entry, made);
        FillSubObjects(entry, *made.entity);
        ReadFaults(entry, made.entity->faults);
    }
    if (context == Context::Object)
        FillObject(entry, made);
    if (auto* modifier = dynamic_cast<SceneModifier*>(made.thing)) {
        if (entry.Has("enabled"))
            modifier->enabled = entry.Member("enabled").Bool();
        if (entry.Has("matrix"))
            modifier->matrix = ReadMatrix(entry.Member("matrix"));
    }
}

void SceneLoader::SetParam(const JsonView& value, Entity& entity, ParamPlace place) {
    const ParamType2 type = entity.TypeOf(place);
    entity.Set(place, ReadValue(value, type, [&](const JsonView& view, ParamType2 element) {
                   ReferenceTarget* target = Resolve(view, element);
                   if (!FitsReference(element, target))
                       view.Complain("this is no " + NameOfType(element));
                   return target;
               }));
}

void SceneLoader::FillParams(const JsonView& entry, Entity& entity) {
    if (!entry.Has("params"))
        return;
    entry.Member("params").ForMembers([&](const std::string& name, const JsonView& value) {
        const ParamPlace place = entity.FindParam(utf8::ToWide(name));
        if (!place.Known())
            value.Complain("the class \"" + utf8::FromWide(entity.Class().name) +
                           "\" has no parameter \"" + name + "\"; write it in \"blocks\"");
        SetParam(value, entity, place);
    });
}

void SceneLoader::FillBlocks(const JsonView& entry, const Made& made) {
    if (!entry.Has("blocks"))
        return;
    const JsonView list = entry.Member("blocks");
    for (size_t i = 0; i < list.Size(); ++i) {
        const JsonView block = list.Element(i);
        if (block.IsNull())
            continue;
        const auto index = static_cast<size_t>(made.variant->explicitBlocks[i]);
        ReadFaults(block, made.entity->Blocks()[index]->faults);
        if (!block.Has("params"))
            continue;
        const JsonView params = block.Member("params");
        for (size_t k = 0; k < params.Size(); ++k) {
            const JsonView param = params.Element(k);
            if (param.Has("value")) {
                const JsonView value = param.Member("value");
                SetParam(value, *made.entity, made.variant->explicitParams[i][k]);
            }
        }
    }
}

int SceneLoader::SlotIndex(const JsonView& list, size_t i, Entity& entity) {
    const JsonView which = list.Element(i);
    const int slot =
        which.IsText() ? entity.FindSlot(which.Text()) : static_cast<int>(which.Unsigned());
    if (slot < 0 || slot >= entity.NumSlots())
        which.Complain("there is no such texture slot");
    return slot;
}

void SceneLoader::FillSlots(const JsonView& entry, Entity& entity) {
    if (entry.Has("slot_list")) {
        const JsonView list = entry.Member("slot_list");
        for (size_t i = 0; i < list.Size(); ++i) {
            const JsonView slot = list.Element(i);
            if (slot.Has("on"))
                entity.SetSlotOn(static_cast<int>(i), slot.Member("on").Bool());
            if (slot.Has("map")) {
                const JsonView map = slot.Member("map");
                entity.SetSlotMap(static_cast<int>(i),
                                  static_cast<Texmap*>(Resolve(map, TYPE_TEXMAP)));
            }
        }
    }
    const auto setSlot = [&](int slot, const JsonView& map) {
        if (slot < 0 || slot >= entity.NumSlots())
            map.Complain("there is no such texture slot");
        entity.SetSlotMap(slot, static_cast<Texmap*>(Resolve(map, TYPE_TEXMAP)));
    };
    if (entry.Has("slots")) {
        const JsonView slots = entry.Member("slots");
        if (slots.IsArray()) {
            GrowSlots(entity, static_cast<int>(slots.Size()));
            for (size_t i = 0; i < slots.Size(); ++i)
                setSlot(static_cast<int>(i), slots.Element(i));
        } else {
            slots.ForMembers([&](const std::string& name, const JsonView& map) {
                setSlot(entity.FindSlot(utf8::ToWide(name)), map);
            });
        }
    }
    if (entry.Has("slots_off")) {
        const JsonView list = entry.Member("slots_off");
        list.Array();
        for (size_t i = 0; i < list.Size(); ++i)
            entity.SetSlotOn(SlotIndex(list, i, entity), false);
    }
    if (entry.Has("file")) {
        const JsonView file = entry.Member("file");
        ParamPlace place;
        for (const wchar_t* name : {L"fileName", L"HDRIMapName"})
            if (!place.Known())
                place = entity.FindParam(name);
        if (!place.Known())
            file.Complain("this class has no file");
        SetParam(file, entity, place);
    }
}

void SceneLoader::FillSubMaterials(const JsonView& entry, const Made& made) {
    Entity& entity = *made.entity;
    if (entry.Has("sub_materials")) {
        const JsonView list = entry.Member("sub_materials");
        list.Array();
        GrowSubMaterials(entity, static_cast<int>(list.Size()));
        for (size_t i = 0; i < list.Size(); ++i) {
            const JsonView element = list.Element(i);
            if (static_cast<int>(i) >= entity.NumMtls())
                element.Complain("the class has only " + std::to_string(entity.NumMtls()) +
                                 " sub-materials");
            entity.SetSubMtlAt(static_cast<int>(i), static_cast<Mtl*>(Resolve(element, TYPE_MTL)));
        }
    }
    for (const auto& [member, param] : {std::pair("sub_material_names", L"names"),
                                        std::pair("sub_material_ids", L"materialIDList")}) {
        if (!entry.Has(member))
            continue;
        const JsonView list = entry.Member(member);
        const ParamPlace place = entity.FindParam(param);
        if (!place.Known())
            list.Complain("this class keeps no such list");
        SetParam(list, entity, place);
    }
}

void SceneLoader::FillSubObjects(const JsonView& entry, Entity& entity) {
    if (!entry.Has("sub_objects"))
        return;
    entry.Member("sub_objects").ForMembers([&](const std::string& name, const JsonView& view) {
        const std::wstring role = utf8::ToWide(name);
        const auto& roles = entity.Class().subObjects;
        const auto at = std::find_if(roles.begin(), roles.end(),
                                     [&](const SubObjectSpec& sub) { return sub.role == role; });
        if (at == roles.end())
            view.Complain("the class has no sub-object of that role");
        if (view.IsNull()) {
            entity.SetSubObject(role, nullptr);
            return;
        }
        view.Object();
        if (!view.Has("class") && entity.SubObject(role)) {
            CheckMembers(view, Context::SubObject);
            const ClassVariant plain{EntityOf(entity.SubObject(role))->ClassShared(), {}, {}};
            if (view.Has("blocks"))
                view.Complain("a sub-object with \"blocks\" needs its \"class\"");
            Fill(view, Context::SubObject,
                 {entity.SubObject(role), EntityOf(entity.SubObject(role)), &plain});
            return;
        }
        const ClassVariant& variant = ClassOf(view, Context::SubObject);
        auto made = MakeThing(variant.info);
        const Made record{made.get(), EntityOf(made.get()), &variant};
        entity.SetSubObject(role, std::move(made));
        Fill(view, Context::SubObject, record);
    });
}

} // namespace simhost
