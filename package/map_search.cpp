#include "package/map_search.h"

#include "host/script.h"
#include "host/sdk_compat.h"

namespace brimwave {
namespace {

struct SearchNames {
    const wchar_t* find;   // from one root
    const wchar_t* driver; // in the whole scene
    const wchar_t* local;
};

SearchNames NamesOf(MapSearch search) {
    switch (search) {
    case MapSearch::Output:
        return {L"BW_findTexmapByNameOut", L"BW_findMapForOutput", L"mp"};
    case MapSearch::GradientRamp:
        return {L"BW_findTexmapByName", L"BW_findGradientRamp", L"gr"};
    case MapSearch::Properties:
        break;
    }
    return {L"BW_findTexByNameP", L"BW_findMapP", L"mp"};
}

// The loops below stand in functions named $F (from one root) and $D (the scene). A map is told
// from a material by its super class alone: a map may count as a kind of material.
constexpr std::wstring_view subMaterials =
    L"for i = 1 to (getNumSubMtls root) while found == undefined do (\n"
    L"found = $F (getSubMtl root i) targetName visited)\n";

constexpr std::wstring_view subMaps =
    L"for i = 1 to (getNumSubTexmaps root) while found == undefined do (\n"
    L"found = $F (getSubTexmap root i) targetName visited)\n";

constexpr std::wstring_view isMaterial =
    L"local isMtl = false\n"
    L"if superClassOf root != textureMap do (\n"
    L"isMtl = (superClassOf root == material)\n"
    L"if not isMtl do ( isMtl = (isKindOf root material) ) )\n";

constexpr std::wstring_view findHead = L"fn $F root targetName visited = (\n"
                                       L"local found = undefined\n"
                                       L"local isNew = false\n"
                                       L"if root != undefined do (\n"
                                       L"isNew = ((finditem visited root) == 0) )\n"
                                       L"if isNew do (\n"
                                       L"append visited root\n"
                                       L"local nm = undefined\n"
                                       L"try ( nm = root.name ) catch();\n"
                                       L"if superClassOf root == textureMap do (\n"
                                       L"if nm == targetName do ( found = root ) )\n"
                                       L"if found == undefined do (\n";

constexpr std::wstring_view findTail = L") )\nfound )\n";

constexpr std::wstring_view driver =
    L"fn $D targetName = (\n"
    L"local found = undefined\n"
    L"local visited = #()\n"
    L"for o in objects while found == undefined do (\n"
    L"local m = undefined\n"
    L"try ( m = o.material ) catch();\n"
    L"if m != undefined do ( found = $F m targetName visited ) )\n"
    L"if found == undefined do (\n"
    L"for i = 1 to sceneMaterials.count while found == undefined do (\n"
    L"found = $F sceneMaterials[i] targetName visited ) )\n"
    L"found )\n";

std::wstring FindFunction(MapSearch search) {
    std::wstring text(findHead);
    if (search == MapSearch::Properties) {
        text += L"try (\n";
        text += subMaterials;
        text += L") catch();\n";
    } else {
        text += isMaterial;
        text += L"if isMtl do (\n";
        text += subMaterials;
        text += L")\n";
    }
    text += subMaps;
    text += findTail;
    return text;
}

void ReplaceAll(std::wstring& text, std::wstring_view what, std::wstring_view with) {
    for (size_t at = text.find(what); at != std::wstring::npos; at = text.find(what, at))
        text.replace(at, what.size(), with);
}

/// `find` sets the local; the body reads it.
std::wstring ScriptOf(std::wstring_view functions, const std::wstring& local,
                      std::wstring_view find, std::wstring_view body) {
    std::wstring script = L"(";
    script += functions;
    script += L"local " + local + L" = undefined\n";
    script += find;
    script += L"if " + local + L" == undefined then (\"ERROR:NOTFOUND\") else (";
    script += body;
    script += L"))";
    return script;
}

std::wstring ScriptByHandle(MtlBase& map, MapSearch search, std::wstring_view body) {
    const std::wstring local = NamesOf(search).local;
    const std::wstring handle = std::to_wstring(Animatable::GetHandleByAnim(&map));
    return ScriptOf({}, local,
                    L"try ( " + local + L" = getAnimByHandle " + handle + L"P ) catch();\n", body);
}

std::wstring ScriptByName(MtlBase& map, MapSearch search, std::wstring_view body) {
    const SearchNames names = NamesOf(search);
    std::wstring functions = FindFunction(search);
    functions += driver;
    ReplaceAll(functions, L"$F", names.find);
    ReplaceAll(functions, L"$D", names.driver);
    std::wstring find = names.local;
    find += L" = ";
    find += names.driver;
    find += L" \"" + EscapeScriptString(HostText(map.GetName())) + L"\";\n";
    return ScriptOf(functions, names.local, find, body);
}

bool Found(const std::optional<std::wstring>& reply) {
    return reply && *reply != L"ERROR:NOTFOUND";
}

} // namespace

std::optional<std::wstring> RunOnMap(MtlBase& map, MapSearch search, std::wstring_view body) {
    auto reply = RunScriptString(ScriptByHandle(map, search, body));
    if (!Found(reply))
        reply = RunScriptString(ScriptByName(map, search, body));
    if (reply && reply->starts_with(L"ERROR:"))
        return std::nullopt;
    return reply;
}

} // namespace brimwave
