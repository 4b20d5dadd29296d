#include "package/map_output.h"

#include "host/number_text.h"
#include "host/script_reply.h"
#include "package/map_search.h"
#include "package/param_table.h"
#include "package/texmap_tables.h"

namespace brimwave {
namespace {

constexpr ParamRow outputBlockRows[] = {
    {L"outputAmount", L"output_amount"},
    {L"Output_Amount", L"output_amount"},
    {L"rgbLevel", L"output_rgb_level"},
    {L"RGB_Level", L"output_rgb_level"},
    {L"rgbOffset", L"output_rgb_offset"},
    {L"RGB_Offset", L"output_rgb_offset"},
    {L"bumpAmount", L"output_bump_amount"},
    {L"Bump_Amount", L"output_bump_amount"},
    {L"invert", L"output_invert"},
    {L"clamp", L"output_clamp"},
    {L"alphaFromRGB", L"output_alpha_from_rgb"},
    {L"enableColorMap", L"output_use_color_map"},
    {L"useRGBColorMap", L"output_use_rgb_color_map"},
};

// The same through a script: numbers first, then flags as 1 or 0, in the order of these keys.
constexpr std::wstring_view outputNumberKeys[] = {L"output_amount", L"output_rgb_level",
                                                  L"output_rgb_offset", L"output_bump_amount"};
constexpr std::wstring_view outputFlagKeys[] = {L"output_invert", L"output_clamp",
                                                L"output_alpha_from_rgb", L"output_use_color_map",
                                                L"output_use_rgb_color_map"};

constexpr std::wstring_view outputScript =
    L"local o = undefined\n"
    L"try ( o = mp.output ) catch();\n"
    L"if o == undefined then (\"ERROR:NOOUTPUT\") else (\n"
    L"local a = \"\"; local l = \"\"; local f = \"\"; local b = \"\"\n"
    L"local i = \"\"; local c = \"\"; local r = \"\"; local m = \"\"; local u = \"\"\n"
    L"try ( a = (o.Output_Amount as string) ) catch();\n"
    L"try ( l = (o.RGB_Level as string) ) catch();\n"
    L"try ( f = (o.RGB_Offset as string) ) catch();\n"
    L"try ( b = (o.Bump_Amount as string) ) catch();\n"
    L"try ( i = (if o.invert then \"1\" else \"0\") ) catch();\n"
    L"try ( c = (if o.clamp then \"1\" else \"0\") ) catch();\n"
    L"try ( r = (if o.alphaFromRGB then \"1\" else \"0\") ) catch();\n"
    L"try ( m = (if o.enableColorMap then \"1\" else \"0\") ) catch();\n"
    L"try ( u = (if o.useRGBColorMap then \"1\" else \"0\") ) catch();\n"
    L"(a + \"|\" + l + \"|\" + f + \"|\" + b + \"|\" + i + \"|\" + c + \"|\" + r + \"|\" + m + "
    L"\"|\" + u))";

// One field for each flag: position, then the colour's three parts. The first flag is the ramp's
// start and the second its end. Reading stops at the first that does not exist.
constexpr std::wstring_view rampScript =
    L"local text = \"\"\n"
    L"local more = true\n"
    L"for n = 1 to 1000 while more do (\n"
    L"try (\n"
    L"local flag = getProperty gr.gradient_ramp ((\"flag__\" + (n as string)) as name)\n"
    L"local c = flag.color\n"
    L"local part = (flag.position as string) + \",\" + (c.r as string) + \",\" + "
    L"(c.g as string) + \",\" + (c.b as string)\n"
    L"text = text + part + \"|\"\n"
    L") catch ( more = false ) )\n"
    L"text";

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
    const auto reply = RunOnMap(map, MapSearch::Output, outputScript);
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
    AppendJsonTriple(list, r / 255.0f, g / 255.0f, b / 255.0f);
    list += L'}';
}

} // namespace

void AppendMapOutput(PackageContext& package, JsonMembers& members, MtlBase& object) {
    ReferenceTarget* const output = OutputOf(package, object);
    if (!output)
        return;
    const size_t before = members.size();
    package.params.AppendTable(members, output, outputBlockRows);
    if (members.size() == before)
        AppendOutputByScript(members, object);
}

void AppendGradientRamp(PackageContext& package, JsonMembers& members, MtlBase& map) {
    package.params.AppendTable(members, &map, gradientRampTable);
    const auto reply = RunOnMap(map, MapSearch::GradientRamp, rampScript);
    if (!reply || reply->empty())
        return;
    std::wstring list = L"[";
    for (std::wstring_view rest = *reply; !rest.empty();)
        AppendRampFlag(list, TakeField(rest));
    list += L']';
    members.AddRaw(L"flags", list);
}

} // namespace brimwave
