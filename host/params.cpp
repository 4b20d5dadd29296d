#include "host/params.h"

#include "host/param_read.h"

namespace brimwave {
namespace {

constexpr size_t Combine(size_t seed, size_t value) {
    return seed ^ (value + 0x9e3779b97f4a7c15ull + (seed << 6) + (seed >> 2));
}

bool IsReferenceType(ParamType2 type) {
    return type == TYPE_MTL || type == TYPE_TEXMAP || type == TYPE_REFTARG;
}

} // namespace

ParamReader::ParamReader() : time_(GetCOREInterface()->GetTime()) {}

size_t
ParamReader::LayoutHash::operator()(const std::vector<const ParamBlockDesc2*>& descriptors) const {
    size_t hash = descriptors.size();
    for (const ParamBlockDesc2* const descriptor : descriptors)
        hash = Combine(hash, std::hash<const void*>{}(descriptor));
    return hash;
}

ParamLayout& ParamReader::Open(Animatable* object) {
    blocks_.clear();
    descriptors_.clear();
    const int count = object ? object->NumParamBlocks() : 0;
    for (int i = 0; i < count; ++i) {
        IParamBlock2* const block = object->GetParamBlock(i);
        const ParamBlockDesc2* const descriptor = block ? block->GetDesc() : nullptr;
        if (!descriptor)
            continue;
        blocks_.push_back(block);
        descriptors_.push_back(descriptor);
    }
    if (opened_ && opened_->first == descriptors_) // often the same as before
        return opened_->second;
    const auto [entry, isNew] = layouts_.try_emplace(descriptors_);
    if (isNew)
        for (const ParamBlockDesc2* const descriptor : descriptors_)
            entry->second.Add(index_.For(*descriptor));
    opened_ = &*entry;
    return entry->second;
}

template <class Visit>
void ParamReader::VisitNamed(Animatable* object, std::wstring_view name, Visit visit) {
    if (!object || name.empty())
        return;
    for (const BlockParam& param : Open(object).Named(name))
        if (visit(*blocks_[param.block], *param.definition))
            return;
}

ParamValue ParamReader::FindParamValue(Animatable* object, std::wstring_view name) {
    return object && !name.empty() ? ReadFirst(Open(object).Named(name)) : ParamValue();
}

ReferenceTarget* ParamReader::FindParamRef(Animatable* object, std::wstring_view name) {
    ReferenceTarget* reference = nullptr;
    VisitNamed(object, name, [&](IParamBlock2& block, const ParamDefinition& definition) {
        if (!IsReferenceType(definition.type))
            return false;
        reference = ReadReference(block, definition.id, definition.type, time_);
        return true;
    });
    return reference;
}

int ParamReader::GetTabParamCount(Animatable* object, std::wstring_view name) {
    int count = -1;
    VisitNamed(object, name, [&](IParamBlock2& block, const ParamDefinition& definition) {
        if (TabKindOf(definition.type) != ParamKind::None)
            count = block.Count(definition.id);
        return true;
    });
    return count;
}

ParamValue ParamReader::GetTabParamValue(Animatable* object, std::wstring_view name, int index) {
    ParamValue value;
    VisitNamed(object, name, [&](IParamBlock2& block, const ParamDefinition& definition) {
        const ParamID id = definition.id;
        if (TabKindOf(definition.type) != ParamKind::None && index >= 0 && index < block.Count(id))
            ReadElement(block, id, definition.type, time_, index, value);
        return true;
    });
    return value;
}

int ParamReader::CountElements(Animatable* object, std::wstring_view name) {
    int count = -1;
    VisitNamed(object, name, [&](IParamBlock2& block, const ParamDefinition& definition) {
        if (definition.type & TYPE_TAB)
            count = block.Count(definition.id);
        return true;
    });
    return count;
}

std::optional<float> ParamReader::FindTabNumber(Animatable* object, std::wstring_view name,
                                                int index) {
    std::optional<float> number;
    VisitNamed(object, name, [&](IParamBlock2& block, const ParamDefinition& definition) {
        const ParamID id = definition.id;
        if ((definition.type & TYPE_TAB) && index >= 0 && index < block.Count(id))
            number = ReadNumber(block, id, definition.type, time_, index);
        return true;
    });
    return number;
}

std::vector<TexmapParam> ParamReader::CollectTexmapParams(Animatable* object) {
    std::vector<TexmapParam> params;
    const auto& indexes = Open(object).Blocks();
    for (size_t i = 0; i < indexes.size(); ++i) {
        IParamBlock2& block = *blocks_[i];
        for (const std::uint16_t position : indexes[i]->Texmaps()) {
            const ParamDefinition& definition = indexes[i]->Definitions()[position];
            const bool table = definition.type == TYPE_TEXMAP_TAB;
            const int count = table ? block.Count(definition.id) : 1;
            for (int element = 0; element < count; ++element)
                if (Texmap* const map = ReadTexmap(block, definition.id, time_, element))
                    params.push_back({definition.name, table ? element : -1, map});
        }
    }
    return params;
}

std::wstring ParamReader::FindTexmapParamName(Animatable* object, Texmap* map) {
    for (const TexmapParam& param : CollectTexmapParams(object))
        if (map && param.map == map && param.index < 0)
            return std::wstring(param.name);
    return {};
}

std::wstring ParamReader::FindTexmapTabParamName(Animatable* object, Texmap* map, int* index) {
    if (index)
        *index = -1;
    for (const TexmapParam& param : CollectTexmapParams(object)) {
        if (!map || param.map != map || param.index < 0)
            continue;
        if (index)
            *index = param.index;
        return std::wstring(param.name);
    }
    return {};
}

void ParamReader::ListNamesOfType(Animatable* object, ParamType2 type,
                                  std::vector<std::wstring>& names) {
    for (const DescriptorIndex* const index : Open(object).Blocks())
        for (const ParamDefinition& definition : index->Definitions())
            if (definition.type == type)
                names.emplace_back(definition.name);
}

void ParamReader::ListBoolParamNames(Animatable* object, std::vector<std::wstring>& names) {
    ListNamesOfType(object, TYPE_BOOL, names);
}

void ParamReader::ListBoolTabParamNames(Animatable* object, std::vector<std::wstring>& names) {
    ListNamesOfType(object, TYPE_BOOL_TAB, names);
}

void ParamReader::AppendParamJson(JsonMembers& members, Animatable* object, std::wstring_view name,
                                  std::wstring_view key) {
    AppendParamValue(members, key, FindParamValue(object, name));
}

ParamValue ParamReader::ReadFirst(std::span<const BlockParam> params) {
    ParamValue value;
    for (const auto& [block, definition] : params)
        if (ReadScalar(*blocks_[block], definition->id, definition->type, time_, value))
            break;
    return value;
}

void ParamReader::Read(ParamLayout& layout, const ParamLayout::TableParam& row, ParamValue& value) {
    const auto& [block, definition] = row.param;
    if (!ReadScalar(*blocks_[block], definition->id, definition->type, time_, value))
        value = ReadFirst(layout.Named(row.row->param)); // a later one of that name may answer
}

void ParamReader::FindValues(Animatable* object, std::span<const ParamRow> rows,
                             std::span<ParamValue> values) {
    ParamLayout& layout = Open(object);
    for (const auto& param : layout.ParamsOf(rows))
        Read(layout, param, values[static_cast<size_t>(param.row - rows.data())]);
}

void ParamReader::AppendTable(JsonMembers& members, Animatable* object,
                              std::span<const ParamRow> rows, float lengthScale) {
    ParamLayout& layout = Open(object);
    ParamValue value;
    for (const auto& param : layout.ParamsOf(rows)) {
        Read(layout, param, value);
        if (param.row->unit == RowUnit::AsStored)
            AppendParamValue(members, param.row->key, value);
        else if (value.kind == ParamKind::Float)
            members.AddFloat(param.row->key, value.floatValue * lengthScale);
    }
}

void AppendParamValue(JsonMembers& members, std::wstring_view key, const ParamValue& value) {
    switch (value.kind) {
    case ParamKind::None:
        return;
    case ParamKind::Float:
        return members.AddFloat(key, value.floatValue);
    case ParamKind::Int:
        return members.AddInt(key, value.intValue);
    case ParamKind::Bool:
        return members.AddBool(key, value.boolValue);
    case ParamKind::String:
        return members.AddString(key, value.stringValue);
    case ParamKind::Color:
        return members.AddRaw(key, FormatJsonColor(value.color.r, value.color.g, value.color.b));
    case ParamKind::Vector:
        return members.AddRaw(key,
                              FormatJsonPoint3(value.vector.x, value.vector.y, value.vector.z));
    }
}

} // namespace brimwave
