#pragma once
#include <max.h>

#include <vector>

namespace simhost {

/// Normals of a mesh, three numbers for each corner of each face: the explicit ones where the
/// mesh has them, else those that its smoothing groups make.
[[nodiscard]] std::vector<double> FbxCornerNormals(Mesh& mesh);

} // namespace simhost
