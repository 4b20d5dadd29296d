#include "simhost/scene/entity.h"

#include "simhost/classes/fold.h"

namespace simhost {

Entity::Entity(ClassPtr info, Animatable* self) : class_(std::move(info)), self_(self) {
    for (const BlockSlot& slot : class_->blocks) {
        if (!slot.hidden)
            visible_.push_back(blocks_.size());
        blocks_.push_back(slot.desc ? std::make_unique<ParamBlock>(slot) : nullptr);
    }
    slots_.resize(class_->slots.size());
    subObjects_.resize(class_->subObjects.size());
}

ParamType2 Entity::TypeOf(ParamPlace place) const {
    const ParamBlock& block = *blocks_[static_cast<size_t>(place.block)];
    return block.Shape().Params()[static_cast<size_t>(place.index)].type;
}

const Scalar* Entity::Get(ParamPlace place) const {
    if (!place.Known())
        return nullptr;
    return blocks_[static_cast<size_t>(place.block)]->At(place.index, place.element);
}

void Entity::Set(ParamPlace place, ParamValue value) {
    ParamBlock& block = *blocks_[static_cast<size_t>(place.block)];
    if (place.element >= 0)
        block.PutElement(place.index, place.element, std::get<Scalar>(std::move(value)));
    else
        block.Put(place.index, std::move(value));
}

void Entity::SetWhereThere(ParamPlace place, Scalar value) {
    if (Get(place))
        Set(place, std::move(value));
}

unsigned long Entity::Version() const {
    unsigned long sum = 0;
    for (const auto& block : blocks_)
        sum += block ? block->Version() : 0;
    return sum;
}

float Entity::Float(std::wstring_view param, float fallback) const {
    const Scalar* s = Get(FindParam(param));
    if (!s)
        return fallback;
    if (const auto* number = std::get_if<float>(s))
        return *number;
    const auto* integer = std::get_if<int>(s);
    return integer ? static_cast<float>(*integer) : fallback;
}

int Entity::Int(std::wstring_view param, int fallback) const {
    const Scalar* s = Get(FindParam(param));
    const auto* integer = s ? std::get_if<int>(s) : nullptr;
    return integer ? *integer : fallback;
}

const Text* Entity::String(std::wstring_view param) const {
    const Scalar* s = Get(FindParam(param));
    return s ? std::get_if<Text>(s) : nullptr;
}

int Entity::CountAt(ParamPlace place) const {
    return blocks_[static_cast<size_t>(place.block)]->CountAt(place.index);
}

int Entity::NumSlots() const {
    int count = 0;
    for (const SlotSpec& spec : class_->slots)
        count += spec.wholeTable ? CountAt(spec.map) : 1;
    return count;
}

Entity::SlotPlace Entity::PlaceOfSlot(int slot) const {
    if (slot < 0)
        return {};
    for (size_t i = 0; i < class_->slots.size(); ++i) {
        const SlotSpec& spec = class_->slots[i];
        const int count = spec.wholeTable ? CountAt(spec.map) : 1;
        if (slot < count)
            return {&spec, i, spec.wholeTable ? slot : -1};
        slot -= count;
    }
    return {};
}

Text Entity::SlotName(int slot) const {
    const SlotPlace at = PlaceOfSlot(slot);
    if (!at.spec || at.entry < 0)
        return at.spec ? at.spec->name : Text();
    if (static_cast<size_t>(at.entry) < at.spec->entryNames.size())
        return at.spec->entryNames[static_cast<size_t>(at.entry)];
    return at.spec->name.value_or(L"Map") + L" " + std::to_wstring(at.entry + 1);
}

ParamPlace Entity::SlotPlace::Of(ParamPlace place) const {
    if (entry >= 0)
        place.element = entry;
    return place;
}

Texmap* Entity::SlotMap(int slot) const {
    const SlotPlace at = PlaceOfSlot(slot);
    if (!at.spec)
        return nullptr;
    if (!at.spec->map.Known())
        return slots_[at.state].map.Get();
    const Scalar* s = Get(at.Of(at.spec->map));
    return s ? static_cast<Texmap*>(std::get<Ref<ReferenceTarget>>(*s).Get()) : nullptr;
}

void Entity::SetSlotMap(int slot, Texmap* map) {
    const SlotPlace at = PlaceOfSlot(slot);
    if (at.spec && !at.spec->map.Known())
        slots_[at.state].map = map;
    else if (at.spec)
        SetWhereThere(at.Of(at.spec->map), Ref<ReferenceTarget>(map));
}

bool Entity::SlotOn(int slot) const {
    const SlotPlace at = PlaceOfSlot(slot);
    if (!at.spec)
        return false;
    if (!at.spec->on.Known())
        return slots_[at.state].on;
    const Scalar* s = Get(at.Of(at.spec->on));
    const auto* flag = s ? std::get_if<int>(s) : nullptr;
    return !flag || *flag != 0;
}

void Entity::SetSlotOn(int slot, bool on) {
    const SlotPlace at = PlaceOfSlot(slot);
    if (at.spec && !at.spec->on.Known())
        slots_[at.state].on = on;
    else if (at.spec)
        SetWhereThere(at.Of(at.spec->on), on ? 1 : 0);
}

int Entity::FindSlot(std::wstring_view wanted) const {
    const ParamPlace place = FindParam(wanted);
    int byName = -1, byParam = -1;
    for (int i = 0; i < NumSlots(); ++i) {
        const Text held = SlotName(i);
        if (held && *held == wanted)
            return i;
        if (byName < 0 && held && EqualFolded(*held, wanted))
            byName = i;
        const ParamPlace& fed = PlaceOfSlot(i).spec->map;
        if (byParam < 0 && place.Known() && fed.block == place.block && fed.index == place.index)
            byParam = i;
    }
    return byName >= 0 ? byName : byParam;
}

int Entity::NumMtls() const {
    int count = 0;
    for (const SubMtlSpec& spec : class_->subMtls)
        count += spec.wholeTable ? CountAt(spec.mtl) : 1;
    return count;
}

ParamPlace Entity::PlaceOfMtl(int i, const SubMtlSpec** found) const {
    for (const SubMtlSpec& spec : class_->subMtls) {
        const int count = spec.wholeTable ? CountAt(spec.mtl) : 1;
        if (i >= 0 && i < count) {
            ParamPlace place = spec.mtl;
            if (spec.wholeTable)
                place.element = i;
            if (found)
                *found = &spec;
            return place;
        }
        i -= count;
    }
    return {};
}

Mtl* Entity::SubMtlAt(int i) const {
    const Scalar* s = Get(PlaceOfMtl(i));
    return s ? static_cast<Mtl*>(std::get<Ref<ReferenceTarget>>(*s).Get()) : nullptr;
}

void Entity::SetSubMtlAt(int i, Mtl* mtl) {
    SetWhereThere(PlaceOfMtl(i), Ref<ReferenceTarget>(mtl));
}

std::wstring Entity::SubMtlNameAt(int i) const {
    const SubMtlSpec* spec = nullptr;
    const ParamPlace place = PlaceOfMtl(i, &spec);
    if (!place.Known())
        return {};
    return spec->wholeTable ? spec->name + L" " + std::to_wstring(place.element + 1) : spec->name;
}

ReferenceTarget* Entity::SubObject(int i) const {
    const bool inside = i >= 0 && i < NumSubObjects();
    return inside ? subObjects_[static_cast<size_t>(i)].get() : nullptr;
}

ReferenceTarget* Entity::SubObject(std::wstring_view role) const {
    for (size_t i = 0; i < class_->subObjects.size(); ++i)
        if (class_->subObjects[i].role == role)
            return subObjects_[i].get();
    return nullptr;
}

bool Entity::SetSubObject(std::wstring_view role, std::unique_ptr<ReferenceTarget> object) {
    for (size_t i = 0; i < class_->subObjects.size(); ++i)
        if (class_->subObjects[i].role == role) {
            subObjects_[i] = std::move(object);
            return true;
        }
    return false;
}

void Entity::CopyFrom(const Entity& other) {
    for (size_t i = 0; i < blocks_.size() && i < other.blocks_.size(); ++i)
        if (blocks_[i] && other.blocks_[i])
            blocks_[i]->CopyValuesFrom(*other.blocks_[i]);
    slots_ = other.slots_;
    name = other.name;
    faults = other.faults;
}

ParamBlock* Entity::VisibleBlock(int i) const {
    const bool inside = i >= 0 && i < VisibleBlockCount();
    return inside ? blocks_[visible_[static_cast<size_t>(i)]].get() : nullptr;
}

Entity* EntityOf(Animatable* thing) {
    return dynamic_cast<Entity*>(thing);
}

} // namespace simhost
