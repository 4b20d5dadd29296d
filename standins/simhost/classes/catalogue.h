#pragma once
// The classes that the host knows, as data: see the .json files beside this one.
#include "simhost/scene/class_info.h"

namespace simhost {

// Super classes that the SDK's headers here do not name.
inline constexpr SClass_ID SHADER_KIND = 0x10b0;

/// The class of that kind (a super class id) by its display name or, when there is none, by its
/// script name. Null when the catalogue lacks it.
[[nodiscard]] ClassPtr FindClass(std::wstring_view name, SClass_ID kind);
/// All classes of that name, of any kind, in the catalogue's order.
[[nodiscard]] std::vector<ClassPtr> FindClasses(std::wstring_view name);
[[nodiscard]] ClassPtr FindClassById(Class_ID id, SClass_ID kind);
/// Shaders, placements, outputs and the like.
[[nodiscard]] ClassPtr FindSubObjectClass(std::wstring_view name);
[[nodiscard]] const std::vector<ClassPtr>& AllClasses();

/// "material", "texmap", "geometry", .. as scene files name the kinds; 0 for another name.
[[nodiscard]] SClass_ID KindOfName(std::string_view name);
[[nodiscard]] std::string_view NameOfKind(SClass_ID kind);
/// Whether things of that kind stand in the list of objects.
[[nodiscard]] bool IsObjectKind(SClass_ID kind);

} // namespace simhost
