#pragma once
// The classes that the host knows, as data: see the .json files beside this one.
#include "simhost/classes/class_info.h"

namespace simhost {

/// The class of that kind (a super class id) by its display name or, when there is none, by its
/// script name. Null when the catalogue lacks it.
[[nodiscard]] ClassPtr FindClass(std::wstring_view name, SClass_ID kind);
/// All classes of that name, of any kind, in the catalogue's order.
[[nodiscard]] std::vector<ClassPtr> FindClasses(std::wstring_view name);
/// Shaders, placements, outputs and the like.
[[nodiscard]] ClassPtr FindSubObjectClass(std::wstring_view name);
[[nodiscard]] const std::vector<ClassPtr>& AllClasses();

} // namespace simhost
