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

template <class Visit>
bool ParamReader::VisitNamed(Animatable* object, std::wstring_view name, Visit visit) {
    if (!object || name.empty())
        return false;
    FoldParamName(name, folded_);
    const int count = object->NumParamBlocks();
    for (int i = 0; i < count; ++i) {
        IParamBlock2* const block = object->GetParamBlock(i);
        const ParamBlockDesc2* const descriptor = block ? block->GetDesc() : nullptr;
        if (!descriptor)
            continue;
        const DescriptorIndex& index = index_.For(*descriptor);
        const auto* positions = index.Find(folded_);
        if (!positions)
            continue;
        for (const std::uint16_t position : *positions)
            if (visit(Found{block, &index.Definitions()[position]}))
                return true;
    }
    return false;
}

template <class Visit>
void ParamReader::VisitAll(Animatable* object, Visit visit) {
    const int count = object ? object->NumParamBlocks() : 0;
    for (int i = 0; i < count; ++i) {
        IParamBlock2* const block = object->GetParamBlock(i);
        const ParamBlockDesc2* const descriptor = block ? block->GetDesc() : nullptr;
        if (descriptor)
            visit(*block, index_.For(*descriptor));
    }
}

ParamValue ParamReader::FindParamValue(Animatable* object, std::wstring_view name) {
    ParamValue value;
    VisitNamed(object, name, [&](const Found& found) {
        return ReadScalar(*found.block, found.definition->id, found.definition->type, time_, value);
    });
    return value;
}

ReferenceTarget* ParamReader::FindParamRef(Animatable* object, std::wstring_view name) {
    ReferenceTarget* reference = nullptr;
    VisitNamed(object, name, [&](const Found& found) {
        if (!IsReferenceType(found.definition->type))
            return false;
        reference =
            ReadReference(*found.block, found.definition->id, found.definition->type, time_);
        return true;
    });
    return reference;
}

int ParamReader::GetTabParamCount(Animatable* object, std::wstring_view name) {
    int count = -1;
    VisitNamed(object, name, [&](const Found& found) {
        if (TabKindOf(found.definition->type) != ParamKind::None)
            count = found.block->Count(found.definition->id);
        return true;
    });
    return count;
}

ParamValue ParamReader::GetTabParamValue(Animatable* object, std::wstring_view name, int index) {
    ParamValue value;
    VisitNamed(object, name, [&](const Found& found) {
        const ParamID id = found.definition->id;
        if (TabKindOf(found.definition->type) != ParamKind::None && index >= 0 &&
            index < found.block->Count(id))
            ReadElement(*found.block, id, found.definition->type, time_, index, value);
        return true;
    });
    return value;
}

bool ParamReader::IsEntryOn(Animatable* object, std::wstring_view switches, int index) {
    const ParamValue on = GetTabParamValue(object, switches, index);
    return on.kind != ParamKind::Bool || on.boolValue;
}

int ParamReader::CountElements(Animatable* object, std::wstring_view name) {
    int count = -1;
    VisitNamed(object, name, [&](const Found& found) {
        if (found.definition->type & TYPE_TAB)
            count = found.block->Count(found.definition->id);
        return true;
    });
    return count;
}

std::optional<float> ParamReader::FindTabNumber(Animatable* object, std::wstring_view name,
                                                int index) {
    std::optional<float> number;
    VisitNamed(object, name, [&](const Found& found) {
        const ParamID id = found.definition->id;
        if ((found.definition->type & TYPE_TAB) && index >= 0 && index < found.block->Count(id))
            number = ReadNumber(*found.block, id, found.definition->type, time_, index);
        return true;
    });
    return number;
}

