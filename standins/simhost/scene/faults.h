#pragma once
// Faults on demand: which calls of a scene thing throw or answer nothing, as broken third-party
// classes do.
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>

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
    GetInstance,
    GetRootNode,
    GetChildNode,
    ExecuteMAXScriptScript,
    NumberOfCalls
};

/// The call of that name; empty for a name that no call has.
[[nodiscard]] std::optional<Call> CallOfName(std::string_view name);
[[nodiscard]] std::string_view NameOfCall(Call call);
/// True for the calls that can be made to answer nothing.
[[nodiscard]] bool CanAnswerNothing(Call call);

class Faults {
  public:
    /// Throws when the call is one of those that shall.
    void Check(Call call) const {
        if (thrown_ & Bit(call))
            Throw(call);
    }
    /// Throws, or gives nothing (null, zero, an empty text) in place of the answer.
    template <class Answer>
    [[nodiscard]] Answer Give(Call call, Answer answer) const {
        Check(call);
        return nothing_ & Bit(call) ? Answer() : std::move(answer);
    }
    void Add(Call call) { thrown_ |= Bit(call); }
    /// All that are a thing's own. The tree is the host's: a node that throws has its children.
    void AddAll();
    void AddNothing(Call call) { nothing_ |= Bit(call); }
    void Clear() { thrown_ = nothing_ = 0; }
    /// Thrown things are then no std::exception.
    void ThrowOtherKind(bool on) { otherKind_ = on; }

  private:
    [[nodiscard]] static constexpr std::uint64_t Bit(Call call) {
        return std::uint64_t{1} << static_cast<unsigned>(call);
    }
    [[noreturn]] void Throw(Call call) const;
    std::uint64_t thrown_ = 0;
    std::uint64_t nothing_ = 0;
    bool otherKind_ = false;
};

static_assert(static_cast<unsigned>(Call::NumberOfCalls) <= 64);

} // namespace simhost
