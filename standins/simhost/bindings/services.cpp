// The host around the scene: renderers, colour pipeline, version, folders, redraw.
#include "maxapi.h"
#include "simhost/bindings/bindings.h"
#include "simhost/bindings/scene_value.h"
#include "simhost/script/convert.h"
#include "simhost/script/interpreter.h"
#include "simhost/script/raise.h"
#include "simhost/script/text.h"

#include <algorithm>

namespace simhost::script {
namespace {

Value ReadRenderer() {
    return WrapThing(GetCOREInterface()->GetCurrentRenderer());
}

void SetRenderer(const Value& value) {
    auto* renderer = dynamic_cast<ReferenceTarget*>(ThingOf(value));
    if (!renderer || renderer->SuperClassID() != RENDERER_CLASS_ID)
        RaiseConversion(value, L"Renderer");
    Scene::Current().renderer = renderer;
}

// Older hosts have no manager; a member that cannot be read is not there at all.
Value ReadColorPipeline() {
    const auto& pipeline = Scene::Current().colorPipeline;
    if (!pipeline)
        return {};
    auto manager = std::make_shared<InterfaceObject>(L"colorPipelineMgr");
    if (pipeline->mode)
        manager->DefineConstant(L"mode", MakeName(*pipeline->mode));
    if (pipeline->renderingSpace)
        manager->DefineConstant(L"RenderingColorSpace", MakeString(*pipeline->renderingSpace));
    if (pipeline->displayGamma)
        manager->DefineConstant(L"displayGamma", Value::Float(*pipeline->displayGamma));
    return {manager};
}

// Hosts without a year in their version answer a shorter list.
Value MaxVersion(Interpreter&, Arguments&) {
    const Scene& scene = Scene::Current();
    std::vector<Value> version = {Value::Integer(scene.hostRelease), Value::Integer(MAX_API_NUM),
                                  Value::Integer(MAX_SDK_REV)};
    if (scene.hostYear > 0) {
        for (const int part : {scene.hostRelease / 1000, 0, 0, 0, scene.hostYear})
            version.push_back(Value::Integer(part));
        version.push_back(MakeString(L".0 Release"));
    }
    return MakeArray(std::move(version));
}

// The host's folders in the order of its numbers.
Value GetDir(Interpreter&, Arguments& args) {
    static constexpr std::wstring_view names[] = {
        L"font",    L"scene", L"import", L"export",  L"help",           L"expression",
        L"preview", L"image", L"sound",  L"plugcfg", L"startupscripts", L"vpost"};
    const std::wstring name = Lower(ToNameText(args.items[0]));
    const auto found = std::find(std::begin(names), std::end(names), name);
    if (found == std::end(names))
        RaiseRuntime(L"Runtime error: this host does not know the folder #" + name);
    const auto id = static_cast<int>(found - std::begin(names));
    return MakeString(MSTR(GetCOREInterface()->GetDir(id)).data());
}

} // namespace

void RegisterServices(Interpreter& in) {
    in.DefineInterface(L"renderers").DefineProperty(L"current", {ReadRenderer, SetRenderer});
    in.DefineVariable(L"environmentMap",
                      [] { return WrapThing(GetCOREInterface()->GetEnvironmentMap()); });
    in.DefineVariable(L"colorPipelineMgr", ReadColorPipeline);
    in.Define(L"maxVersion", 0, 0, MaxVersion);
    in.Define(L"getDir", 1, 1, GetDir);
    for (const wchar_t* name :
         {L"disableSceneRedraw", L"enableSceneRedraw", L"suspendEditing", L"resumeEditing"}) {
        in.Define(name, 0, 0, [](Interpreter&, Arguments&) { return Value::Ok(); });
    }
    in.Define(L"redrawViews", 0, 0, [](Interpreter&, Arguments&) {
        GetCOREInterface()->ForceCompleteRedraw();
        return Value::Ok();
    });
}

} // namespace simhost::script
