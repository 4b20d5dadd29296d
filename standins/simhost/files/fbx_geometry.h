#pragma once
// A triangle mesh as the FBX object that nodes share.
#include "simhost/files/fbx_property.h"

#include <max.h>

namespace simhost {

/// `materials`: for each face the index among the materials of the nodes that use the mesh, -1
/// for none; empty when no face has one. Written are positions, faces, normals, vertex colours
/// (with alpha when the mesh has that channel) and every texture channel, "UVChannel_<n>".
/// Indices of the mesh that point at nothing are written as 0.
void WriteFbxGeometry(FbxRecordWriter& writer, std::int64_t id, Mesh& mesh, DWORD wireColor,
                      const std::vector<std::int32_t>& materials);

} // namespace simhost
