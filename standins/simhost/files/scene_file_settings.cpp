// The settings of the scene and of the host around it.
#include "simhost/files/scene_file_loader.h"
#include "units.h"

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
    if (root_.Has("file_name"))
        scene_.filePath = root_.Member("file_name").Text();
    if (root_.Has("time"))
        scene_.time = root_.Member("time").Integer();
    if (root_.Has("host")) {
        const JsonView host = root_.Member("host");
        host.OnlyMembers({"release", "year"});
        if (host.Has("release"))
            scene_.hostRelease = host.Member("release").Integer();
        if (host.Has("year"))
            scene_.hostYear = host.Member("year").Integer();
    }
    if (root_.Has("render")) {
        const JsonView render = root_.Member("render");
        render.OnlyMembers({"width", "height", "pixel_aspect"});
        if (render.Has("width"))
            scene_.renderWidth = AtLeast(render.Member("width"), 0);
        if (render.Has("height"))
            scene_.renderHeight = AtLeast(render.Member("height"), 0);
        if (render.Has("pixel_aspect"))
            scene_.pixelAspect = render.Member("pixel_aspect").Number();
    }
    if (root_.Has("directories"))
        root_.Member("directories").ForMembers([&](const std::string& id, const JsonView& dir) {
            const bool number = !id.empty() && id.size() < 6 &&
                                id.find_first_not_of("0123456789") == std::string::npos;
            if (!number)
                dir.Complain("expected the number of a directory");
            scene_.directories[std::stoi(id)] = dir.Text();
        });
    if (root_.Has("map_paths")) {
        const JsonView list = root_.Member("map_paths");
        list.Array();
        for (size_t i = 0; i < list.Size(); ++i)
            scene_.mapPaths.push_back(list.Element(i).Text());
    }
    LoadUnits();
    LoadEnvironment();
    LoadColorPipeline();
    LoadFaults();
    if (root_.Has("selection")) {
        const JsonView list = root_.Member("selection");
        list.Array();
        for (size_t i = 0; i < list.Size(); ++i)
            scene_.Select(ResolveNode(list.Element(i)));
    }
}

void SceneLoader::LoadUnits() {
    static constexpr std::string_view types[] = {
        "inches", "feet", "miles", "millimeters", "centimeters", "meters", "kilometers"};
    if (root_.Has("unit_scale_override"))
        scene_.unitScaleOverride = root_.Member("unit_scale_override").Number();
    if (!root_.Has("units"))
        return;
    const JsonView units = root_.Member("units");
    units.OnlyMembers({"type", "scale"});
    if (units.Has("type")) {
        const JsonView type = units.Member("type");
        const auto* found = std::find(std::begin(types), std::end(types), type.Utf8());
        if (found == std::end(types))
            type.Expected("inches, feet, miles, millimeters, centimeters, meters or kilometers");
        scene_.unitType = static_cast<int>(found - std::begin(types)) + UNITS_INCHES;
    }
    if (units.Has("scale"))
        scene_.unitScale = units.Member("scale").Number();
}

void SceneLoader::LoadEnvironment() {
    if (root_.Has("renderer")) {
        const JsonView renderer = root_.Member("renderer");
        scene_.renderer =
            renderer.IsNull() ? nullptr : MakeInline(renderer, Context::Renderer).thing;
    }
    if (!root_.Has("environment"))
        return;
    const JsonView view = root_.Member("environment");
    view.OnlyMembers({"background", "ambient", "use_map", "map"});
    if (view.Has("background"))
        scene_.background = ReadPoint3(view.Member("background"));
    if (view.Has("ambient"))
        scene_.ambient = ReadPoint3(view.Member("ambient"));
    if (view.Has("use_map"))
        scene_.useEnvironmentMap = view.Member("use_map").Bool();
    if (view.Has("map")) {
        const JsonView map = view.Member("map");
        scene_.environmentMap = static_cast<Texmap*>(Resolve(map, TYPE_TEXMAP));
    }
}

void SceneLoader::LoadColorPipeline() {
    if (!root_.Has("color_pipeline") || root_.Member("color_pipeline").IsNull())
        return;
    const JsonView view = root_.Member("color_pipeline");
    view.OnlyMembers({"mode", "rendering_space", "display_gamma"});
    Scene::ColorPipeline pipeline;
    if (view.Has("mode"))
        pipeline.mode = view.Member("mode").Text();
    if (view.Has("rendering_space"))
        pipeline.renderingSpace = view.Member("rendering_space").Text();
    if (view.Has("display_gamma"))
        pipeline.displayGamma = view.Member("display_gamma").Number();
    scene_.colorPipeline = pipeline;
}

void SceneLoader::LoadFaults() {
    if (!root_.Has("faults"))
        return;
    const JsonView view = root_.Member("faults");
    view.OnlyMembers({"exporter", "throws", "throw_kind", "answers_nothing", "find_files"});
    if (view.Has("exporter")) {
        static constexpr std::pair<std::string_view, Scene::Exporter> ways[] = {
            {"works", Scene::Exporter::Works},
            {"absent", Scene::Exporter::Absent},
            {"refuses", Scene::Exporter::Refuses},
            {"writes_nothing", Scene::Exporter::WritesNothing},
            {"throws", Scene::Exporter::Throws}};
        const JsonView exporter = view.Member("exporter");
        const auto* found = std::find_if(std::begin(ways), std::end(ways), [&](const auto& way) {
            return way.first == exporter.Utf8();
        });
        if (found == std::end(ways))
            exporter.Expected("absent, refuses, writes_nothing, throws or works");
        scene_.exporter = found->second;
    }
    if (view.Has("find_files"))
        scene_.findsFiles = view.Member("find_files").Bool();
    ReadFaults(view, scene_.faults);
}

} // namespace simhost
