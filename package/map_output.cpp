#include "package/map_output.h"

#include "host/number_text.h"
#include "host/script.h"
#include "host/script_reply.h"
#include "package/classes/class_lists.h"
#include "package/map_search.h"

#include "package_scripts_embedded.h"

namespace brimwave {
namespace {

// The output through a script: numbers first, then flags as 1 or 0, in the order of these keys.
constexpr std::wstring_view outputNumberKeys[] = {L"output_amount", L"output_rgb_level",
                                                  L"output_rgb_offset", L"output_bump_amount"};
constexpr std::wstring_view outputFlagKeys[] = {L"output_invert", L"output_clamp",
                                                L"output_alpha_from_rgb", L"output_use_color_map",
                                                L"output_use_rgb_color_map"};

bool IsOutput(ReferenceTarget* reference) {
    return reference && reference->SuperClassID() == TEXOUTPUT_CLASS_ID;
}

/// The map's output object; null for a map without one.
ReferenceTarget* OutputOf(PackageContext& package, MtlBase& map) {
    const int count = map.NumRefs();
    for (int i = 0; i < count; ++i)
        if (ReferenceTarget* const reference = map.GetReference(i); IsOutput(reference))
            return reference;
    ReferenceTarget* const held = package.params.FindParamRef(&map, L"output");
    return IsOutput(held) ? held : nullptr;
}

void AppendOutputByScript(JsonMembers& members, MtlBase& map) {
    const auto reply =
        RunOnMap(map, MapSearch::Output, FillScript(package_scripts_embedded::map_output_ms));
    if (!reply)
        return;
    std::wstring_view rest = *reply;
    for (const std::wstring_view key : outputNumberKeys)
        if (float number = 0; ParseFloat(TakeField(rest), number))
            members.AddFloat(key, number);
    for (const std::wstring_view key : outputFlagKeys)
        if (const std::wstring_view flag = TakeField(rest); !flag.empty())
            members.AddBool(key, flag == L"1");
}

/// The number before the first comma, which is cut off with it; 0 when there is none.
float TakeNumber(std::wstring_view& rest) {
    const size_t comma = rest.find(L',');
    float number = 0;
    ParseFloat(rest.substr(0, comma), number);
    rest.remove_prefix(comma == std::wstring_view::npos ? rest.size() : comma + 1);
    return number;
}

/// `field`: position 0..100 and a colour 0..255, joined by commas.
void AppendRampFlag(std::wstring& list, std::wstring_view field) {
    const float position = TakeNumber(field);
    const float r = TakeNumber(field);
    const float g = TakeNumber(field);
    const float b = TakeNumber(field);
    list += list.size() > 1 ? L",{\"position\":" : L"{\"position\":";
    AppendJsonFloat(list, position / 100.0f);
    list += L",\"color\":";
    list += FormatJsonColor(r / 255.0f, g / 255.0f, b / 255.0f);
    list += L'}';
}

} // namespace

void AppendMapOutput(PackageContext& package, JsonMembers& members, MtlBase& object) {
    ReferenceTarget* const output = OutputOf(package, object);
    if (!output)
        return;
    const size_t before = members.Count();
    package.params.AppendTable(members, output, MapOutput().rows);
    if (members.Count() == before)
        AppendOutputByScript(members, object);
}

void AppendRampFlags(PackageContext&, JsonMembers& members, MtlBase& map, const ClassEntry&) {
    const auto reply = RunOnMap(map, MapSearch::GradientRamp,
                                FillScript(package_scripts_embedded::gradient_ramp_ms));
    if (!reply || reply->empty())
        return;
    std::wstring list = L"[";
    for (std::wstring_view rest = *reply; !rest.empty();)
        AppendRampFlag(list, TakeField(rest));
    list += L']';
    members.AddRaw(L"flags", list);
}

} // namespace brimwave
