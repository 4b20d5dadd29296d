#pragma once
#include "package/package_context.h"

namespace brimwave {

/// The entry of a class of materials or maps, by its normalised name in any letter case: the one
/// that has the whole name, else the first that has a part of it. Null for an unknown class.
[[nodiscard]] const ClassEntry* FindClass(std::wstring_view type);

/// The node's "type": the host's display class name, a few of them under the name that the
/// converter knows. Either a part of `className` or a text that lasts.
[[nodiscard]] std::wstring_view NormaliseClassName(std::wstring_view className, bool isMaterial);

/// Appends the parameter members of the object's class, then what its output holds. `type` is
/// the normalised class name. Nothing for an unknown class.
void WriteClassParams(PackageContext& package, JsonMembers& members, MtlBase& object,
                      std::wstring_view type);

} // namespace brimwave
