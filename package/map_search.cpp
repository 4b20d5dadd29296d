#include "package/map_search.h"

#include "host/script.h"
#include "host/sdk_compat.h"

#include "package_scripts_embedded.h"

namespace brimwave {
namespace {

using namespace package_scripts_embedded;

struct SearchNames {
    std::wstring_view find;   // from one root
    std::wstring_view driver; // in the whole scene
    std::wstring_view map;    // the local
    std::wstring_view anyRoot;
};

SearchNames NamesOf(MapSearch search) {
    switch (search) {
    case MapSearch::Output:
        return {L"BW_findTexmapByNameOut", L"BW_findMapForOutput", L"mp", L"false"};
    case MapSearch::GradientRamp:
        return {L"BW_findTexmapByName", L"BW_findGradientRamp", L"gr", L"false"};
    case MapSearch::Properties:
        break;
    }
    return {L"BW_findTexByNameP", L"BW_findMapP", L"mp", L"true"};
}

std::wstring ScriptByHandle(MtlBase& map, const SearchNames& names, std::wstring_view body) {
    const std::wstring handle = std::to_wstring(Animatable::GetHandleByAnim(&map));
    return FillScript(map_by_handle_ms, {{"map", names.map}, {"handle", handle}, {"body", body}});
}

std::wstring ScriptByName(MtlBase& map, const SearchNames& names, std::wstring_view body) {
    const std::wstring name = HostText(map.GetName());
    return FillScript(map_by_name_ms, {{"find", names.find},
                                       {"driver", names.driver},
                                       {"anyRoot", names.anyRoot},
                                       {"map", names.map},
                                       {"name", name},
                                       {"body", body}});
}

bool IsFound(const std::optional<std::wstring>& reply) {
    return reply && *reply != L"ERROR:NOTFOUND";
}

} // namespace

std::optional<std::wstring> RunOnMap(MtlBase& map, MapSearch search, std::wstring_view body) {
    const SearchNames names = NamesOf(search);
    auto reply = RunScriptString(ScriptByHandle(map, names, body));
    if (!IsFound(reply))
        reply = RunScriptString(ScriptByName(map, names, body));
    if (reply && reply->starts_with(L"ERROR:"))
        return std::nullopt;
    return reply;
}

} // namespace brimwave
