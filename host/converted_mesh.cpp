#include "host/converted_mesh.h"

namespace brimwave {

ConvertedMesh::ConvertedMesh(Object* source, TimeValue time) {
    if (!source || !source->CanConvertToType(triObjectClassID))
        return;
    Object* const converted = source->ConvertToType(time, triObjectClassID);
    if (converted != source)
        made_ = converted;
    triangles_ = static_cast<TriObject*>(converted); // as the host promises for that id
}

ConvertedMesh::~ConvertedMesh() {
    if (made_)
        made_->MaybeAutoDelete();
}

} // namespace brimwave
