#include "package/displacement.h"

#include "host/modifier_stack.h"
#include "host/sdk_compat.h"

namespace brimwave {
namespace {

constexpr ParamRow vrayRows[] = {
    {L"amount", L"vray_disp_amount"},
    {L"shift", L"vray_disp_shift"},
    {L"relativeToBBox", L"vray_disp_relative_bbox"},
    {L"waterLevelOn", L"vray_disp_water_level_on"},
    {L"waterLevelValue", L"vray_disp_water_level"},
    {L"texmap_min", L"vray_disp_texmap_min"},
    {L"texmap_max", L"vray_disp_texmap_max"},
};

constexpr ParamRow coronaRows[] = {
    {L"maxDisplace", L"displacement_max"},       {L"amount", L"displacement_max"},
    {L"displacementMax", L"displacement_max"},   {L"minDisplace", L"displacement_min"},
    {L"displacementMin", L"displacement_min"},   {L"waterLevel", L"displacement_water_level"},
    {L"screenSize", L"displacement_screen_px"},  {L"pixelSize", L"displacement_screen_px"},
    {L"displacementType", L"displacement_type"}, {L"enabled", L"displacement_enabled"},
};

void AppendVRay(PackageContext& package, JsonMembers& members, Modifier& modifier) {
    members.AddBool(L"vray_disp", true);
    package.params.AppendTable(members, &modifier, vrayRows);
    members.AddBool(L"vray_disp_has_texmap",
                    package.params.FindParamRef(&modifier, L"texmap") != nullptr);
}

void AppendCorona(PackageContext& package, JsonMembers& members, Modifier& modifier) {
    package.params.AppendTable(members, &modifier, coronaRows);
    if (members.empty())
        members.AddBool(L"displacement_found", true);
}

void AppendModifier(PackageContext& package, std::wstring& out, Modifier& modifier,
                    DisplacementKind kind) {
    JsonMembers members;
    if (kind == DisplacementKind::VRay)
        AppendVRay(package, members, modifier);
    else
        AppendCorona(package, members, modifier);
    out += L'{';
    for (size_t i = 0; i < members.size(); ++i) {
        if (i > 0)
            out += L',';
        out += members[i];
    }
    out += L'}';
}

} // namespace

void ProbeDisplacementJson(PackageContext& package, std::wstring& out, INode& node) {
    const bool found = AnyModifier(node.GetObjectRef(), [&](Modifier& modifier) {
        const DisplacementKind kind = DisplacementKindOf(ClassNameOf(modifier));
        if (kind != DisplacementKind::None)
            AppendModifier(package, out, modifier, kind);
        return kind != DisplacementKind::None;
    });
    if (!found)
        out += L"null";
}

} // namespace brimwave
