#include "simhost/scene/param_block.h"

#include "imtl.h"
#include "inode.h"

namespace simhost {

bool FitsReference(ParamType2 type, ReferenceTarget* target) {
    if (!target)
        return true;
    switch (ElementType(type)) {
    case TYPE_MTL:
        return dynamic_cast<Mtl*>(target) != nullptr;
    case TYPE_TEXMAP:
        return dynamic_cast<Texmap*>(target) != nullptr;
    case TYPE_INODE:
        return dynamic_cast<INode*>(target) != nullptr;
    case TYPE_REFTARG:
        return true;
    default:
        return false;
    }
}

ParamBlock::ParamBlock(BlockSlot slot) : slot_(std::move(slot)) {}

const ParamValue& ParamBlock::Value(int index) const {
    const auto own = values_.find(index);
    return own != values_.end() ? own->second : Default(index);
}

const ParamValue& ParamBlock::Default(int index) const {
    return slot_.desc->Params()[static_cast<size_t>(index)].value;
}

void ParamBlock::Put(int index, ParamValue value) {
    ++version_;
    values_.insert_or_assign(index, std::move(value));
}

void ParamBlock::PutElement(int index, int element, Scalar value) {
    ++version_;
    ParamValue& held = values_.try_emplace(index, Default(index)).first->second;
    if (auto* table = std::get_if<Table>(&held))
        table->at(static_cast<size_t>(element)) = std::move(value);
    else
        held = std::move(value);
}

int ParamBlock::CountAt(int index) const {
    const auto* table = std::get_if<Table>(&Value(index));
    return table ? static_cast<int>(table->size()) : 1;
}

const Scalar* ParamBlock::At(int index, int element) const {
    const ParamValue& value = Value(index);
    if (const auto* table = std::get_if<Table>(&value)) {
        const bool inside = element >= 0 && element < static_cast<int>(table->size());
        return inside ? &(*table)[static_cast<size_t>(element)] : nullptr;
    }
    return element <= 0 ? &std::get<Scalar>(value) : nullptr;
}

void ParamBlock::CopyValuesFrom(const ParamBlock& other) {
    values_ = other.values_;
    faults = other.faults;
}

ParamType2 ParamBlock::TypeAt(int index) const {
    return slot_.desc->Params()[static_cast<size_t>(index)].type;
}

void ParamBlock::GetClassName(MSTR& s, bool /*localized*/) const {
    s = L"ParamBlock2";
}

ParamBlockDesc2* ParamBlock::GetDesc() {
    // The SDK hands the shared descriptor out as one that may be changed; nobody does.
    ParamBlockDesc2* const desc = const_cast<BlockDesc*>(slot_.desc.get());
    return faults.Give(Call::GetDesc, slot_.hasDescriptor ? desc : nullptr);
}

ParamDef& ParamBlock::GetParamDef(ParamID id) {
    return slot_.desc->GetParamDef(id);
}

int ParamBlock::Count(ParamID id) {
    faults.Check(Call::Count);
    const int i = slot_.desc->IDtoIndex(id);
    return i < 0 ? 0 : CountAt(i);
}

const Scalar* ParamBlock::Read(ParamID id, int tabIndex, Storage storage) const {
    faults.Check(Call::GetValue);
    const int i = slot_.desc->IDtoIndex(id);
    if (i < 0 || StorageOf(TypeAt(i)) != storage)
        return nullptr;
    return At(i, tabIndex);
}

template <class T>
BOOL ParamBlock::ReadAs(ParamID id, int tabIndex, Storage storage, T& v) const {
    const Scalar* s = Read(id, tabIndex, storage);
    if (s)
        v = std::get<T>(*s);
    return s != nullptr;
}

BOOL ParamBlock::GetValue(ParamID id, TimeValue /*t*/, float& v, Interval& /*valid*/, int tab) {
    return ReadAs(id, tab, Storage::Number, v);
}

BOOL ParamBlock::GetValue(ParamID id, TimeValue /*t*/, int& v, Interval& /*valid*/, int tab) {
    return ReadAs(id, tab, Storage::Integer, v);
}

BOOL ParamBlock::GetValue(ParamID id, TimeValue /*t*/, Point3& v, Interval& /*valid*/, int tab) {
    return ReadAs(id, tab, Storage::Three, v);
}

BOOL ParamBlock::GetValue(ParamID id, TimeValue /*t*/, Point4& v, Interval& /*valid*/, int tab) {
    return ReadAs(id, tab, Storage::Four, v);
}

BOOL ParamBlock::GetValue(ParamID id, TimeValue /*t*/, Matrix3& v, Interval& /*valid*/, int tab) {
    return ReadAs(id, tab, Storage::Matrix, v);
}

BOOL ParamBlock::GetValue(ParamID id, TimeValue t, Color& v, Interval& valid, int tab) {
    Point3 p;
    if (!GetValue(id, t, p, valid, tab))
        return FALSE;
    v = Color(p);
    return TRUE;
}

BOOL ParamBlock::GetValue(ParamID id, TimeValue t, AColor& v, Interval& valid, int tab) {
    Point4 p;
    if (!GetValue(id, t, p, valid, tab))
        return FALSE;
    v = AColor(p);
    return TRUE;
}

BOOL ParamBlock::GetValue(ParamID id, TimeValue /*t*/, const MCHAR*& v, Interval& /*valid*/,
                          int tab) {
    const Scalar* s = Read(id, tab, Storage::String);
    if (!s)
        return FALSE;
    const Text& text = std::get<Text>(*s);
    v = text ? text->c_str() : nullptr;
    return TRUE;
}

template <class T>
BOOL ParamBlock::ReadReference(ParamID id, ParamType2 type, T*& v, int tabIndex) const {
    const Scalar* s = Read(id, tabIndex, Storage::Reference);
    const int i = slot_.desc->IDtoIndex(id);
    if (!s || ElementType(TypeAt(i)) != type)
        return FALSE;
    v = static_cast<T*>(std::get<Ref<ReferenceTarget>>(*s).Get());
    return TRUE;
}

BOOL ParamBlock::GetValue(ParamID id, TimeValue /*t*/, Mtl*& v, Interval& /*valid*/, int tab) {
    return ReadReference(id, TYPE_MTL, v, tab);
}

BOOL ParamBlock::GetValue(ParamID id, TimeValue /*t*/, Texmap*& v, Interval& /*valid*/, int tab) {
    return ReadReference(id, TYPE_TEXMAP, v, tab);
}

BOOL ParamBlock::GetValue(ParamID id, TimeValue /*t*/, INode*& v, Interval& /*valid*/, int tab) {
    return ReadReference(id, TYPE_INODE, v, tab);
}

BOOL ParamBlock::GetValue(ParamID id, TimeValue /*t*/, ReferenceTarget*& v, Interval& /*valid*/,
                          int tab) {
    return ReadReference(id, TYPE_REFTARG, v, tab);
}

BOOL ParamBlock::Write(ParamID id, int tabIndex, Storage storage, Scalar value) {
    const int i = slot_.desc->IDtoIndex(id);
    if (i < 0 || StorageOf(TypeAt(i)) != storage || !At(i, tabIndex))
        return FALSE;
    PutElement(i, tabIndex, std::move(value));
    return TRUE;
}

BOOL ParamBlock::SetValue(ParamID id, TimeValue /*t*/, float v, int tab) {
    return Write(id, tab, Storage::Number, v);
}

BOOL ParamBlock::SetValue(ParamID id, TimeValue /*t*/, int v, int tab) {
    return Write(id, tab, Storage::Integer, v);
}

BOOL ParamBlock::SetValue(ParamID id, TimeValue /*t*/, const Point3& v, int tab) {
    return Write(id, tab, Storage::Three, v);
}

BOOL ParamBlock::SetValue(ParamID id, TimeValue t, const Color& v, int tab) {
    return SetValue(id, t, Point3(v), tab);
}

BOOL ParamBlock::SetValue(ParamID id, TimeValue /*t*/, const Point4& v, int tab) {
    return Write(id, tab, Storage::Four, v);
}

BOOL ParamBlock::SetValue(ParamID id, TimeValue /*t*/, const MCHAR* v, int tab) {
    return Write(id, tab, Storage::String, v ? Text(v) : Text());
}

BOOL ParamBlock::SetValue(ParamID id, TimeValue /*t*/, ReferenceTarget* v, int tab) {
    const int i = slot_.desc->IDtoIndex(id);
    if (i < 0 || !FitsReference(TypeAt(i), v))
        return FALSE;
    return Write(id, tab, Storage::Reference, Ref<ReferenceTarget>(v));
}

MaxSDK::AssetManagement::AssetUser ParamBlock::GetAssetUser(ParamID id, int tab) {
    faults.Check(Call::GetAssetUser);
    const int i = slot_.desc->IDtoIndex(id);
    if (i < 0 || ElementType(TypeAt(i)) != TYPE_FILENAME)
        return {};
    const Scalar* s = At(i, tab);
    if (!s || !std::get<Text>(*s))
        return {};
    return {MSTR(std::get<Text>(*s)->c_str()), MaxSDK::AssetManagement::kBitmapAsset};
}

} // namespace simhost
