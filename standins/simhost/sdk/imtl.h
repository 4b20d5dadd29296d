#pragma once
// Materials and texture maps.
#include "color.h"
#include "ref.h"

class Mtl;
class Texmap;
class Bitmap;

/// What holds texture maps in numbered, named slots. An empty slot is null.
class ISubMap {
  public:
    virtual ~ISubMap() = default;
    virtual int NumSubTexmaps() { return 0; }
    virtual Texmap* GetSubTexmap(int /*i*/) { return nullptr; }
    virtual void SetSubTexmap(int /*i*/, Texmap* /*map*/) {}
    virtual int SubTexmapOn(int /*i*/) { return 1; }
    virtual MSTR GetSubTexmapSlotName(int /*i*/, bool /*localized*/) { return MSTR(); }
};

class MtlBase : public ReferenceTarget, public ISubMap {
  public:
    virtual MSTR GetName() = 0;
    virtual void SetName(const MSTR& name) = 0;
};

class Mtl : public MtlBase {
  public:
    SClass_ID SuperClassID() override { return MATERIAL_CLASS_ID; }
    virtual int NumSubMtls() { return 0; }
    virtual Mtl* GetSubMtl(int /*i*/) { return nullptr; }
    virtual MSTR GetSubMtlSlotName(int /*i*/, bool /*localized*/) { return MSTR(); }
    virtual BOOL IsMultiMtl() { return FALSE; }
};

class Texmap : public MtlBase {
  public:
    SClass_ID SuperClassID() override { return TEXMAP_CLASS_ID; }
};
