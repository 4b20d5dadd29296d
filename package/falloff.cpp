#include "package/falloff.h"

#include "host/script_reply.h"
#include "package/map_search.h"
#include "package/param_table.h"

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

/// One field for each row, in their order: a finished JSON value, or nothing where the map lacks
/// the property.
std::wstring PropertiesScript() {
    std::wstring script = L"local text = \"\"\nlocal v = undefined\nlocal part = \"\"\n";
    for (const ParamRow& row : falloffRows) {
        script += L"v = undefined\n"
                  L"try ( v = mp.";
        script += row.param;
        script += L" ) catch();\n"
                  L"part = \"\"\n"
                  L"case (classOf v) of (\n"
                  L"Color: ( part = \"[\" + ((v.r / 255.0) as string) + \",\" + "
                  L"((v.g / 255.0) as string) + \",\" + ((v.b / 255.0) as string) + \"]\" )\n"
                  L"BooleanClass: ( part = (v as string) )\n"
                  L"Integer: ( part = (v as string) )\n"
                  L"Float: ( part = (v as string) )\n"
                  L")\n"
                  L"text = text + part + \"|\"\n";
    }
    return script + L"text";
}

void AppendByScript(JsonMembers& members, MtlBase& map) {
    const auto reply = RunOnMap(map, MapSearch::Properties, PropertiesScript());
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
