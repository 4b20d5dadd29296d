#include "package/falloff.h"

#include "host/script.h"
#include "host/script_reply.h"
#include "package/map_search.h"
#include "package/param_table.h"

#include "package_scripts_embedded.h"

namespace brimwave {
namespace {

constexpr ParamRow falloffRows[] = {
    {L"color1", L"color1"},
    {L"color2", L"color2"},
    {L"map1Amount", L"map1_amount"},
    {L"map2Amount", L"map2_amount"},
    {L"map1On", L"map1_enabled"},
    {L"map2On", L"map2_enabled"},
    {L"type", L"falloff_type"},
    {L"direction", L"falloff_direction"},
    {L"mtlIOROverride", L"ior_override"},
    {L"IOR", L"ior"},
    {L"extrapolateOn", L"extrapolate"},
    {L"nearDistance", L"near_distance"},
    {L"farDistance", L"far_distance"},
};

/// The rows' properties as the script lists them.
std::wstring PropertyNames() {
    std::wstring names;
    for (const ParamRow& row : falloffRows) {
        names += names.empty() ? L"#" : L", #";
        names += row.param;
    }
    return names;
}

void AppendByScript(JsonMembers& members, MtlBase& map) {
    const auto reply = RunOnMap(
        map, MapSearch::Properties,
        FillScript(package_scripts_embedded::falloff_ms, {{"properties", PropertyNames()}}));
    if (!reply)
        return;
    std::wstring_view rest = *reply;
    for (const ParamRow& row : falloffRows)
        if (const std::wstring_view value = TakeField(rest); !value.empty())
            members.AddRaw(row.key, value);
}

} // namespace

void AppendFalloff(PackageContext& package, JsonMembers& members, MtlBase& map) {
    const size_t before = members.size();
    package.params.AppendTable(members, &map, falloffRows);
    if (members.size() == before)
        AppendByScript(members, map);
}

} // namespace brimwave
