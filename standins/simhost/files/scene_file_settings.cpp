// The settings of the scene and of the host around it.
#include "simhost/files/scene_file_loader.h"
#include <units.h>

namespace simhost {

namespace {

/// An integer of at least `least`.
int AtLeast(const JsonView& view, int least) {
    const int value = view.Integer();
    if (value < least)
        view.Expected("an integer from " + std::to_string(least));
    return value;
}

} // namespace

void SceneLoader::LoadSettings() {
    root_.Read("file_name", scene_.filePath);
    root_.Read("time", scene_.time);
    if (const auto host = root_.Find("host")) {
        host->OnlyMembers({"release", "year"});
        host->Read("release", scene_.hostRelease);
        host->Read("year", scene_.hostYear);
    }
    if (const auto render = root_.Find("render")) {
        render->OnlyMembers({"width", "height", "pixel_aspect"});
        if (const auto width = render->Find("width"))
            scene_.renderWidth = AtLeast(*width, 0);
        if (const auto height = render->Find("height"))
            scene_.renderHeight = AtLeast(*height, 0);
        render->Read("pixel_aspect", scene_.pixelAspect);
    }
    if (const auto directories = root_.Find("directories"))
        directories->ForMembers([&](const std::string& id, const JsonView& dir) {
            const bool number = !id.empty() && id.size() < 6 &&
                                id.find_first_not_of("0123456789") == std::string::npos;
            if (!number)
                dir.Complain("expected the number of a directory");
            scene_.directories[std::stoi(id)] = dir.Text();
        });
    root_.ForElementsOf("map_paths",
                        [&](const JsonView& path) { scene_.mapPaths.push_back(path.Text()); });
    LoadUnits();
    LoadEnvironment();
    LoadColorPipeline();
    LoadFaults();
    root_.ForElementsOf("selection",
                        [&](const JsonView& node) { scene_.Select(ResolveNode(node)); });
}

void SceneLoader::LoadUnits() {
    static constexpr std::string_view types[] = {
        "inches", "feet", "miles", "millimeters", "centimeters", "meters", "kilometers"};
    root_.Read("unit_scale_override", scene_.unitScaleOverride);
    const auto units = root_.Find("units");
    if (!units)
        return;
    units->OnlyMembers({"type", "scale"});
    if (const auto type = units->Find("type")) {
        const auto* found = std::find(std::begin(types), std::end(types), type->Utf8());
        if (found == std::end(types))
            type->Expected("inches, feet, miles, millimeters, centimeters, meters or kilometers");
        scene_.unitType = static_cast<int>(found - std::begin(types)) + UNITS_INCHES;
    }
    units->Read("scale", scene_.unitScale);
}

void SceneLoader::LoadEnvironment() {
    if (const auto renderer = root_.Find("renderer"))
        scene_.renderer =
            renderer->IsNull() ? nullptr : MakeInline(*renderer, Context::Renderer).thing;
    const auto view = root_.Find("environment");
    if (!view)
        return;
    view->OnlyMembers({"background", "ambient", "use_map", "map"});
    if (const auto background = view->Find("background"))
        scene_.background = ReadPoint3(*background);
    if (const auto ambient = view->Find("ambient"))
        scene_.ambient = ReadPoint3(*ambient);
    view->Read("use_map", scene_.useEnvironmentMap);
    if (const auto map = view->Find("map"))
        scene_.environmentMap = static_cast<Texmap*>(Resolve(*map, TYPE_TEXMAP));
}

void SceneLoader::LoadColorPipeline() {
    const auto view = root_.Find("color_pipeline");
    if (!view || view->IsNull())
        return;
    view->OnlyMembers({"mode", "rendering_space", "display_gamma"});
    Scene::ColorPipeline& pipeline = scene_.colorPipeline.emplace();
    view->Read("mode", pipeline.mode);
    view->Read("rendering_space", pipeline.renderingSpace);
    view->Read("display_gamma", pipeline.displayGamma);
}

void SceneLoader::LoadFaults() {
    const auto view = root_.Find("faults");
    if (!view)
        return;
    view->OnlyMembers({"exporter", "throws", "throw_kind", "answers_nothing", "find_files"});
    if (const auto exporter = view->Find("exporter")) {
        static constexpr std::pair<std::string_view, Scene::Exporter> ways[] = {
            {"works", Scene::Exporter::Works},
            {"absent", Scene::Exporter::Absent},
            {"refuses", Scene::Exporter::Refuses},
            {"writes_nothing", Scene::Exporter::WritesNothing},
            {"throws", Scene::Exporter::Throws}};
        const auto* found = std::find_if(std::begin(ways), std::end(ways), [&](const auto& way) {
            return way.first == exporter->Utf8();
        });
        if (found == std::end(ways))
            exporter->Expected("absent, refuses, writes_nothing, throws or works");
        scene_.exporter = found->second;
    }
    view->Read("find_files", scene_.findsFiles);
    ReadFaults(*view, scene_.faults);
}

} // namespace simhost
