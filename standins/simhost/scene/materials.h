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
    void GetSubMtlName(int i, MSTR& subName) override;
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
    float GetUOffs(TimeValue t) override;
    float GetVOffs(TimeValue t) override;
    float GetUScl(TimeValue t) override;
    float GetVScl(TimeValue t) override;
    float GetUAng(TimeValue t) override;
    float GetVAng(TimeValue t) override;
    float GetWAng(TimeValue t) override;
    int GetTextureTiling() override;
    int GetMapChannel() override;
    BOOL GetUseRealWorldScale() override;
};

class SceneTextureOutput final : public Parametric<TextureOutput> {
  public:
    using Parametric::Parametric;
    float GetOutputLevel(TimeValue t) override;
    BOOL GetInvert() override;
};

/// Renderers, shaders and other sub-objects that are nothing but parameters.
class SceneReference final : public Parametric<ReferenceTarget> {
  public:
    using Parametric::Parametric;
};

} // namespace simhost
