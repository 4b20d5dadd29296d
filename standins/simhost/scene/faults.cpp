#include "simhost/scene/faults.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>
#include <string>

namespace simhost {

namespace {

// In the order of Call.
constexpr std::string_view callNames[] = {"GetClassName",
                                          "ClassID",
                                          "SuperClassID",
                                          "NumParamBlocks",
                                          "GetParamBlock",
                                          "NumRefs",
                                          "GetReference",
                                          "NumSubs",
                                          "SubAnim",
                                          "GetName",
                                          "SetName",
                                          "NumSubTexmaps",
                                          "GetSubTexmap",
                                          "SubTexmapOn",
                                          "GetSubTexmapSlotName",
                                          "NumSubMtls",
                                          "GetSubMtl",
                                          "GetSubMtlSlotName",
                                          "GetMapName",
                                          "GetMap",
                                          "GetUVGen",
                                          "GetTexout",
                                          "GetDesc",
                                          "GetValue",
                                          "Count",
                                          "GetAssetUser",
                                          "CanConvertToType",
                                          "ConvertToType",
                                          "IsRenderable",
                                          "EvalCameraState",
                                          "IsOrtho",
                                          "GetFOV",
                                          "GetManualClip",
                                          "GetClipDist",
                                          "GetTDist",
                                          "NumModifiers",
                                          "GetModifier",
                                          "GetObjRef",
                                          "IsEnabled",
                                          "EvalWorldState",
                                          "GetMtl",
                                          "GetNodeTM",
                                          "GetObjectRef",
                                          "GetTarget",
                                          "GetEnvironmentMap",
                                          "GetBackGround",
                                          "GetDir",
                                          "GetCurFileName",
                                          "GetCurFilePath",
                                          "GetCurrentRenderer",
                                          "GetSceneMtls",
                                          "GetFullFilePath",
                                          "GetInstance",
                                          "GetRootNode",
                                          "GetChildNode",
                                          "ExecuteMAXScriptScript"};

// Those whose answer passes through Faults::Give.
constexpr Call canAnswerNothing[] = {Call::GetParamBlock,
                                     Call::GetReference,
                                     Call::GetName,
                                     Call::NumSubTexmaps,
                                     Call::GetSubTexmap,
                                     Call::NumSubMtls,
                                     Call::GetSubMtl,
                                     Call::GetMapName,
                                     Call::GetDesc,
                                     Call::EvalWorldState,
                                     Call::GetMtl,
                                     Call::GetObjectRef,
                                     Call::GetEnvironmentMap,
                                     Call::GetDir,
                                     Call::GetCurFileName,
                                     Call::GetCurFilePath,
                                     Call::GetCurrentRenderer,
                                     Call::GetFullFilePath,
                                     Call::GetInstance,
                                     Call::GetRootNode,
                                     Call::GetChildNode,
                                     Call::ExecuteMAXScriptScript};

static_assert(std::size(callNames) == static_cast<size_t>(Call::NumberOfCalls));

} // namespace

std::optional<Call> CallOfName(std::string_view name) {
    for (size_t i = 0; i < std::size(callNames); ++i)
        if (callNames[i] == name)
            return static_cast<Call>(i);
    return std::nullopt;
}

std::string_view NameOfCall(Call call) {
    return callNames[static_cast<size_t>(call)];
}

bool CanAnswerNothing(Call call) {
    return std::find(std::begin(canAnswerNothing), std::end(canAnswerNothing), call) !=
           std::end(canAnswerNothing);
}

void Faults::AddAll() {
    thrown_ = ~Bit(Call::GetChildNode);
}

void Faults::Throw(Call call) const {
    if (otherKind_)
        throw static_cast<int>(call);
    throw std::runtime_error("simulated fault in " + std::string(NameOfCall(call)));
}

} // namespace simhost
