#include "host/material_ids.h"

#include <algorithm>

namespace brimwave {

const std::vector<MtlID>& MaterialIdFinder::Collect(const Mesh& mesh) {
    ids_.clear();
    const int faces = mesh.getNumFaces();
    for (int i = 0; i < faces; ++i) {
        const MtlID id = mesh.faces[i].getMatID();
        if (seen_[id])
            continue;
        seen_[id] = true;
        ids_.push_back(id);
    }
    for (const MtlID id : ids_)
        seen_[id] = false;
    std::sort(ids_.begin(), ids_.end());
    return ids_;
}

} // namespace brimwave
