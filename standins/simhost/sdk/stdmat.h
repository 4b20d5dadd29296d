#pragma once
// The host's own bitmap texture and its placement and output sub-objects, and the
// multi/sub-object material.
#include "AssetUser.h"
#include "imtl.h"

class UVGen : public ReferenceTarget {
  public:
    SClass_ID SuperClassID() override { return UVGEN_CLASS_ID; }
};

// Texture tiling flags of StdUVGen.
inline constexpr int U_WRAP = 1 << 0;
inline constexpr int V_WRAP = 1 << 1;
inline constexpr int U_MIRROR = 1 << 2;
inline constexpr int V_MIRROR = 1 << 3;

/// Placement of a map: offsets and scales in tiles, angles in radians.
class StdUVGen : public UVGen {
  public:
    virtual float GetUOffs(TimeValue t) = 0;
    virtual float GetVOffs(TimeValue t) = 0;
    virtual float GetUScl(TimeValue t) = 0;
    virtual float GetVScl(TimeValue t) = 0;
    virtual float GetUAng(TimeValue t) = 0;
    virtual float GetVAng(TimeValue t) = 0;
    virtual float GetWAng(TimeValue t) = 0;
    virtual int GetTextureTiling() = 0;
    virtual int GetMapChannel() = 0;
    virtual BOOL GetUseRealWorldScale() = 0;
};

class TextureOutput : public ReferenceTarget {
  public:
    SClass_ID SuperClassID() override { return TEXOUTPUT_CLASS_ID; }
};

class BitmapTex : public Texmap {
  public:
    /// Path as stored; may be empty or not resolve.
    virtual const MCHAR* GetMapName() = 0;
    virtual void SetMapName(const MCHAR* name) = 0;
    virtual const MaxSDK::AssetManagement::AssetUser& GetMap() = 0;
    virtual StdUVGen* GetUVGen() = 0;
    virtual TextureOutput* GetTexout() = 0;
};

class MultiMtl : public Mtl {
  public:
    BOOL IsMultiMtl() override { return TRUE; }
    virtual void SetNumSubMtls(int count) = 0;
};
