#pragma once
#include "object.h"

class Modifier : public BaseObject {
  public:
    SClass_ID SuperClassID() override { return OSM_CLASS_ID; }
    virtual int IsEnabled() = 0;
};

/// An object with a stack of modifiers; 0 is the top of the stack.
class IDerivedObject : public Object {
  public:
    SClass_ID SuperClassID() override { return GEN_DERIVOB_CLASS_ID; }
    virtual int NumModifiers() const = 0;
    virtual Modifier* GetModifier(int i) = 0;
    virtual Object* GetObjRef() = 0;
};
