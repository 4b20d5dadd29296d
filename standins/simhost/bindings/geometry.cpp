// Conversions, transforms and face counts.
#include "simhost/bindings/bindings.h"
#include "simhost/bindings/scene_value.h"
#include "simhost/scene/derived_object.h"
#include "simhost/script/interpreter.h"
#include "simhost/script/raise.h"

#include <triobj.h>

namespace simhost::script {
namespace {

// What cannot become a mesh gives undefined, without an error.
void DefineConversion(Interpreter& in, const wchar_t* name, bool (Scene::*convert)(SceneNode&)) {
    in.DefineMapped(name, 1, 1, [name, convert](Interpreter&, Arguments& args) {
        SceneNode& node = NodeOf(name, args.items[0]);
        return (node.Owner().*convert)(node) ? args.items[0] : Value();
    });
}

// Of a node whose result is an editable mesh or poly.
Value GetNumFaces(Interpreter&, Arguments& args) {
    ::Object* result = ResultOf(NodeOf(L"getNumFaces", args.items[0]));
    if (auto* mesh = dynamic_cast<TriObject*>(result))
        return Value::Integer(mesh->GetMesh().getNumFaces());
    auto* geometry = dynamic_cast<SceneGeometry*>(result);
    if (!geometry || !geometry->ownMesh)
        RaiseNoFunction(L"getNumFaces", args.items[0]);
    return Value::Integer(geometry->ownMesh->getNumFaces());
}

Value ResetXForm(Interpreter&, Arguments& args) {
    SceneNode& node = NodeOf(L"resetXForm", args.items[0]);
    node.Owner().ResetXForm(node);
    return Value::Ok();
}

} // namespace

void RegisterGeometry(Interpreter& in) {
    DefineConversion(in, L"convertToMesh", &Scene::CollapseToMesh);
    DefineConversion(in, L"convertToPoly", &Scene::CollapseToPoly);
    in.Define(L"getNumFaces", 1, 1, GetNumFaces);
    in.DefineMapped(L"resetXForm", 1, 1, ResetXForm);
}

} // namespace simhost::script
