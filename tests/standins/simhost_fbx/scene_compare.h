#pragma once
#include <assimp/scene.h>

namespace fbxtest {

/// The open scene and the imported one are the same tree of names with the same places in the
/// world, and what shows a mesh has the same faces with the same corners, coordinates, colours
/// and materials.
void ExpectSameScene(const aiScene& imported);

} // namespace fbxtest
