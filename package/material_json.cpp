#include "package/material_json.h"

#include "host/sdk_compat.h"
#include "package/node_tree.h"

namespace brimwave {
namespace {

bool IsMultiMaterial(std::wstring_view className) {
    return className.find(L"Multi") != std::wstring_view::npos &&
           className.find(L"Texture") == std::wstring_view::npos;
}

void AppendNamed(std::wstring& out, std::wstring_view indentAndKey, std::wstring_view text) {
    out += indentAndKey;
    AppendJsonString(out, text);
    out += L",\n";
}

void AppendSubMaterial(PackageContext& package, std::wstring& out, Mtl* material, int position) {
    out += L"      {\n        \"material_id\": ";
    AppendJsonInt(out, position);
    out += L",\n";
    AppendNamed(out, L"        \"material_name\": ",
                material ? HostText(material->GetName()) : std::wstring());
    out += L"        \"node_tree\": ";
    AppendNodeJson(package, out, material, 3);
    out += L"\n      }";
}

void AppendMulti(PackageContext& package, std::wstring& out, Mtl& material) {
    out += L"{\n      \"type\": \"Multimaterial\",\n";
    AppendNamed(out, L"      \"name\": ", HostText(material.GetName()));
    out += L"      \"sub_materials\": [\n";
    const int count = material.NumSubMtls();
    for (int i = 0; i < count; ++i) {
        if (i > 0)
            out += L",\n";
        AppendSubMaterial(package, out, material.GetSubMtl(i), i + 1);
    }
    out += L"      ]\n    }";
}

void AppendSingle(PackageContext& package, std::wstring& out, Mtl& material,
                  std::wstring_view className) {
    out += L"{\n";
    AppendNamed(out, L"      \"type\": ", className);
    AppendNamed(out, L"      \"name\": ", HostText(material.GetName()));
    out += L"      \"node_tree\": ";
    AppendNodeJson(package, out, &material, 2);
    out += L"\n    }";
}

} // namespace

std::wstring buildMaterialJson(PackageContext& package, Mtl* material,
                               std::vector<std::wstring>& errors) {
    if (!material)
        return L"null";
    const size_t mark = package.registry.Mark();
    try {
        std::wstring text;
        const std::wstring className = ClassNameOf(*material);
        if (IsMultiMaterial(className))
            AppendMulti(package, text, *material);
        else
            AppendSingle(package, text, *material, className);
        return text;
    } catch (...) {
        package.registry.RollBack(mark);
        errors.emplace_back(L"buildMaterialJson exception");
        return L"null";
    }
}

} // namespace brimwave
