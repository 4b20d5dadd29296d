#pragma once
#include "package/package_context.h"

namespace brimwave {

/// Members of a Falloff map: colours, amounts and switches of its two sides, type, direction and
/// distances. Its curve cannot be read. Where the host shows no parameters they are asked for
/// through a script.
void AppendFalloff(PackageContext& package, JsonMembers& members, MtlBase& map);

} // namespace brimwave
