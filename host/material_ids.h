#pragma once
#include <max.h>

#include <vector>

namespace brimwave {

/// Finds the material ids of meshes in one look at each face. One that is used again keeps its
/// memory.
class MaterialIdFinder {
  public:
    /// The ids of the mesh's faces, each once, in ascending order; valid until the next call.
    [[nodiscard]] const std::vector<MtlID>& Collect(const Mesh& mesh);

  private:
    std::vector<bool> seen_ = std::vector<bool>(size_t{1} << 16); // by id
    std::vector<MtlID> ids_;
};

} // namespace brimwave
