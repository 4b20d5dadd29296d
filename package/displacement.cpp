#include "package/displacement.h"

#include "host/modifier_stack.h"
#include "host/sdk_compat.h"
#include "package/classes/class_lists.h"

namespace brimwave {
namespace {

void AppendModifier(PackageContext& package, std::wstring& out, Modifier& modifier,
                    DisplacementKind kind) {
    const bool vray = kind == DisplacementKind::VRay;
    JsonMembers members;
    if (vray)
        members.AddBool(L"vray_disp", true);
    const ClassEntry& entry = vray ? VRayDisplacement() : CoronaDisplacement();
    package.params.AppendTable(members, &modifier, entry.rows);
    if (vray)
        members.AddBool(L"vray_disp_has_texmap",
                        package.params.FindParamRef(&modifier, L"texmap") != nullptr);
    else if (members.empty())
        members.AddBool(L"displacement_found", true);
    out += L'{';
    for (size_t i = 0; i < members.Count(); ++i) {
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
