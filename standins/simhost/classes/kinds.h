#pragma once
// The kinds of classes (super classes) under the names that scene files and the catalogue give
// them.
#include "maxtypes.h"

#include <string_view>

namespace simhost {

// A super class that the SDK's headers here do not name.
inline constexpr SClass_ID SHADER_KIND = 0x10b0;

/// "material", "texmap", "geometry", ..; 0 for another name.
[[nodiscard]] SClass_ID KindOfName(std::string_view name);
/// Whether things of that kind stand in the list of objects.
[[nodiscard]] bool IsObjectKind(SClass_ID kind);

} // namespace simhost
