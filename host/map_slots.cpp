#include "host/map_slots.h"

#include "host/sdk_compat.h"
#include "host/text.h"

namespace brimwave {
namespace {

constexpr std::wstring_view flagEndings[] = {L"On", L"_on", L"Enabled", L"Enables", L"_enabled"};

// Tables of switches by slot number, for classes whose tables of maps have no like-named one.
constexpr const wchar_t* slotTables[] = {L"mapEnables", L"mapEnabled", L"Enables", L"Enabled",
                                         L"texmapOn"};

// One switch for the only map of a class.
constexpr const wchar_t* soleSwitches[] = {L"texmapOn", L"mapEnabled", L"Enabled"};

std::optional<bool> AsSwitch(const ParamValue& value) {
    const auto whole = value.Whole();
    return whole ? std::optional(*whole != 0) : std::nullopt;
}

/// "maps" -> "map", "mapList" -> "map"; empty when the name has no plural ending.
std::wstring_view Singular(std::wstring_view name) {
    for (const std::wstring_view ending : {L"List", L"s"})
        if (name.size() > ending.size() && name.ends_with(ending))
            return name.substr(0, name.size() - ending.size());
    return {};
}

/// "texmapDiffuse" -> "texmapOnDiffuse"; empty when the name does not begin with "texmap".
std::wstring TexmapOnName(std::wstring_view name) {
    constexpr std::wstring_view texmap = L"texmap";
    if (name.size() <= texmap.size() || ToLowerW(name.substr(0, texmap.size())) != texmap)
        return {};
    return L"texmapOn" + std::wstring(name.substr(texmap.size()));
}

/// The switches of one object.
class SlotSwitches {
  public:
    SlotSwitches(ParamReader& params, MtlBase& object) : params_(params), object_(object) {}

    /// Slots are to be asked for in their order: the same map may sit in several of them.
    [[nodiscard]] bool IsOn(int slot, Texmap* map, std::wstring_view slotName);

  private:
    const TexmapParam* TakeParamOf(Texmap* map);
    std::optional<bool> FindScalar(std::wstring_view stem);
    std::optional<bool> FindInTable(std::wstring_view stem, int index);
    std::optional<bool> FindSwitch(std::wstring_view name);
    std::optional<bool> FindSwitch(std::wstring_view table, int index);
    std::wstring_view Joined(std::wstring_view a, std::wstring_view b);

    ParamReader& params_;
    MtlBase& object_;
    std::vector<TexmapParam> texmaps_; // listed when the first slot with a map is asked for
    bool listed_ = false;
    std::wstring joined_; // kept for its memory
};

/// The first parameter that holds the map and that no earlier slot has taken.
const TexmapParam* SlotSwitches::TakeParamOf(Texmap* map) {
    if (!listed_)
        texmaps_ = params_.CollectTexmapParams(&object_);
    listed_ = true;
    for (TexmapParam& param : texmaps_) {
        if (param.map != map)
            continue;
        param.map = nullptr;
        return &param;
    }
    return nullptr;
}

/// Valid until the next call.
std::wstring_view SlotSwitches::Joined(std::wstring_view a, std::wstring_view b) {
    joined_.assign(a);
    joined_ += b;
    return joined_;
}

std::optional<bool> SlotSwitches::FindSwitch(std::wstring_view name) {
    return AsSwitch(params_.FindParamValue(&object_, name));
}

std::optional<bool> SlotSwitches::FindSwitch(std::wstring_view name, int index) {
    return AsSwitch(params_.GetTabParamValue(&object_, name, index));
}

std::optional<bool> SlotSwitches::FindScalar(std::wstring_view stem) {
    for (const std::wstring_view ending : flagEndings)
        if (const auto flag = FindSwitch(Joined(stem, ending)))
            return flag;
    const std::wstring middle = TexmapOnName(stem);
    return middle.empty() ? std::nullopt : FindSwitch(middle);
}

std::optional<bool> SlotSwitches::FindInTable(std::wstring_view stem, int index) {
    if (stem.empty())
        return std::nullopt;
    for (const std::wstring_view ending : flagEndings)
        if (const auto flag = FindSwitch(Joined(stem, ending), index))
            return flag;
    return std::nullopt;
}

bool SlotSwitches::IsOn(int slot, Texmap* map, std::wstring_view slotName) {
    if (const TexmapParam* const param = TakeParamOf(map)) {
        auto flag =
            param->index < 0 ? FindScalar(param->name) : FindInTable(param->name, param->index);
        if (!flag && param->index >= 0)
            flag = FindInTable(Singular(param->name), param->index);
        if (flag)
            return *flag;
    } else if (const auto named = FindScalar(slotName)) {
        return *named;
    } else if (const auto texmapOn = FindSwitch(Joined(L"texmapOn", slotName))) {
        return *texmapOn;
    }
    for (const wchar_t* const name : slotTables)
        if (const auto flag = FindSwitch(name, slot))
            return *flag;
    if (object_.NumSubTexmaps() == 1)
        for (const wchar_t* const name : soleSwitches)
            if (const auto flag = FindSwitch(name))
                return *flag;
    return object_.SubTexmapOn(slot) != 0;
}

struct MapListClass {
    MapList list;
    std::wstring_view className;
    const wchar_t* switches;
};

constexpr MapListClass mapLists[] = {
    {MapList::MultiTexture, L"MultiTexture", L"submap_on"},
    {MapList::CoronaMultiMap, L"CoronaMultiMap", L"texmapsOn"},
};

} // namespace

std::vector<MapSlot> ReadMapSlots(ParamReader& params, MtlBase& object) {
    std::vector<MapSlot> slots;
    SlotSwitches switches(params, object);
    const int count = object.NumSubTexmaps();
    for (int i = 0; i < count; ++i) {
        Texmap* const map = object.GetSubTexmap(i);
        if (!map)
            continue;
        std::wstring name = SlotNameOf(object, i);
        if (name.empty())
            name = L"slot_" + std::to_wstring(i);
        const bool enabled = switches.IsOn(i, map, name);
        slots.push_back({i, std::move(name), map, enabled});
    }
    return slots;
}

MapList MapListOf(std::wstring_view className) {
    for (const MapListClass& entry : mapLists)
        if (EqualsIgnoringCase(className, entry.className))
            return entry.list;
    return MapList::None;
}

std::vector<int> CollectListSlots(ParamReader& params, MtlBase& map, MapList list) {
    const wchar_t* switches = nullptr;
    for (const MapListClass& entry : mapLists)
        if (entry.list == list)
            switches = entry.switches;
    std::vector<int> slots;
    const int count = switches ? map.NumSubTexmaps() : 0;
    for (int i = 0; i < count; ++i) {
        if (!map.GetSubTexmap(i))
            continue;
        const ParamValue on = params.GetTabParamValue(&map, switches, i);
        if (on.kind != ParamKind::Bool || on.boolValue)
            slots.push_back(i);
    }
    return slots;
}

} // namespace brimwave
