#include "package/node_tree.h"

#include "host/sdk_compat.h"

namespace brimwave {

void AppendNodeJson(PackageContext& package, std::wstring& out, MtlBase* object, int depth) {
    if (!object) {
        out += L"null";
        return;
    }
    if (const int id = package.registry.Find(object)) {
        out += L"{ \"ref\": ";
        AppendJsonInt(out, id);
        out += L" }";
        return;
    }
    const int id = package.registry.Add(object);
    const std::wstring indent(2 * static_cast<size_t>(depth), L' ');
    JsonMembers members;
    members.Add(L"\"node_id\": " + std::to_wstring(id));
    members.Add(L"\"type\": \"" + EscapeJsonString(ClassNameOf(*object)) + L"\"");
    members.Add(L"\"name\": \"" + EscapeJsonString(HostText(object->GetName())) + L"\"");
    out += L"{\n";
    AppendJoined(out, members, indent);
    out += L"\n" + indent + L"}";
}

std::wstring BuildNodeJson(PackageContext& package, MtlBase* object, int depth) {
    std::wstring text;
    AppendNodeJson(package, text, object, depth);
    return text;
}

} // namespace brimwave
