#include "package/material_json.h"

#include "host/attempt.h"
#include "host/sdk_compat.h"
#include "package/node_tree.h"

namespace brimwave {
namespace {

using namespace std::literals;

bool IsMultiMaterial(std::wstring_view className) {
    return className.find(L"Multi") != std::wstring_view::npos &&
           className.find(L"Texture") == std::wstring_view::npos;
}

void AppendNamed(std::wstring& out, std::wstring_view indentAndKey, std::wstring_view text) {
    out += indentAndKey;
    AppendJsonString(out, text);
    out += L",\n"sv;
}

void AppendSubMaterial(PackageContext& package, std::wstring& out, Mtl* material, int position) {
    out += L"      {\n        \"material_id\": "sv;
    AppendJsonInt(out, position);
    out += L",\n"sv;
    AppendNamed(out, L"        \"material_name\": "sv,
                HostView(material ? material->GetName() : MSTR()));
    out += L"        \"node_tree\": "sv;
    AppendNodeJson(package, out, material, 3);
    out += L"\n      }"sv;
}

void AppendMulti(PackageContext& package, std::wstring& out, Mtl& material) {
    out += L"{\n      \"type\": \"Multimaterial\",\n"sv;
    AppendNamed(out, L"      \"name\": "sv, HostView(material.GetName()));
    out += L"      \"sub_materials\": [\n"sv;
    const int count = material.NumSubMtls();
    for (int i = 0; i < count; ++i) {
        if (i > 0)
            out += L",\n"sv;
        AppendSubMaterial(package, out, material.GetSubMtl(i), i + 1);
    }
    out += L"      ]\n    }"sv;
}

void AppendSingle(PackageContext& package, std::wstring& out, Mtl& material,
                  std::wstring_view className) {
    out += L"{\n"sv;
    AppendNamed(out, L"      \"type\": "sv, className);
    AppendNamed(out, L"      \"name\": "sv, HostView(material.GetName()));
    out += L"      \"node_tree\": "sv;
    AppendNodeJson(package, out, &material, 2);
    out += L"\n    }"sv;
}

} // namespace

std::wstring buildMaterialJson(PackageContext& package, Mtl* material,
                               std::vector<std::wstring>& errors) {
    if (!material)
        return L"null";
    const size_t mark = package.registry.Mark();
    std::wstring text;
    const bool written = Attempt([&] {
        const MSTR className = HostClassName(*material);
        if (IsMultiMaterial(HostView(className)))
            AppendMulti(package, text, *material);
        else
            AppendSingle(package, text, *material, HostView(className));
    });
    if (written)
        return text;
    package.registry.RollBack(mark);
    errors.emplace_back(L"buildMaterialJson exception");
    return L"null";
}

} // namespace brimwave
