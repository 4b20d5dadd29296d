// Materials and maps: the scene's list, what is in a material, handles.
#include "maxapi.h"
#include "simhost/bindings/bindings.h"
#include "simhost/bindings/scene_value.h"
#include "simhost/script/convert.h"
#include "simhost/script/interpreter.h"
#include "simhost/script/raise.h"
#include "simhost/script/text.h"

namespace simhost::script {
namespace {

// sceneMaterials: the materials that nodes use, by index or name.
class MaterialLibrary final : public Object {
  public:
    void Print(Printer& printer, bool) const override { printer.Append(L"SceneMaterials"); }
    [[nodiscard]] std::wstring ClassName() const override { return L"MaterialLibrary"; }
    [[nodiscard]] bool IsCollection() const override { return true; }

    std::optional<Value> FindProperty(const std::wstring& name) override {
        return name == L"count" ? std::optional(Value::Integer(Library().Count())) : std::nullopt;
    }
    std::optional<Value> FindElement(const Value& index) override {
        const auto* name = index.As<StringObject>();
        if (!name)
            return FindItem(ToPosition(index)).value_or(Value());
        for (int i = 0; i < Library().Count(); ++i) {
            if (MtlBase* mtl = Library()[i];
                mtl && EqualNoCase(mtl->GetName().data(), name->Text()))
                return WrapThing(mtl);
        }
        return Value();
    }
    std::optional<Value> FindItem(size_t position) override {
        if (position >= static_cast<size_t>(Library().Count()))
            return std::nullopt;
        return WrapThing(Library()[static_cast<int>(position)]);
    }

  private:
    static MtlBaseLib& Library() { return *GetCOREInterface()->GetSceneMtls(); }
};

// Sub-materials belong to materials: a map is refused, as it has no way to be one.
template <class T>
T& ThingAs(const Value& value, const wchar_t* type) {
    auto* thing = dynamic_cast<T*>(ThingOf(value));
    if (!thing)
        RaiseConversion(value, type);
    return *thing;
}

Mtl& MaterialOf(const Value& value) {
    return ThingAs<Mtl>(value, L"Material");
}
MtlBase& MtlBaseOf(const Value& value) {
    return ThingAs<MtlBase>(value, L"MtlBase");
}

// Position (from 0) of a slot counted from 1.
int ToSlot(const Value& index, int count) {
    const size_t position = ToPosition(index);
    if (position >= static_cast<size_t>(count))
        RaiseRuntime(L"Runtime error: slot index out of range: " + TextOf(index));
    return static_cast<int>(position);
}

void RegisterHandles(Interpreter& in) {
    in.Define(L"getHandleByAnim", 1, 1, [](Interpreter&, Arguments& args) {
        Animatable* thing = &ThingAs<Animatable>(args.items[0], L"MAXWrapper");
        return Value::IntegerPtr(static_cast<int64_t>(Animatable::GetHandleByAnim(thing)));
    });
    in.Define(L"getAnimByHandle", 1, 1, [](Interpreter&, Arguments& args) {
        if (!args.items[0].IsWhole())
            RaiseConversion(args.items[0], L"IntegerPtr");
        const auto handle = static_cast<AnimHandle>(args.items[0].AsWhole());
        return WrapThing(Animatable::GetAnimByHandle(handle));
    });
}

} // namespace

void RegisterMaterials(Interpreter& in) {
    const Value library(std::make_shared<MaterialLibrary>());
    in.DefineVariable(L"sceneMaterials", [library] { return library; });
    in.Define(L"getNumSubMtls", 1, 1, [](Interpreter&, Arguments& args) {
        return Value::Integer(MaterialOf(args.items[0]).NumSubMtls());
    });
    in.Define(L"getSubMtl", 2, 2, [](Interpreter&, Arguments& args) {
        Mtl& mtl = MaterialOf(args.items[0]);
        return WrapThing(mtl.GetSubMtl(ToSlot(args.items[1], mtl.NumSubMtls())));
    });
    in.Define(L"getNumSubTexmaps", 1, 1, [](Interpreter&, Arguments& args) {
        return Value::Integer(MtlBaseOf(args.items[0]).NumSubTexmaps());
    });
    in.Define(L"getSubTexmap", 2, 2, [](Interpreter&, Arguments& args) {
        MtlBase& mtl = MtlBaseOf(args.items[0]);
        return WrapThing(mtl.GetSubTexmap(ToSlot(args.items[1], mtl.NumSubTexmaps())));
    });
    RegisterHandles(in);
}

} // namespace simhost::script
