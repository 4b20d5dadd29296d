#pragma once
#include "object.h"

/// An object that is a triangle mesh.
class TriObject : public GeomObject {
  public:
    Mesh mesh;
    Mesh& GetMesh() { return mesh; }
    Class_ID ClassID() override { return Class_ID(EDITTRIOBJ_CLASS_ID, 0); }
};

/// A new Editable Mesh without faces. Nothing refers to it: until it is a node's object it is its
/// maker's to free, with MaybeAutoDelete.
TriObject* CreateNewTriObject();
