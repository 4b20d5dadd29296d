#pragma once
#include "package/package_context.h"

namespace brimwave {

/// Members of Corona's physical and legacy materials: map amounts, what is computed from the
/// roughness and refraction modes, then the values. Displacement limits and the scattering
/// radius are written in metres.
void AppendCoronaMaterial(PackageContext& package, JsonMembers& members, MtlBase& material);

} // namespace brimwave
