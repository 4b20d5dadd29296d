#pragma once
// The texture slots of materials and maps, and which of them are switched on.
#include "host/params.h"

namespace brimwave {

/// A slot that holds a map.
struct MapSlot {
    int index = 0;
    std::wstring name; // the host's, the same in every language; "slot_" and the index without one
    Texmap* map = nullptr;
    bool enabled = true;
};

/// The slots that hold a map, in their order. What the host throws passes through.
///
/// The classes keep the switches of their slots in parameters of many spellings; the one that
/// belongs to a slot is found from the parameter that holds the slot's map:
///   `<param>On`, `<param>_on`, `<param>Enabled`   baseTexmapOn, base_color_map_on, map1Enabled
///   "On" after a leading "texmap"                 texmapDiffuse -> texmapOnDiffuse
///   for tables the same with the table's name, also without its plural ending
///                                                 maps -> mapEnables, mapList -> mapEnabled
/// then from the slot's own name, then in a table of switches by the slot's number. What has no
/// switch is asked of the host, which calls it on unless the class says otherwise.
[[nodiscard]] std::vector<MapSlot> ReadMapSlots(ParamReader& params, MtlBase& object);

/// The classes of maps that choose one map of a list for each face.
enum class MapList { None, MultiTexture, CoronaMultiMap };

[[nodiscard]] MapList MapListOf(std::wstring_view className);

/// The slots of the list's maps that can be chosen, in the order of the list: those that are there
/// and whose switch is not off. One whose switch is missing or no flag is on.
[[nodiscard]] std::vector<int> CollectListSlots(ParamReader& params, MtlBase& map, MapList list);

} // namespace brimwave
