#pragma once
#include "package/package_context.h"

namespace brimwave {

/// "num_layers" and "layers" of a layered map: blend mode, opacity and flags of each layer.
void AppendCompositeMap(PackageContext& package, JsonMembers& members, MtlBase& map,
                        const ClassEntry&);

/// "num_layers" and "layers" of a layered material: mix type, amount and flag of each layer.
void AppendCompositeMaterial(PackageContext& package, JsonMembers& members, MtlBase& material,
                             const ClassEntry&);

} // namespace brimwave
