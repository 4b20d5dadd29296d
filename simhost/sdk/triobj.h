#pragma once
#include "object.h"

/// An object that is a triangle mesh.
class TriObject : public GeomObject {
  public:
    Mesh mesh;
    Mesh& GetMesh() { return mesh; }
    Class_ID ClassID() override { return Class_ID(EDITTRIOBJ_CLASS_ID, 0); }
};
