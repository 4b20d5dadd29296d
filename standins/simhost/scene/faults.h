#pragma once
// Faults on demand: which calls of a scene thing throw or answer nothing, as broken third-party
// classes do.

// First, so that a name which the system's headers define means the same in every source.
#include <maxtypes.h>

#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>

namespace simhost {

// The calls that can throw. GIVES: those whose answer passes through Faults::Give, so that they can
// answer nothing as well.
// clang-format off
#define SIMHOST_CALLS(THROWS, GIVES)                                                            \
    THROWS(GetClassName) THROWS(ClassID) THROWS(SuperClassID) THROWS(NumParamBlocks)            \
    GIVES(GetParamBlock) THROWS(NumRefs) GIVES(GetReference) THROWS(NumSubs) THROWS(SubAnim)    \
    GIVES(GetName) THROWS(SetName) GIVES(NumSubTexmaps) GIVES(GetSubTexmap) THROWS(SubTexmapOn) \
    THROWS(GetSubTexmapSlotName) GIVES(NumSubMtls) GIVES(GetSubMtl) THROWS(GetSubMtlSlotName)   \
    GIVES(GetMapName) THROWS(GetMap) THROWS(GetUVGen) THROWS(GetTexout) GIVES(GetDesc)          \
    THROWS(GetValue) THROWS(Count) THROWS(GetAssetUser) THROWS(CanConvertToType)                \
    THROWS(ConvertToType) THROWS(IsRenderable) THROWS(EvalCameraState) THROWS(IsOrtho)          \
    THROWS(GetFOV) THROWS(GetManualClip) THROWS(GetClipDist) THROWS(GetTDist)                   \
    THROWS(NumModifiers) THROWS(GetModifier) THROWS(GetObjRef) THROWS(IsEnabled)                \
    GIVES(EvalWorldState) GIVES(GetMtl) THROWS(GetNodeTM) GIVES(GetObjectRef) THROWS(GetTarget) \
    GIVES(GetEnvironmentMap) THROWS(GetBackGround) GIVES(GetDir) GIVES(GetCurFileName)          \
    GIVES(GetCurFilePath) GIVES(GetCurrentRenderer) THROWS(GetSceneMtls) GIVES(GetFullFilePath) \
    GIVES(GetInstance) GIVES(GetRootNode) GIVES(GetChildNode) GIVES(ExecuteMAXScriptScript)
// clang-format on

#define SIMHOST_CALL(name) name,
enum class Call : unsigned char { SIMHOST_CALLS(SIMHOST_CALL, SIMHOST_CALL) NumberOfCalls };
#undef SIMHOST_CALL

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
