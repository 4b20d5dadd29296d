#include "package/environment.h"

#include "host/attempt.h"
#include "host/number_text.h"
#include "host/script.h"
#include "host/script_reply.h"
#include "host/sdk_compat.h"
#include "package/node_tree.h"

#include "package_scripts_embedded.h"

#include <algorithm>

namespace brimwave {
namespace {

constexpr int mapDepth = 2;

/// `read()`, or `fallback` when the host fails over it.
template <class Read, class Value>
Value ReadOr(PackageContext& package, Value fallback, Read read) {
    if (!Attempt([&] { fallback = read(); }))
        package.log.Add(L"WARNING: The host failed to tell a setting of the environment");
    return fallback;
}

/// The map as a node, and its name; "null" when the host fails over it.
std::wstring MapNode(PackageContext& package, Texmap& map, std::wstring& name) {
    const size_t mark = package.registry.Mark();
    std::wstring node = L"null";
    const bool written = Attempt([&] {
        name = HostText(map.GetName());
        node = BuildNodeJson(package, &map, mapDepth);
    });
    if (!written) {
        package.registry.RollBack(mark);
        package.log.Add(L"WARNING: Environment map '" + name + L"' could not be exported");
    }
    return node;
}

std::wstring EnvironmentMap(PackageContext& package, bool useMap) {
    Texmap* const map = ReadOr(package, static_cast<Texmap*>(nullptr),
                               [&] { return package.host.GetEnvironmentMap(); });
    if (!map) {
        package.log.Add(L"Environment: colour only (no map)");
        return L"null";
    }
    std::wstring name;
    std::wstring node = MapNode(package, *map, name);
    if (node != L"null")
        package.log.Add(L"Environment map exported: " + name +
                        (useMap ? L" (Use Map on)" : L" (Use Map OFF - colour renders)"));
    return node;
}

/// The map of a handle's text. The host prints a letter behind the digits.
Texmap* MapOfHandle(std::wstring_view text) {
    const auto handle = static_cast<AnimHandle>(ParseInteger(text).value_or(0));
    return handle == 0 ? nullptr : dynamic_cast<Texmap*>(Animatable::GetAnimByHandle(handle));
}

std::wstring RendererMap(PackageContext& package, std::wstring_view handle) {
    Texmap* const map = MapOfHandle(handle);
    if (!map)
        return L"null";
    std::wstring name;
    std::wstring node = MapNode(package, *map, name);
    if (node != L"null")
        package.log.Add(L"Corona scene environment map exported: " + name);
    return node;
}

/// The background that the current renderer keeps for itself. Its source is written as the host
/// spells it.
void AppendRendererBackground(PackageContext& package, std::wstring& text) {
    const auto reply =
        RunScriptString(FillScript(package_scripts_embedded::renderer_background_ms));
    if (!reply || std::count(reply->begin(), reply->end(), L'|') < 2)
        return;
    std::wstring_view rest = *reply;
    const std::wstring_view source = TakeField(rest);
    const std::wstring_view color = TakeField(rest);
    if (source.empty())
        return;
    text += L",\n    \"corona_bg_source\": ";
    text += source;
    if (!color.empty()) {
        text += L",\n    \"corona_bg_color\": [";
        text += color;
        text += L']';
    }
    text += L",\n    \"corona_bg_map\": " + RendererMap(package, rest);
}

} // namespace

std::wstring BuildEnvironmentJson(PackageContext& package) {
    Interval valid = FOREVER;
    const Point3 color = ReadOr(package, Point3(0, 0, 0),
                                [&] { return package.host.GetBackGround(package.Time(), valid); });
    const bool useMap =
        ReadOr(package, false, [&] { return package.host.GetUseEnvironmentMap() != FALSE; });
    std::wstring text = L",\n  \"environment\": {\n    \"background_color\": ";
    text += FormatJsonColor(color.x, color.y, color.z);
    text += L",\n    \"use_map\": ";
    text += BoolToJson(useMap);
    text += L",\n    \"map\": " + EnvironmentMap(package, useMap);
    AppendRendererBackground(package, text);
    text += L"\n  }";
    return text;
}

} // namespace brimwave
