// Making the things of the file and filling in their values.
#include "simhost/files/scene_file_loader.h"
#include "simhost/scene/factory.h"
#include "simhost/scene/materials.h"
#include "text/utf8.h"

namespace simhost {

namespace {

// clang-format off
const std::initializer_list<std::string_view> common = {
    "class", "name", "params", "blocks", "replace_blocks", "omit_params", "sub_objects",
    "class_id", "super_class", "localized_class", "throws", "throw_kind", "answers_nothing"};
const std::initializer_list<std::string_view> ofObjects = {
    "mesh", "splines", "camera", "box", "modifiers", "base", "use_light", "converts"};
const std::initializer_list<std::string_view> ofModifiers = {
    "enabled", "matrix"};
const std::initializer_list<std::string_view> mappedMembers = {
    "class", "name", "params", "blocks", "replace_blocks", "omit_params", "slots", "slots_off",
    "slot_list", "sub_materials", "sub_material_names", "sub_material_ids", "sub_objects", "file",
    "class_id", "super_class", "localized_class", "throws", "throw_kind", "answers_nothing"};
// clang-format on

void CheckMembers(const JsonView& entry, Context context) {
    if (context == Context::Object)
        entry.OnlyMembers(common, ofObjects);
    else if (context == Context::Modifier || context == Context::SpaceModifier)
        entry.OnlyMembers(common, ofModifiers);
    else
        entry.OnlyMembers(mappedMembers);
}

/// More elements at the end of a table parameter.
void GrowTable(Entity& entity, ParamPlace place, int more, const Scalar& filler) {
    const auto& block = entity.Blocks()[static_cast<size_t>(place.block)];
    Table table = std::get<Table>(block->Value(place.index));
    table.resize(table.size() + static_cast<size_t>(more), filler);
    block->Put(place.index, std::move(table));
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
        const ParamType2 type = entity.TypeOf(place);
        GrowTable(entity, place, missing,
                  StorageOf(type) == Storage::Integer ? Scalar(1) : ZeroOf(type));
    }
}

void GrowSubMaterials(Entity& entity, int count) {
    if (auto* multi = dynamic_cast<SceneMultiMtl*>(&entity)) {
        multi->SetNumSubMtls(count);
        return;
    }
    const auto& specs = entity.Class().subMtls;
    const int missing = count - entity.NumMtls();
    if (missing > 0 && !specs.empty() && specs.back().wholeTable)
        GrowTable(entity, specs.back().mtl, missing, ZeroOf(TYPE_MTL));
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
        entry.Read("name", made.entity->name);
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
        entry.Read("enabled", modifier->enabled);
        if (const auto matrix = entry.Find("matrix"))
            modifier->matrix = ReadMatrix(*matrix);
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
    const auto params = entry.Find("params");
    if (!params)
        return;
    params->ForMembers([&](const std::string& name, const JsonView& value) {
        const ParamPlace place = entity.FindParam(utf8::ToWide(name));
        if (!place.Known())
            value.Complain("the class \"" + utf8::FromWide(entity.Class().name) +
                           "\" has no parameter \"" + name + "\"; write it in \"blocks\"");
        SetParam(value, entity, place);
    });
}

void SceneLoader::FillBlocks(const JsonView& entry, const Made& made) {
    entry.ForElementsOf("blocks", [&](const JsonView& block, size_t i) {
        if (block.IsNull())
            return;
        const auto index = static_cast<size_t>(made.variant->explicitBlocks[i]);
        ReadFaults(block, made.entity->Blocks()[index]->faults);
        block.ForElementsOf("params", [&](const JsonView& param, size_t k) {
            if (const auto value = param.Find("value"))
                SetParam(*value, *made.entity, made.variant->explicitParams[i][k]);
        });
    });
}

int SceneLoader::SlotIndex(const JsonView& which, const Entity& entity) {
    const int slot =
        which.IsText() ? entity.FindSlot(which.Text()) : static_cast<int>(which.Unsigned());
    if (slot < 0 || slot >= entity.NumSlots())
        which.Complain("there is no such texture slot");
    return slot;
}

void SceneLoader::SetSlot(Entity& entity, int slot, const JsonView& map) {
    if (slot < 0 || slot >= entity.NumSlots())
        map.Complain("there is no such texture slot");
    entity.SetSlotMap(slot, static_cast<Texmap*>(Resolve(map, TYPE_TEXMAP)));
}

void SceneLoader::FillSlots(const JsonView& entry, Entity& entity) {
    entry.ForElementsOf("slot_list", [&](const JsonView& view, size_t i) {
        const int slot = static_cast<int>(i);
        if (const auto on = view.Find("on"))
            entity.SetSlotOn(slot, on->Bool());
        if (const auto map = view.Find("map"))
            entity.SetSlotMap(slot, static_cast<Texmap*>(Resolve(*map, TYPE_TEXMAP)));
    });
    const auto slots = entry.Find("slots");
    if (slots && slots->IsArray()) {
        GrowSlots(entity, static_cast<int>(slots->Size()));
        slots->ForElements(
            [&](const JsonView& map, size_t i) { SetSlot(entity, static_cast<int>(i), map); });
    } else if (slots) {
        slots->ForMembers([&](const std::string& name, const JsonView& map) {
            SetSlot(entity, entity.FindSlot(utf8::ToWide(name)), map);
        });
    }
    entry.ForElementsOf("slots_off", [&](const JsonView& which) {
        entity.SetSlotOn(SlotIndex(which, entity), false);
    });
    if (const auto file = entry.Find("file")) {
        ParamPlace place = entity.FindParam(L"fileName");
        if (!place.Known())
            place = entity.FindParam(L"HDRIMapName");
        if (!place.Known())
            file->Complain("this class has no file");
        SetParam(*file, entity, place);
    }
}

void SceneLoader::FillSubMaterials(const JsonView& entry, const Made& made) {
    Entity& entity = *made.entity;
    if (const auto list = entry.Find("sub_materials")) {
        list->Array();
        GrowSubMaterials(entity, static_cast<int>(list->Size()));
        list->ForElements([&](const JsonView& element, size_t i) {
            if (static_cast<int>(i) >= entity.NumMtls())
                element.Complain("the class has only " + std::to_string(entity.NumMtls()) +
                                 " sub-materials");
            entity.SetSubMtlAt(static_cast<int>(i), static_cast<Mtl*>(Resolve(element, TYPE_MTL)));
        });
    }
    for (const auto& [member, param] : {std::pair("sub_material_names", L"names"),
                                        std::pair("sub_material_ids", L"materialIDList")})
        if (const auto list = entry.Find(member)) {
            const ParamPlace place = entity.FindParam(param);
            if (!place.Known())
                list->Complain("this class keeps no such list");
            SetParam(*list, entity, place);
        }
}

void SceneLoader::FillSubObjects(const JsonView& entry, Entity& entity) {
    const auto roles = entry.Find("sub_objects");
    if (!roles)
        return;
    roles->ForMembers([&](const std::string& name, const JsonView& view) {
        const std::wstring role = utf8::ToWide(name);
        const auto& known = entity.Class().subObjects;
        if (std::none_of(known.begin(), known.end(),
                         [&](const SubObjectSpec& sub) { return sub.role == role; }))
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
