// The catalogue's classes by their script names, and what calling one makes.
#include "maxapi.h"
#include "simhost/bindings/bindings.h"
#include "simhost/bindings/scene_value.h"
#include "simhost/classes/catalogue.h"
#include "simhost/classes/kinds.h"
#include "simhost/script/interpreter.h"
#include "simhost/script/raise.h"

namespace simhost::script {
namespace {

// Objects come in a node of their own, all else bare.
Value CreateInstance(Interpreter& in, const ClassPtr& info, const Arguments& args) {
    if (!args.items.empty())
        RaiseArgumentCount(info->scriptName, 0, args.items.size());
    Scene& scene = Scene::Current();
    ReferenceTarget* made = scene.Create(info->name, info->kind);
    if (!made)
        RaiseRuntime(L"Class not creatable: " + info->scriptName);
    auto* object = dynamic_cast<::Object*>(made);
    const Value result = object ? WrapThing(scene.CreateNode(scene.UniqueName(info->name), object))
                                : WrapThing(made);
    for (const auto& [name, value] : args.keywords)
        in.SetProperty(result, name, value);
    return result;
}

} // namespace

void RegisterHost(Interpreter& in) {
    RegisterClasses(in);
    RegisterNodes(in);
    RegisterGeometry(in);
    RegisterMaterials(in);
    RegisterServices(in);
}

std::wstring SuperClassNameOf(SClass_ID superClass) {
    switch (superClass) {
    case GEOMOBJECT_CLASS_ID:
        return L"GeometryClass";
    case SHAPE_CLASS_ID:
        return L"shape";
    case LIGHT_CLASS_ID:
        return L"light";
    case CAMERA_CLASS_ID:
        return L"camera";
    case HELPER_CLASS_ID:
        return L"helper";
    case SYSTEM_CLASS_ID:
        return L"system";
    case MATERIAL_CLASS_ID:
        return L"material";
    case TEXMAP_CLASS_ID:
        return L"textureMap";
    case OSM_CLASS_ID:
        return L"modifier";
    case WSM_CLASS_ID:
        return L"SpacewarpModifier";
    case WSM_OBJECT_CLASS_ID:
        return L"SpacewarpObject";
    case RENDERER_CLASS_ID:
        return L"renderer";
    case TEXOUTPUT_CLASS_ID:
        return L"TextureOutput";
    case UVGEN_CLASS_ID:
        return L"UVGenClass";
    case SHADER_KIND:
        return L"shader";
    default:
        return L"ReferenceTarget";
    }
}

void RegisterClasses(Interpreter& in) {
    in.DefineClass(L"node", L"MAXWrapper");
    for (const SClass_ID kind :
         {GEOMOBJECT_CLASS_ID, SHAPE_CLASS_ID, LIGHT_CLASS_ID, CAMERA_CLASS_ID, HELPER_CLASS_ID,
          SYSTEM_CLASS_ID, WSM_OBJECT_CLASS_ID}) {
        in.DefineClass(SuperClassNameOf(kind), L"node");
    }
    in.DefineClass(L"material", L"MAXWrapper");
    in.DefineClass(L"textureMap", L"material"); // the host's own chain, odd as it is
    for (const SClass_ID kind : {OSM_CLASS_ID, WSM_CLASS_ID, RENDERER_CLASS_ID, TEXOUTPUT_CLASS_ID,
                                 UVGEN_CLASS_ID, SHADER_KIND, REF_TARGET_CLASS_ID}) {
        in.DefineClass(SuperClassNameOf(kind), L"MAXWrapper");
    }
    for (const ClassPtr& info : AllClasses()) {
        if (info->scriptName.empty())
            continue;
        const std::wstring super = SuperClassNameOf(info->kind);
        ClassObject& entry = in.DefineClass(info->scriptName, super);
        // Classes of different kinds can share a name; the first one has it.
        if (!entry.create && entry.Super() == super) {
            entry.create = [info](Interpreter& i, Arguments& args) {
                return CreateInstance(i, info, args);
            };
        }
    }
}

} // namespace simhost::script
