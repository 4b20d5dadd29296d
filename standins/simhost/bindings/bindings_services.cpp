// The host around the scene: renderers, colour pipeline, version, folders, redraw.
#include "maxapi.h"
#include "simhost/bindings/bindings.h"
#include "simhost/bindings/scene_value.h"
#include "simhost/script/convert.h"
#include "simhost/script/interpreter.h"
#include "simhost/script/raise.h"
#include "simhost/script/text.h"

namespace simhost::script {
namespace {

Value CurrentRenderer(Interpreter&) {
    return WrapThing(GetCOREInterface()->GetCurrentRenderer());
}

void SetRenderer(Interpreter&, const Value& value) {
    auto* renderer = dynamic_cast<ReferenceTarget*>(ThingOf(value));
    if (!renderer || renderer->SuperClassID() != RENDERER_CLASS_ID)
        RaiseConversion(value, L"Renderer");
    Scene::Current().renderer = renderer;
}

void RegisterRenderers(Interpreter& in) {
    InterfaceObject& renderers = in.DefineInterface(L"renderers");
    for (const wchar_t* name : {L"current", L"production"})
        renderers.Add(name, {CurrentRenderer, SetRenderer});
    in.DefineVariable(L"renderWidth", [](Interpreter&) {
        return Value::Integer(GetCOREInterface()->GetRendWidth());
    });
    in.DefineVariable(L"renderHeight", [](Interpreter&) {
        return Value::Integer(GetCOREInterface()->GetRendHeight());
    });
    in.DefineVariable(L"environmentMap", [](Interpreter&) {
        return WrapThing(GetCOREInterface()->GetEnvironmentMap());
    });
    in.DefineVariable(L"useEnvironmentMap", [](Interpreter&) {
        return Value::Bool(GetCOREInterface()->GetUseEnvironmentMap() != 0);
    });
    in.DefineVariable(L"backgroundColor", [](Interpreter&) {
        Interval valid;
        const Point3 color = GetCOREInterface()->GetBackGround(0, valid);
        return MakeVector(VectorKind::Color, color.x * 255, color.y * 255, color.z * 255, 255);
    });
}

// Older hosts have no manager; a member that cannot be read is not there at all.
Value ColorPipelineManager(Interpreter&) {
    const auto& pipeline = Scene::Current().colorPipeline;
    if (!pipeline)
        return {};
    auto manager = std::make_shared<InterfaceObject>(L"colorPipelineMgr");
    if (pipeline->mode)
        manager->Constant(L"mode", MakeName(*pipeline->mode));
    if (pipeline->renderingSpace)
        manager->Constant(L"RenderingColorSpace", MakeString(*pipeline->renderingSpace));
    if (pipeline->displayGamma)
        manager->Constant(L"displayGamma", Value::Float(*pipeline->displayGamma));
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

// Names that scripts of the real host use and this one does not have: reading one says so,
// rather than passing for a variable that was never set.
void RegisterAbsent(Interpreter& in) {
    static constexpr const wchar_t* names[] = {L"dotNetObject",
                                               L"dotNetClass",
                                               L"dotNet",
                                               L"polyop",
                                               L"meshop",
                                               L"meditMaterials",
                                               L"callbacks",
                                               L"registerRedrawViewsCallback",
                                               L"render",
                                               L"loadMaxFile",
                                               L"saveMaxFile",
                                               L"importFile",
                                               L"exportFile",
                                               L"createDialog",
                                               L"destroyDialog",
                                               L"messageBox",
                                               L"queryBox",
                                               L"LayerManager",
                                               L"FbxExporterSetParam",
                                               L"maxOps",
                                               L"viewport",
                                               L"skinOps",
                                               L"splineOps",
                                               L"trackViews",
                                               L"fileProperties",
                                               L"InstanceMgr",
                                               L"rootScene",
                                               L"units",
                                               L"yesNoCancelBox",
                                               L"getOpenFileName",
                                               L"getSaveFileName",
                                               L"getSavePath",
                                               L"hiddenDOSCommand",
                                               L"shellLaunch",
                                               L"DOSCommand",
                                               L"getIniSetting",
                                               L"setIniSetting",
                                               L"attach",
                                               L"snapshot",
                                               L"getVert",
                                               L"setVert",
                                               L"getFace",
                                               L"numKnots",
                                               L"getKnotPoint",
                                               L"bitmap",
                                               L"openBitmap",
                                               L"sysInfo",
                                               L"move",
                                               L"rotate",
                                               L"quitMax",
                                               L"resetMaxFile",
                                               L"holdMaxFile",
                                               L"fetchMaxFile"};
    for (const wchar_t* name : names) {
        if (in.Globals().Find(name))
            continue;
        in.DefineVariable(name, [name](Interpreter&) -> Value {
            RaiseRuntime(L"Runtime error: this host does not have " + std::wstring(name));
        });
    }
}

} // namespace

void RegisterServices(Interpreter& in) {
    RegisterRenderers(in);
    in.DefineVariable(L"colorPipelineMgr", ColorPipelineManager);
    in.Define(L"maxVersion", 0, 0, MaxVersion);
    in.Define(L"getDir", 1, 1, GetDir);
    in.DefineVariable(L"maxFileName", [](Interpreter&) {
        return MakeString(GetCOREInterface()->GetCurFileName().data());
    });
    in.DefineVariable(L"maxFilePath", [](Interpreter&) {
        const std::wstring path = GetCOREInterface()->GetCurFilePath().data();
        return MakeString(path.substr(0, path.find_last_of(L"\\/") + 1));
    });
    const auto now = [](Interpreter&) { return Value::Time(Scene::Current().time); };
    in.DefineVariable(L"currentTime", now);
    in.DefineVariable(L"sliderTime", now, [](Interpreter& i, const Value& value) {
        Scene::Current().time = value.Is(Type::Time)
                                    ? static_cast<TimeValue>(value.AsReal())
                                    : ToInt(value) * ticksPerSecond / i.FrameRate();
    });
    for (const wchar_t* name :
         {L"disableSceneRedraw", L"enableSceneRedraw", L"suspendEditing", L"resumeEditing"})
        in.Define(name, 0, 0, [](Interpreter&, Arguments&) { return Value::Ok(); });
    for (const wchar_t* name : {L"redrawViews", L"completeRedraw", L"forceCompleteRedraw"}) {
        in.Define(name, 0, 0, [](Interpreter&, Arguments&) {
            GetCOREInterface()->ForceCompleteRedraw();
            return Value::Ok();
        });
    }
    RegisterAbsent(in);
}

} // namespace simhost::script
