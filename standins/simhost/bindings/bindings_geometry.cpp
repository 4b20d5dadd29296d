// Conversions, modifier stacks, transforms, materials and handles.
#include "simhost/bindings/bindings.h"
#include "simhost/bindings/scene_ops.h"
#include "simhost/bindings/scene_value.h"
#include "simhost/scene/derived_object.h"
#include "simhost/script/convert.h"
#include "simhost/script/interpreter.h"
#include "simhost/script/raise.h"
#include "simhost/script/text.h"

namespace simhost::script {
namespace {

// What cannot become a mesh gives undefined, without an error.
void DefineConversion(Interpreter& in, const wchar_t* name, bool (Scene::*convert)(SceneNode&)) {
    in.DefineMapped(name, 1, 1, [name, convert](Interpreter&, Arguments& args) {
        SceneNode& node = NodeOf(name, args.items[0]);
        return (node.Owner().*convert)(node) ? args.items[0] : Value();
    });
}

void DefineMeshCount(Interpreter& in, const wchar_t* name, int (Mesh::*count)() const) {
    in.Define(name, 1, 1, [name, count](Interpreter&, Arguments& args) {
        const Mesh* mesh = EditableMeshOf(NodeOf(name, args.items[0]));
        if (!mesh)
            RaiseNoFunction(name, args.items[0]);
        return Value::Integer((mesh->*count)());
    });
}

SceneModifier& ModifierOf(const wchar_t* function, const Value& value) {
    auto* modifier = dynamic_cast<SceneModifier*>(ThingOf(value));
    if (!modifier)
        RaiseNoFunction(function, value);
    return *modifier;
}

Value DeleteModifier(Interpreter&, Arguments& args) {
    SceneNode& node = NodeOf(L"deleteModifier", args.items[0]);
    const std::vector<SceneModifier*> all = ModifiersOf(node);
    const SceneModifier* wanted = nullptr;
    if (!args.items[1].IsNumber())
        wanted = &ModifierOf(L"deleteModifier", args.items[1]);
    else if (const size_t position = ToPosition(args.items[1]); position < all.size())
        wanted = all[position];
    for (auto* stack = dynamic_cast<DerivedObject*>(node.GetObjectRef()); stack && wanted;
         stack = dynamic_cast<DerivedObject*>(stack->Base())) {
        for (int i = 0; i < stack->NumModifiers(); ++i) {
            if (stack->Modifiers()[static_cast<size_t>(i)].Get() != wanted)
                continue;
            stack->RemoveModifier(i);
            node.Owner().Touch();
            return Value::Ok();
        }
    }
    RaiseRuntime(L"Runtime error: deleteModifier: no such modifier");
}

} // namespace

void RegisterGeometry(Interpreter& in) {
    DefineConversion(in, L"convertToMesh", &Scene::CollapseToMesh);
    DefineConversion(in, L"convertToPoly", &Scene::CollapseToPoly);
    DefineMeshCount(in, L"getNumFaces", &Mesh::getNumFaces);
    DefineMeshCount(in, L"getNumVerts", &Mesh::getNumVerts);
    in.DefineMapped(L"collapseStack", 1, 1, [](Interpreter&, Arguments& args) {
        SceneNode& node = NodeOf(L"collapseStack", args.items[0]);
        node.Owner().CollapseStack(node);
        return args.items[0];
    });
    in.DefineMapped(L"resetXForm", 1, 1, [](Interpreter&, Arguments& args) {
        SceneNode& node = NodeOf(L"resetXForm", args.items[0]);
        node.Owner().ResetXForm(node);
        return Value::Ok();
    });
    in.DefineMapped(L"addModifier", 2, 2, [](Interpreter&, Arguments& args) {
        SceneNode& node = NodeOf(L"addModifier", args.items[0]);
        node.Owner().AddModifier(node, &ModifierOf(L"addModifier", args.items[1]));
        return Value::Ok();
    });
    in.Define(L"deleteModifier", 2, 2, DeleteModifier);
}

namespace {

// Sub-materials belong to materials: a map is refused, as it has no way to be one.
Mtl& MaterialOf(const Value& value) {
    auto* mtl = dynamic_cast<Mtl*>(ThingOf(value));
    if (!mtl)
        RaiseConversion(value, L"Material");
    return *mtl;
}

MtlBase& MtlBaseOf(const Value& value) {
    auto* mtl = dynamic_cast<MtlBase*>(ThingOf(value));
    if (!mtl)
        RaiseConversion(value, L"MtlBase");
    return *mtl;
}

// Position (from 0) of a slot counted from 1.
int SlotAt(const Value& index, int count) {
    const size_t position = ToPosition(index);
    if (position >= static_cast<size_t>(count))
        RaiseRuntime(L"Runtime error: slot index out of range: " + TextOf(index));
    return static_cast<int>(position);
}

template <class T>
T* FitOrUndefined(const Value& value, const wchar_t* type) {
    auto* thing = dynamic_cast<T*>(ThingOf(value));
    if (!thing && !value.IsUndefined())
        RaiseConversion(value, type);
    return thing;
}

} // namespace

void RegisterMaterials(Interpreter& in) {
    in.Define(L"getNumSubMtls", 1, 1, [](Interpreter&, Arguments& args) {
        return Value::Integer(MaterialOf(args.items[0]).NumSubMtls());
    });
    in.Define(L"getSubMtl", 2, 2, [](Interpreter&, Arguments& args) {
        Mtl& mtl = MaterialOf(args.items[0]);
        return WrapThing(mtl.GetSubMtl(SlotAt(args.items[1], mtl.NumSubMtls())));
    });
    in.Define(L"setSubMtl", 3, 3, [](Interpreter&, Arguments& args) {
        Mtl& mtl = MaterialOf(args.items[0]);
        mtl.SetSubMtl(SlotAt(args.items[1], mtl.NumSubMtls()),
                      FitOrUndefined<Mtl>(args.items[2], L"Material"));
        return Value::Ok();
    });
    in.Define(L"getSubMtlSlotName", 2, 2, [](Interpreter&, Arguments& args) {
        Mtl& mtl = MaterialOf(args.items[0]);
        const int slot = SlotAt(args.items[1], mtl.NumSubMtls());
        return MakeString(mtl.GetSubMtlSlotName(slot, false).data());
    });
    in.Define(L"getNumSubTexmaps", 1, 1, [](Interpreter&, Arguments& args) {
        return Value::Integer(MtlBaseOf(args.items[0]).NumSubTexmaps());
    });
    in.Define(L"getSubTexmap", 2, 2, [](Interpreter&, Arguments& args) {
        MtlBase& mtl = MtlBaseOf(args.items[0]);
        return WrapThing(mtl.GetSubTexmap(SlotAt(args.items[1], mtl.NumSubTexmaps())));
    });
    in.Define(L"setSubTexmap", 3, 3, [](Interpreter&, Arguments& args) {
        MtlBase& mtl = MtlBaseOf(args.items[0]);
        mtl.SetSubTexmap(SlotAt(args.items[1], mtl.NumSubTexmaps()),
                         FitOrUndefined<Texmap>(args.items[2], L"TextureMap"));
        return Value::Ok();
    });
    in.Define(L"getSubTexmapSlotName", 2, 2, [](Interpreter&, Arguments& args) {
        MtlBase& mtl = MtlBaseOf(args.items[0]);
        const int slot = SlotAt(args.items[1], mtl.NumSubTexmaps());
        return MakeString(mtl.GetSubTexmapSlotName(slot, false).data());
    });
}

void RegisterHandles(Interpreter& in) {
    in.Define(L"getHandleByAnim", 1, 1, [](Interpreter&, Arguments& args) {
        const auto* thing = args.items[0].As<SceneValue>();
        if (!thing)
            RaiseConversion(args.items[0], L"MAXWrapper");
        return Value::IntegerPtr(
            static_cast<int64_t>(Animatable::GetHandleByAnim(&thing->Thing())));
    });
    in.Define(L"getAnimByHandle", 1, 1, [](Interpreter&, Arguments& args) {
        if (!args.items[0].IsWhole())
            RaiseConversion(args.items[0], L"IntegerPtr");
        const auto handle = static_cast<AnimHandle>(args.items[0].AsWhole());
        return WrapThing(Animatable::GetAnimByHandle(handle));
    });
}

} // namespace simhost::script
