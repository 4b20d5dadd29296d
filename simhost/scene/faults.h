#pragma once
// Faults on demand: which calls of a scene thing throw, as broken third-party classes do.
#include <cstdint>
#include <optional>
#include <string_view>

namespace simhost {

enum class Call : unsigned char {
    GetClassName,
    ClassID,
    SuperClassID,
    NumParamBlocks,
    GetParamBlock,
    NumRefs,
    GetReference,
    NumSubs,
    SubAnim,
    GetName,
    SetName,
    NumSubTexmaps,
    GetSubTexmap,
    SubTexmapOn,
    GetSubTexmapSlotName,
    NumSubMtls,
    GetSubMtl,
    GetSubMtlSlotName,
    GetMapName,
    GetMap,
    GetUVGen,
    GetTexout,
    GetDesc,
    GetValue,
    Count,
    GetAssetUser,
    CanConvertToType,
    ConvertToType,
    IsRenderable,
    EvalCameraState,
    IsOrtho,
    GetFOV,
    GetManualClip,
    GetClipDist,
    GetTDist,
    NumModifiers,
    GetModifier,
    GetObjRef,
    IsEnabled,
    EvalWorldState,
    GetMtl,
    GetNodeTM,
    GetObjectRef,
    GetTarget,
    GetEnvironmentMap,
    GetBackGround,
    GetDir,
    GetCurFileName,
    GetCurFilePath,
    GetCurrentRenderer,
    GetSceneMtls,
    GetFullFilePath,
    NumberOfCalls
};

/// The call of that name; empty for a name that no call has.
[[nodiscard]] std::optional<Call> CallOfName(std::string_view name);
[[nodiscard]] std::string_view NameOfCall(Call call);

class Faults {
  public:
    /// Throws when the call is one of those that shall.
    void Check(Call call) const {
        if (mask_ >> static_cast<unsigned>(call) & 1)
            Throw(call);
    }
    void Add(Call call) { mask_ |= std::uint64_t{1} << static_cast<unsigned>(call); }
    void AddAll() { mask_ = ~std::uint64_t{0}; }
    void Clear() { mask_ = 0; }
    /// Thrown things are then no std::exception.
    void ThrowOtherKind(bool on) { otherKind_ = on; }

  private:
    [[noreturn]] void Throw(Call call) const;
    std::uint64_t mask_ = 0;
    bool otherKind_ = false;
};

static_assert(static_cast<unsigned>(Call::NumberOfCalls) <= 64);

} // namespace simhost
