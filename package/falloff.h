#pragma once
#include "package/package_context.h"

namespace brimwave {

/// The rows of a Falloff map whose parameters the host does not show, which is when there is no
/// member yet: they are asked for through a script.
void AppendHiddenFalloff(PackageContext&, JsonMembers& members, MtlBase& map,
                         const ClassEntry& entry);

} // namespace brimwave
