#include "host/converted_mesh.h"

namespace brimwave {

ConvertedMesh::ConvertedMesh(Object* source, TimeValue time) : source_(source) {
    if (source && source->CanConvertToType(triObjectClassID)) // the host then gives a TriObject
        triangles_ = static_cast<TriObject*>(source->ConvertToType(time, triObjectClassID));
}

ConvertedMesh::~ConvertedMesh() {
    if (triangles_ && triangles_ != source_)
        triangles_->MaybeAutoDelete();
}

} // namespace brimwave
