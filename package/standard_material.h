#pragma once
#include "package/package_context.h"

namespace brimwave {

/// Members of the host's Standard material: the name of its shader, the colours and levels that
/// the material or its shader holds, and "map_slots", the amount and switch of each map. Nothing
/// for a map.
void AppendStandardMaterial(PackageContext& package, JsonMembers& members, MtlBase& object,
                            const ClassEntry&);

} // namespace brimwave
