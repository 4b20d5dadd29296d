#pragma once
// What differs between the years of the host. Every version check of the product stands here.
#include <max.h>
#include <units.h>

#include <string>
#include <string_view>

namespace brimwave {

/// The host's text as ours; null pointers and empty strings alike give an empty text.
[[nodiscard]] inline std::wstring HostText(const MSTR& text) {
    const MCHAR* data = text.data();
    return data ? std::wstring(data) : std::wstring();
}

[[nodiscard]] inline std::wstring HostText(const MCHAR* text) {
    return text ? std::wstring(text) : std::wstring();
}

/// The class name that is the same in every language of the host.
[[nodiscard]] inline std::wstring ClassNameOf(Animatable& object) {
    MSTR name;
#if MAX_VERSION_MAJOR < 24
    object.GetClassName(name);
#else
    object.GetClassName(name, false);
#endif
    return HostText(name);
}

/// Name of a sub-map slot, the same in every language of the host. Empty when it has none.
template <class SubMaps>
[[nodiscard]] std::wstring SlotNameOf(SubMaps& maps, int slot) {
#if MAX_VERSION_MAJOR < 24
    return HostText(maps.GetSubTexmapSlotName(slot));
#else
    return HostText(maps.GetSubTexmapSlotName(slot, false));
#endif
}

/// Length of one system unit in `unit` (one of the host's UNITS_ codes).
[[nodiscard]] inline double SystemUnitScale(int unit) {
#if MAX_VERSION_MAJOR < 24
    return GetMasterScale(unit);
#else
    return GetSystemUnitScale(unit);
#endif
}

/// One of the host's directories (its APP_ codes).
[[nodiscard]] inline std::wstring HostDirectory(Interface& host, int id) {
    return HostText(host.GetDir(id)); // plain pointer before 2025, MSTR from then on
}

} // namespace brimwave
