#pragma once
#include "package/package_context.h"

namespace brimwave {

/// Members of a bitmap map that name its file and place it: "filepath" (the name under which the
/// job's textures folder holds it), "filepath_abs" (only when the file is found), tiling, size,
/// offset, rotation in degrees, colour space and cropping. The host's own bitmap keeps its path
/// and placement outside of its parameters; they are taken from there.
void AppendBitmap(PackageContext& package, JsonMembers& members, MtlBase& map, const ClassEntry&);

} // namespace brimwave