std::vector<TexmapParam> ParamReader::ListTexmapParams(Animatable* object) {
    std::vector<TexmapParam> params;
    VisitAll(object, [&](IParamBlock2& block, const DescriptorIndex& index) {
        for (const std::uint16_t position : index.Texmaps()) {
            const ParamDefinition& definition = index.Definitions()[position];
            const bool table = definition.type == TYPE_TEXMAP_TAB;
            const int count = table ? block.Count(definition.id) : 1;
            for (int i = 0; i < count; ++i)
                if (Texmap* const map = ReadTexmap(block, definition.id, time_, i))
                    params.push_back({definition.name, table ? i : -1, map});
        }
    });
    return params;
}

std::wstring ParamReader::FindTexmapParamName(Animatable* object, Texmap* map) {
    for (const TexmapParam& param : ListTexmapParams(object))
        if (map && param.map == map && param.index < 0)
            return std::wstring(param.name);
    return {};
}

std::wstring ParamReader::FindTexmapTabParamName(Animatable* object, Texmap* map, int* index) {
    if (index)
        *index = -1;
    for (const TexmapParam& param : ListTexmapParams(object)) {
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
    VisitAll(object, [&](IParamBlock2&, const DescriptorIndex& index) {
        for (const ParamDefinition& definition : index.Definitions())
            if (definition.type == type)
                names.emplace_back(definition.name);
    });
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

bool ParamReader::CollectBlocks(Animatable* object) {
    blocks_.clear();
    layout_.clear();
    VisitAll(object, [&](IParamBlock2& block, const DescriptorIndex&) {
        blocks_.push_back(&block);
        layout_.push_back(block.GetDesc());
    });
    return !blocks_.empty();
}

/// The first definition of that name, in the blocks of `layout_`, whose type has a kind.
std::optional<ParamReader::PlanStep> ParamReader::PlanRow(std::wstring_view foldedName) {
    for (size_t block = 0; block < layout_.size(); ++block) {
        const DescriptorIndex& index = index_.For(*layout_[block]);
        const auto* positions = index.Find(foldedName);
        if (!positions)
            continue;
        for (const std::uint16_t position : *positions) {
            const ParamDefinition& definition = index.Definitions()[position];
            if (ScalarKindOf(definition.type) != ParamKind::None)
                return PlanStep{0, static_cast<std::uint16_t>(block), definition.id,
                                definition.type};
        }
    }
    return std::nullopt;
}

const ParamReader::Plan& ParamReader::PlanFor(std::span<const ParamRow> rows) {
    size_t hash = std::hash<const void*>{}(rows.data());
    for (const ParamBlockDesc2* const descriptor : layout_)
        hash = Combine(hash, std::hash<const void*>{}(descriptor));
    hash = Combine(hash, rows.size());
    std::vector<Plan>& candidates = plans_[hash];
    for (const Plan& plan : candidates)
        if (plan.rows == rows.data() && plan.layout == layout_)
            return plan;
    Plan plan{rows.data(), layout_, {}};
    for (size_t row = 0; row < rows.size(); ++row) {
        if (auto step = PlanRow(FoldParamName(rows[row].param))) {
            step->row = static_cast<std::uint16_t>(row);
            plan.steps.push_back(*step);
        }
    }
    candidates.push_back(std::move(plan));
    return candidates.back();
}

void ParamReader::AppendTable(JsonMembers& members, Animatable* object,
                              std::span<const ParamRow> rows, float lengthScale) {
    if (!CollectBlocks(object))
        return;
    for (const PlanStep& step : PlanFor(rows).steps) {
        const ParamRow& row = rows[step.row];
        ParamValue value;
        if (!ReadScalar(*blocks_[step.block], step.id, step.type, time_, value))
            value = FindParamValue(object, row.param); // a later one of that name may answer
        if (row.unit == RowUnit::AsStored)
            AppendParamValue(members, row.key, value);
        else if (value.kind == ParamKind::Float)
            members.AddFloat(row.key, value.floatValue * lengthScale);
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
        return members.AddTriple(key, value.color.r, value.color.g, value.color.b);
    case ParamKind::Vector:
        return members.AddTriple(key, value.vector.x, value.vector.y, value.vector.z);
    }
}

} // namespace brimwave
