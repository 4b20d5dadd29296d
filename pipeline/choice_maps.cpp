#include "pipeline/choice_maps.h"

#include "host/attempt.h"
#include "host/map_slots.h"
#include "host/scene_walk.h"
#include "host/sdk_compat.h"
#include "host/text.h"

#include <utility>

namespace brimwave {
namespace {

constexpr int everyId = -1;

std::wstring Quoted(const std::wstring& name) {
    return L"\"" + name + L"\"";
}

/// A Vertex Color map shows a channel of its choice, at first that of the vertex colours.
bool ShowsColorChannel(ParamReader& params, Texmap& map) {
    const std::wstring name = ToLowerW(ClassNameOf(map));
    if (name.find(L"vertex") == std::wstring::npos || name.find(L"col") == std::wstring::npos)
        return false;
    const ParamValue channel = params.FindParamValue(&map, L"map");
    return channel.kind != ParamKind::Int || channel.intValue == 0;
}

/// The maps that are switched on; all of them when the host fails over the switches.
void AppendEnabledMaps(ParamReader& params, MtlBase& object, MaterialParts& parts) {
    std::vector<MapSlot> slots;
    if (!Attempt([&] { slots = ReadMapSlots(params, object); }))
        return AppendSubMaps(object, parts);
    for (const MapSlot& slot : slots)
        if (slot.enabled)
            parts.push_back(slot.map);
}

/// The sub-materials that faces of this id show; true when another id may show others.
bool AppendShownMaterials(Mtl& material, std::optional<MtlID> id, MaterialParts& parts) {
    bool byId = false;
    Attempt([&] {
        const int count = material.NumSubMtls();
        byId = id && count > 0 && material.IsMultiMtl();
        if (byId)
            parts.push_back(material.GetSubMtl(*id % count));
    });
    if (!byId)
        AppendSubMaterials(material, parts);
    return byId;
}

} // namespace

ChoiceMaps::SearchResult ChoiceMaps::Search(Mtl& root, std::optional<MtlID> id) {
    SearchResult result;
    MaterialWalk().From(&root, [&](MtlBase& object, MaterialParts& parts) {
        const SClass_ID kind = SuperClassOf(object);
        if (kind == TEXMAP_CLASS_ID)
            Attempt([&] {
                auto& map = static_cast<Texmap&>(object);
                if (IsChoiceMap(map))
                    result.maps.push_back(&map);
                result.showsVertexColors |= ShowsColorChannel(params_, map);
            });
        AppendEnabledMaps(params_, object, parts);
        if (kind == MATERIAL_CLASS_ID)
            result.byId |= AppendShownMaterials(static_cast<Mtl&>(object), id, parts);
    });
    return result;
}

const ChoiceMaps::Summary& ChoiceMaps::SummaryOf(Mtl& material) {
    const auto [at, fresh] = summaries_.try_emplace(&material);
    if (fresh) {
        const SearchResult result = Search(material, std::nullopt);
        at->second = {!result.maps.empty(), result.showsVertexColors};
    }
    return at->second;
}

bool ChoiceMaps::Any(Mtl& material) {
    return SummaryOf(material).any;
}

bool ChoiceMaps::ShowsVertexColors(Mtl& material) {
    return SummaryOf(material).showsVertexColors;
}

const FaceChoice* ChoiceMaps::For(Mtl& material, MtlID id) {
    ChoiceOfIds& ofId = materials_[&material];
    auto at = ofId.find(everyId);
    if (at == ofId.end())
        at = ofId.find(id);
    if (at == ofId.end()) {
        const SearchResult result = Search(material, id);
        at = ofId.emplace(result.byId ? id : everyId, Serve(result.maps)).first;
    }
    return at->second ? &*at->second : nullptr;
}

std::optional<FaceChoice> ChoiceMaps::Serve(const std::vector<Texmap*>& maps) {
    std::optional<FaceChoice> served;
    for (Texmap* const map : maps) {
        const ChoiceMap* const read = Read(*map);
        if (!read || read->choices == 0)
            continue;
        if (!served)
            served = FaceChoice{read->rule, read->varies, read->name};
        else if (served->rule == read->rule)
            served->varies |= read->varies;
        else
            Note(L"Map " + Quoted(read->name) + L" is not served: the colours are those of map " +
                 Quoted(served->mapName) + L", which chooses by another rule.");
    }
    return served;
}

const ChoiceMap* ChoiceMaps::Read(Texmap& map) {
    const auto [at, fresh] = read_.try_emplace(&map);
    std::optional<ChoiceMap>& read = at->second;
    if (!fresh)
        return read ? &*read : nullptr;
    if (!Attempt([&] { read = ReadChoiceMap(params_, map); })) {
        Note(L"A map could not be read and is not served.");
        return nullptr;
    }
    if (read->choices == 0)
        Note(L"Map " + Quoted(read->name) + L" is not served: it has no map to choose.");
    if (read->leftOut > 0)
        Note(L"Map " + Quoted(read->name) + L": the last " + std::to_wstring(read->leftOut) +
             L" maps of its list are never chosen, a colour can tell " +
             std::to_wstring(mostChoices) + L" apart.");
    return &*read;
}

void ChoiceMaps::Note(std::wstring line) {
    if (noted_.insert(line).second)
        notes_.push_back(std::move(line));
}

std::vector<std::wstring> ChoiceMaps::TakeNotes() {
    return std::exchange(notes_, {});
}

} // namespace brimwave
