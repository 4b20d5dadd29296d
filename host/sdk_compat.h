#pragma once
// What differs between the years of the host. Every version check of the product stands here
// and in sdk_compat.cpp.
#include <max.h>
#include <units.h>

#include <string>
#include <string_view>

class FPValue;

namespace brimwave {

/// The host's text as ours, valid as long as the host's; null pointers and empty strings alike
/// give an empty text.
[[nodiscard]] inline std::wstring_view HostView(const MCHAR* text) {
    return text ? std::wstring_view(text) : std::wstring_view();
}

[[nodiscard]] inline std::wstring_view HostView(const MSTR& text) {
    return HostView(text.data());
}

/// A copy of it.
[[nodiscard]] inline std::wstring HostText(const MSTR& text) {
    return std::wstring(HostView(text));
}

[[nodiscard]] inline std::wstring HostText(const MCHAR* text) {
    return std::wstring(HostView(text));
}

/// The class name that is the same in every language of the host.
[[nodiscard]] inline MSTR HostClassName(Animatable& object) {
    MSTR name;
#if MAX_VERSION_MAJOR < 24
    object.GetClassName(name);
#else
    object.GetClassName(name, false);
#endif
    return name;
}

[[nodiscard]] inline std::wstring ClassNameOf(Animatable& object) {
    return HostText(HostClassName(object));
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

/// Runs a script; `value`, when not null, receives what it gives. Quiet errors go to the host's
/// log, the others to its user.
BOOL ExecuteScript(const MCHAR* script, bool quiet, FPValue* value);

/// One of the host's directories (its APP_ codes).
[[nodiscard]] inline std::wstring HostDirectory(Interface& host, int id) {
    return HostText(host.GetDir(id)); // plain pointer before 2025, MSTR from then on
}

} // namespace brimwave
