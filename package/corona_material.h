#pragma once
#include "package/package_context.h"

namespace brimwave {

/// Members of Corona's physical and legacy materials that depend on their modes: roughness, index
/// of refraction, metalness.
void AppendCoronaModes(PackageContext& package, JsonMembers& members, MtlBase& material,
                       const ClassEntry&);

} // namespace brimwave
