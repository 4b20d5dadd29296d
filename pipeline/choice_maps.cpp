#include "pipeline/choice_maps.h"

#include "host/attempt.h"
#include "host/params.h"
#include "host/sdk_compat.h"
#include "host/text.h"
#include "package/slot_flags.h"

#include <utility>

namespace brimwave {
namespace {

constexpr int everyId = -1;

std::wstring Quoted(const std::wstring& name) {
    return L"\"" + name + L"\"";
}

/// A Vertex Color map shows a channel of its choice, at first that of the vertex colours.
bool ShowsColourChannel(ParamReader& params, Texmap& map) {
    const std::wstring name = ToLowerW(ClassNameOf(map));
    if (name.find(L"vertex") == std::wstring::npos || name.find(L"col") == std::wstring::npos)
        return false;
    const ParamValue channel = params.FindParamValue(&map, L"map");
    return channel.kind != ParamKind::Int || channel.intValue == 0;
}

} // namespace

/// Depth first with what is still to come on a stack of its own, last first.
class ChoiceMaps::Search {
  public:
    /// `id`: the material id that multi-materials are entered by; empty: all sub-materials.
    Search(ParamReader& params, std::optional<MtlID> id) : params_(params), id_(id) {}

    Found From(Mtl& root) {
        pending_.push_back(&root);
        while (!pending_.empty()) {
            MtlBase* const next = pending_.back();
            pending_.pop_back();
            if (next && visited_.insert(next).second)
                Visit(*next);
        }
        return std::move(found_);
    }

  private:
    void Visit(MtlBase& object) {
        SClass_ID kind = 0;
        Attempt([&] { kind = object.SuperClassID(); });
        if (kind == TEXMAP_CLASS_ID)
            Attempt([&] { Look(static_cast<Texmap&>(object)); });
        if (kind == MATERIAL_CLASS_ID)
            Attempt([&] { PushSubMaterials(static_cast<Mtl&>(object)); });
        Attempt([&] { PushMaps(object); });
    }

    void Look(Texmap& map) {
        if (IsChoiceMap(map))
            found_.maps.push_back(&map);
        found_.showsVertexColours |= ShowsColourChannel(params_, map);
    }

    void PushSubMaterials(Mtl& material) {
        const int count = material.NumSubMtls();
        if (id_ && count > 0 && material.IsMultiMtl()) {
            found_.byId = true;
            pending_.push_back(material.GetSubMtl(*id_ % count));
            return;
        }
        for (int i = count - 1; i >= 0; --i)
            pending_.push_back(material.GetSubMtl(i));
    }

    void PushMaps(MtlBase& object) {
        std::vector<Texmap*> maps;
        std::optional<SlotFlags> flags;
        Attempt([&] { flags.emplace(params_, object); });
        const int count = object.NumSubTexmaps();
        for (int i = 0; i < count; ++i) {
            Texmap* const map = object.GetSubTexmap(i);
            bool enabled = true; // also when the switch cannot be read
            if (map && flags)
                Attempt([&] { enabled = flags->IsEnabled(i, map, SlotNameOf(object, i)); });
            if (map && enabled)
                maps.push_back(map);
        }
        pending_.insert(pending_.end(), maps.rbegin(), maps.rend());
    }

    ParamReader& params_;
    std::optional<MtlID> id_;
    Found found_;
    std::unordered_set<const MtlBase*> visited_;
    std::vector<MtlBase*> pending_;
};

const ChoiceMaps::Whole& ChoiceMaps::WholeOf(Mtl& material) {
    const auto [at, fresh] = wholes_.try_emplace(&material);
    if (fresh) {
        const Found found = Search(params_, std::nullopt).From(material);
        at->second = {!found.maps.empty(), found.showsVertexColours};
    }
    return at->second;
}

bool ChoiceMaps::Any(Mtl& material) {
    return WholeOf(material).any;
}

bool ChoiceMaps::ShowsVertexColours(Mtl& material) {
    return WholeOf(material).showsVertexColours;
}

const FaceChoice* ChoiceMaps::For(Mtl& material, MtlID id) {
    ChoiceOfIds& ofId = materials_[&material];
    auto at = ofId.find(everyId);
    if (at == ofId.end())
        at = ofId.find(id);
    if (at == ofId.end()) {
        const Found found = Search(params_, id).From(material);
        at = ofId.emplace(found.byId ? id : everyId, Serve(found.maps)).first;
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
