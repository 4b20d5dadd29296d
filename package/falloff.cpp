#include "package/falloff.h"

#include "host/script.h"
#include "host/script_reply.h"
#include "package/classes/class_entry.h"
#include "package/map_search.h"

#include "package_scripts_embedded.h"

namespace brimwave {
namespace {

/// The rows' properties as the script lists them.
std::wstring PropertyNames(std::span<const ParamRow> rows) {
    std::wstring names;
    for (const ParamRow& row : rows) {
        names += names.empty() ? L"#" : L", #";
        names += row.param;
    }
    return names;
}

} // namespace

void AppendHiddenFalloff(PackageContext&, JsonMembers& members, MtlBase& map,
                         const ClassEntry& entry) {
    if (!members.empty())
        return;
    const auto reply = RunOnMap(map, MapSearch::Properties,
                                FillScript(package_scripts_embedded::falloff_ms,
                                           {{"properties", PropertyNames(entry.rows)}}));
    if (!reply)
        return;
    std::wstring_view rest = *reply;
    for (const ParamRow& row : entry.rows)
        if (const std::wstring_view value = TakeField(rest); !value.empty())
            members.AddRaw(row.key, value);
}

} // namespace brimwave
