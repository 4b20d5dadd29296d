#pragma once
#include "host/params.h"

namespace brimwave {

/// Tells which texture slots of one object are switched on. The classes keep their switches in
/// parameters of many spellings; the one that belongs to a slot is found from the parameter that
/// holds the slot's map:
///   `<param>On`, `<param>_on`, `<param>Enabled`   baseTexmapOn, base_color_map_on, map1Enabled
///   "On" after a leading "texmap"                 texmapDiffuse -> texmapOnDiffuse
///   for tables the same with the table's name, also without its plural ending
///                                                 maps -> mapEnables, mapList -> mapEnabled
/// then from the slot's own name, then in a table of switches by the slot's number. What has no
/// switch is asked of the host, which calls it on unless the class says otherwise.
class SlotFlags {
  public:
    SlotFlags(ParamReader& params, MtlBase& object);

    /// Slots are to be asked for in their order: the same map may sit in several of them.
    [[nodiscard]] bool IsEnabled(int slot, Texmap* map, std::wstring_view slotName);

  private:
    const TexmapParam* TakeParamOf(Texmap* map);
    std::optional<bool> ScalarFlag(std::wstring_view stem);
    std::optional<bool> TableFlag(std::wstring_view stem, int index);
    std::wstring_view Joined(std::wstring_view a, std::wstring_view b);
    std::optional<bool> ReadFlag(std::wstring_view name);
    std::optional<bool> ReadTableFlag(std::wstring_view name, int index);

    ParamReader& params_;
    MtlBase& object_;
    std::vector<TexmapParam> texmaps_; // listed when the first slot with a map is asked for
    bool listed_ = false;
    std::wstring joined_; // kept for its memory
};

} // namespace brimwave
