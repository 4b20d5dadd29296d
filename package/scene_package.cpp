#include "package/scene_package.h"

#include "host/attempt.h"
#include "host/sdk_compat.h"
#include "package/cameras.h"
#include "package/environment.h"
#include "package/lights.h"
#include "package/object_entry.h"
#include "package/package_context.h"
#include "package/scene_nodes.h"
#include "package/scene_values.h"
#include "package/unique_names.h"
#include "package/utf8_store.h"

namespace brimwave {
namespace {

/// The fragments after the objects; each begins with its own comma.
struct Fragments {
    Utf8Store lights;
    std::wstring cameras, environment;
};

Fragments BuildFragments(PackageContext& package, const std::vector<SceneNode>& nodes) {
    Fragments fragments;
    fragments.lights = CollectLightsJson(package, nodes);
    fragments.cameras = CollectCamerasJson(package, nodes);
    fragments.environment = BuildEnvironmentJson(package);
    return fragments;
}

Utf8Store BuildEntries(PackageContext& package, const std::vector<INode*>& objects) {
    Utf8Store entries;
    ObjectEntryWriter writer(package);
    for (INode* const node : objects) {
        writer.Append(entries, *node);
        entries.Append(node == objects.back() ? L"\n" : L",\n");
    }
    return entries;
}

void AppendMember(std::wstring& out, std::wstring_view key, std::wstring_view value) {
    out += L"  \"";
    out += key;
    out += L"\": ";
    out += value;
    out += L",\n";
}

/// Everything before the objects. The texts of the colour pipeline stand as the host gives them.
std::wstring BuildHead(const PackageContext& package, size_t objectCount) {
    const ColorPipeline colors = ReadColorPipeline();
    const auto displacement = ReadRenderDisplacement();
    std::wstring head = L"{\n";
    AppendMember(head, L"exporter", L"\"Corona Material Exporter (C++)\"");
    AppendMember(head, L"version", L"\"1.0\"");
    AppendMember(head, L"build_marker", L"\"v3.41-targetradio\"");
    AppendMember(head, L"scene_color_mode", L"\"" + colors.mode + L"\"");
    AppendMember(head, L"scene_rendering_space", L"\"" + colors.renderingSpace + L"\"");
    AppendMember(head, L"scene_display_gamma", FormatJsonFloat(colors.displayGamma));
    AppendMember(head, L"scene_unit_scale", FormatJsonFloat(package.metresPerUnit));
    if (displacement) {
        AppendMember(head, L"disp_render_amount", FormatJsonFloat(displacement->amount));
        AppendMember(head, L"disp_render_relative", BoolToJson(displacement->relative));
    }
    AppendMember(head, L"object_count", std::to_wstring(objectCount));
    head += L"  \"objects\": [\n";
    return head;
}

PackageResult Write(std::wstring_view path) {
    Interface* const host = GetCOREInterface();
    PackageLog log;
    PackageContext package(*host, log);
    const std::vector<SceneNode> nodes = CollectSceneNodes(*host, package.Time(), log);
    const std::vector<INode*> objects = CollectObjects(nodes, log);
    MakeNamesUnique(objects, log);
    const Utf8Store entries = BuildEntries(package, objects);
    const Fragments fragments = BuildFragments(package, nodes);

    Utf8File file{std::wstring(path)};
    file.Write(BuildHead(package, objects.size()));
    file.Write(entries);
    file.Write(L"  ]");
    file.Write(fragments.lights);
    file.Write(fragments.cameras);
    file.Write(fragments.environment);
    file.Write(L"\n}");

    PackageResult result;
    result.success = file.Finish();
    result.objectCount = static_cast<int>(objects.size());
    result.logLineCount = log.LineCount();
    if (result.success && log.LineCount() > 0)
        WriteLogFile(LogPathFor(path), log);
    return result;
}

} // namespace

PackageResult WriteScenePackage(std::wstring_view path) {
    // What may throw: memory runs out, or the host has no scene.
    return AttemptOr(PackageResult(), [&] { return Write(path); });
}

} // namespace brimwave
