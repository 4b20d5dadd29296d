#pragma once
// The classes behind the SDK's materials, texture maps and their sub-objects.
#include "simhost/scene/parametric.h"
#include "stdmat.h"

namespace simhost {

class SceneMaterial final : public ParametricMtl<Mtl> {
  public:
    using ParametricMtl::ParametricMtl;
};

class SceneTexmap final : public ParametricMtlBase<Texmap> {
  public:
    using ParametricMtlBase::ParametricMtlBase;
};

/// Multi/Sub-Object: `materialList`, `names`, `materialIDList` and `mapEnabled` grow together.
class SceneMultiMtl final : public ParametricMtl<MultiMtl> {
  public:
    using ParametricMtl::ParametricMtl;
    void SetNumSubMtls(int count) override;
};

/// The host's bitmap texture. Its path is a value that no parameter block shows.
class SceneBitmapTex final : public ParametricMtlBase<BitmapTex> {
  public:
    using ParametricMtlBase::ParametricMtlBase;
    const MCHAR* GetMapName() override;
    void SetMapName(const MCHAR* mapName) override;
    const MaxSDK::AssetManagement::AssetUser& GetMap() override;
    StdUVGen* GetUVGen() override;
    TextureOutput* GetTexout() override;

  private:
    MaxSDK::AssetManagement::AssetUser asset_;
};

class SceneUVGen final : public Parametric<StdUVGen> {
  public:
    using Parametric::Parametric;
    float GetUOffs(TimeValue /*t*/) override { return Float(L"U_Offset"); }
    float GetVOffs(TimeValue /*t*/) override { return Float(L"V_Offset"); }
    float GetUScl(TimeValue /*t*/) override { return Float(L"U_Tiling", 1); }
    float GetVScl(TimeValue /*t*/) override { return Float(L"V_Tiling", 1); }
    float GetUAng(TimeValue /*t*/) override { return Float(L"U_Angle"); }
    float GetVAng(TimeValue /*t*/) override { return Float(L"V_Angle"); }
    float GetWAng(TimeValue /*t*/) override { return Float(L"W_Angle"); }
    int GetTextureTiling() override;
    int GetMapChannel() override { return Int(L"mapChannel", 1); }
    BOOL GetUseRealWorldScale() override { return Int(L"realWorldScale") != 0; }
};

class SceneTextureOutput final : public Parametric<TextureOutput> {
  public:
    using Parametric::Parametric;
};

/// Renderers, shaders and other sub-objects that are nothing but parameters.
class SceneReference final : public Parametric<ReferenceTarget> {
  public:
    using Parametric::Parametric;
};

} // namespace simhost
