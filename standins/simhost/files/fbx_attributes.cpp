#include "simhost/files/fbx_attributes.h"

namespace simhost {

void WriteFbxAttribute(FbxRecordWriter& w, std::int64_t id, std::string_view kind,
                       const FbxProperties& properties) {
    using namespace std::string_view_literals;
    w.Begin("NodeAttribute", id, "\0\x01NodeAttribute"sv, kind);
    WriteFbxProperties(w, properties);
    w.Leaf("TypeFlags", kind);
    if (kind == "Camera") { // in the camera's own space: it looks along +x
        w.Leaf("GeometryVersion", 124);
        w.Leaf("Position", 0.0, 0.0, 0.0);
        w.Leaf("Up", 0.0, 1.0, 0.0);
        w.Leaf("LookAt", 1.0, 0.0, 0.0);
    } else if (kind == "Light") {
        w.Leaf("GeometryVersion", 124);
    }
    w.End();
}

} // namespace simhost
