#pragma once
#include "package/package_context.h"

namespace brimwave {

/// Appends what the map's output holds (amount, levels, inversion, colour map), for maps that
/// have one: members "output_..". Read from the output's own parameters, or through a script
/// where the host shows none.
void AppendMapOutput(PackageContext& package, JsonMembers& members, MtlBase& object);

/// "flags" of a Gradient Ramp: a list of {"position" 0..1, "color"} in the ramp's order, as far as
/// the host lets them be read.
void AppendRampFlags(PackageContext& package, JsonMembers& members, MtlBase& map,
                     const ClassEntry&);

} // namespace brimwave
