// The scene as a whole: sets of nodes, the selection, materials, and creation by class.
#include "maxapi.h"
#include "simhost/bindings/bindings.h"
#include "simhost/bindings/scene_collections.h"
#include "simhost/bindings/scene_ops.h"
#include "simhost/bindings/scene_value.h"
#include "simhost/classes/catalogue.h"
#include "simhost/script/convert.h"
#include "simhost/script/interpreter.h"
#include "simhost/script/raise.h"
#include "simhost/script/text.h"

namespace simhost::script {
namespace {

// Nodes whose object is of a super class.
std::vector<SceneNode*> NodesOfKind(SClass_ID kind) {
    std::vector<SceneNode*> nodes;
    for (SceneNode* node : Scene::Current().AllNodes()) {
        ::Object* object = ResultOf(*node);
        if (object && object->SuperClassID() == kind)
            nodes.push_back(node);
    }
    return nodes;
}

void DefineKind(Interpreter& in, const wchar_t* name, SClass_ID kind) {
    const Value set = NodeSet(
        name, [kind] { return NodesOfKind(kind); }, false);
    in.DefineVariable(name, [set](Interpreter&) { return set; });
}

void SetKeywords(Interpreter& in, const Value& made, const Arguments& args) {
    for (const auto& [name, value] : args.keywords)
        in.SetProperty(made, name, value);
}

// Calling a class: objects come in a node of their own, all else bare.
Value CreateInstance(Interpreter& in, const ClassPtr& info, Arguments& args) {
    if (!args.items.empty())
        RaiseArgumentCount(info->scriptName, 0, args.items.size());
    Scene& scene = Scene::Current();
    ReferenceTarget* made = scene.Create(info->name, info->kind);
    if (!made)
        RaiseRuntime(L"Class not creatable: " + info->scriptName);
    auto* object = dynamic_cast<::Object*>(made);
    const Value result = object ? WrapThing(scene.CreateNode(scene.UniqueName(info->name), object))
                                : WrapThing(made);
    SetKeywords(in, result, args);
    return result;
}

} // namespace

void RegisterHost(Interpreter& in) {
    RegisterClasses(in);
    RegisterScene(in);
    RegisterNodes(in);
    RegisterGeometry(in);
    RegisterGroups(in);
    RegisterMaterials(in);
    RegisterHandles(in);
    RegisterServices(in);
}

void RegisterClasses(Interpreter& in) {
    in.DefineClass(L"node", L"MAXWrapper");
    for (const SClass_ID kind :
         {GEOMOBJECT_CLASS_ID, SHAPE_CLASS_ID, LIGHT_CLASS_ID, CAMERA_CLASS_ID, HELPER_CLASS_ID,
          SYSTEM_CLASS_ID, WSM_OBJECT_CLASS_ID})
        in.DefineClass(SuperClassNameOf(kind), L"node");
    in.DefineClass(L"material", L"MAXWrapper");
    in.DefineClass(L"textureMap", L"material"); // the host's own chain, odd as it is
    for (const SClass_ID kind : {OSM_CLASS_ID, WSM_CLASS_ID, RENDERER_CLASS_ID, TEXOUTPUT_CLASS_ID,
                                 UVGEN_CLASS_ID, SHADER_KIND, REF_TARGET_CLASS_ID})
        in.DefineClass(SuperClassNameOf(kind), L"MAXWrapper");
    for (const wchar_t* name : {L"ObjectSet", L"MaterialLibrary", L"ArrayParameter"})
        in.DefineClass(name, L"Value");
    for (const ClassPtr& info : AllClasses()) {
        if (info->scriptName.empty())
            continue;
        const std::wstring super = SuperClassNameOf(info->kind);
        const auto entry = in.DefineClass(info->scriptName, super);
        // Classes of different kinds can share a name; the first one has it.
        if (!entry->create && entry->Super() == super)
            entry->create = [info](Interpreter& i, Arguments& args) {
                return CreateInstance(i, info, args);
            };
    }
}

void RegisterScene(Interpreter& in) {
    const Value objects = NodeSet(
        L"$*", [] { return Scene::Current().AllNodes(); }, true);
    in.DefineVariable(L"objects", [objects](Interpreter&) { return objects; });
    DefineKind(in, L"geometry", GEOMOBJECT_CLASS_ID);
    DefineKind(in, L"shapes", SHAPE_CLASS_ID);
    DefineKind(in, L"lights", LIGHT_CLASS_ID);
    DefineKind(in, L"cameras", CAMERA_CLASS_ID);
    DefineKind(in, L"helpers", HELPER_CLASS_ID);
    const auto root = [](Interpreter&) { return WrapThing(&Scene::Current().Root()); };
    in.DefineVariable(L"rootNode", root);
    in.DefineVariable(L"selection", [](Interpreter&) { return ResolveNodePath(L"selection"); });
    const Value library = SceneMaterialLibrary();
    in.DefineVariable(L"sceneMaterials", [library](Interpreter&) { return library; });
    in.paths = [](Interpreter&, const std::wstring& pattern) { return ResolveNodePath(pattern); };

    in.Define(L"getNodeByName", 1, 1, [](Interpreter&, Arguments& args) {
        const std::wstring& name = ToString(args.items[0]);
        const Value* exact = args.Keyword(L"exact");
        for (SceneNode* node : Scene::Current().AllNodes()) {
            const bool same =
                exact && ToBool(*exact) ? node->Name() == name : EqualNoCase(node->Name(), name);
            if (same)
                return WrapThing(node);
        }
        return Value();
    });
    in.Define(L"uniqueName", 1, 1, [](Interpreter&, Arguments& args) {
        return MakeString(Scene::Current().UniqueName(ToString(args.items[0])));
    });
    // Materials, maps and nodes' objects of a class.
    in.Define(L"getClassInstances", 1, 1, [](Interpreter& i, Arguments& args) {
        const auto* wanted = args.items[0].As<ClassObject>();
        if (!wanted)
            RaiseConversion(args.items[0], L"MAXClass");
        std::vector<Value> found;
        for (MtlBase* mtl : Scene::Current().AllMtlBases()) {
            i.Charge(1);
            if (EqualNoCase(ScriptClassName(*mtl), wanted->Name()))
                found.push_back(WrapThing(mtl));
        }
        for (SceneNode* node : Scene::Current().AllNodes()) {
            ::Object* object = ResultOf(*node);
            if (object && EqualNoCase(ScriptClassName(*object), wanted->Name()))
                found.push_back(WrapThing(object));
        }
        return MakeArray(std::move(found));
    });
}

} // namespace simhost::script
