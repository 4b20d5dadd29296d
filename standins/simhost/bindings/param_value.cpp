// Between the values of parameters and those of scripts.
#include "simhost/bindings/param_value.h"

#include "inode.h"
#include "simhost/bindings/scene_value.h"
#include "simhost/script/convert.h"
#include "simhost/script/raise.h"

namespace simhost::script {
namespace {

constexpr float degreesPerRadian = 57.2957795f;

bool IsColor(ParamType2 type) {
    return type == TYPE_RGBA || type == TYPE_FRGBA || type == TYPE_HSV;
}

// What a number is multiplied by for scripts.
float ScriptScale(ParamType2 type) {
    return type == TYPE_ANGLE ? degreesPerRadian : type == TYPE_PCNT_FRAC ? 100.0f : 1.0f;
}

Value FromInt(ParamType2 type, int number) {
    if (type == TYPE_BOOL)
        return Value::Bool(number != 0);
    return Value::Integer(type == TYPE_INDEX ? number + 1 : number);
}

int ToIntOf(ParamType2 type, const Value& value) {
    if (type == TYPE_BOOL)
        return value.IsNumber() ? value.AsReal() != 0 : ToBool(value);
    if (value.Is(Type::Boolean) && type != TYPE_INDEX)
        return value.AsBool();
    return ToInt(value) - (type == TYPE_INDEX ? 1 : 0);
}

Value FromVector(ParamType2 type, const Point4& p, VectorKind kind) {
    const bool color = IsColor(type);
    const float factor = color ? 255.0f : 1.0f;
    return MakeVector(color ? VectorKind::Color : kind, p.x * factor, p.y * factor, p.z * factor,
                      p.w * factor);
}

// Three components or four; a colour's fourth is 1 when it is not given.
Point4 ToVectorOf(ParamType2 type, const Value& value) {
    const auto* vector = value.As<VectorObject>();
    const bool color = IsColor(type);
    if (!vector || vector->Size() < 3)
        RaiseConversion(value, color ? L"Color" : L"Point3");
    const float factor = color ? 1 / 255.0f : 1.0f;
    const float fourth = vector->Size() == 4 ? vector->At(3) : color ? 255.0f : 0.0f;
    return {vector->At(0) * factor, vector->At(1) * factor, vector->At(2) * factor,
            fourth * factor};
}

Scalar ToReference(ParamType2 type, const Value& value) {
    if (value.IsUndefined())
        return Ref<ReferenceTarget>();
    auto* thing = dynamic_cast<ReferenceTarget*>(ThingOf(value));
    if (!thing || !FitsReference(type, thing)) {
        RaiseConversion(value, type == TYPE_MTL      ? L"Material"
                               : type == TYPE_TEXMAP ? L"TextureMap"
                               : type == TYPE_INODE  ? L"<node>"
                                                     : L"MAXWrapper");
    }
    return Ref<ReferenceTarget>(thing);
}

Value FromScalar(ParamType2 type, const Scalar& scalar) {
    if (const auto* number = std::get_if<float>(&scalar))
        return Value::Float(*number * ScriptScale(type));
    if (const auto* number = std::get_if<int>(&scalar))
        return FromInt(type, *number);
    if (const auto* p = std::get_if<Point3>(&scalar)) {
        return FromVector(type, {p->x, p->y, p->z, IsColor(type) ? 1.0f : 0.0f},
                          VectorKind::Point3);
    }
    if (const auto* p = std::get_if<Point4>(&scalar))
        return FromVector(type, *p, VectorKind::Point4);
    if (const auto* text = std::get_if<Text>(&scalar))
        return *text ? MakeString(**text) : Value();
    if (const auto* reference = std::get_if<Ref<ReferenceTarget>>(&scalar))
        return WrapThing(reference->Get());
    RaiseRuntime(L"Runtime error: this host cannot show such a parameter");
}

Scalar ToScalar(ParamType2 type, const Value& value) {
    switch (StorageOf(type)) {
    case Storage::Number:
        return ToFloat(value) / ScriptScale(type);
    case Storage::Integer:
        return ToIntOf(type, value);
    case Storage::Three: {
        const Point4 p = ToVectorOf(type, value);
        return Point3(p.x, p.y, p.z);
    }
    case Storage::Four:
        return ToVectorOf(type, value);
    case Storage::String:
        return value.IsUndefined() ? Text() : Text(ToString(value));
    case Storage::Reference:
        return ToReference(type, value);
    default:
        RaiseRuntime(L"Runtime error: this host cannot keep such a parameter");
    }
}

// A table parameter: reads and writes reach the thing that has it.
class TableValue final : public Object {
  public:
    TableValue(Entity& entity, ParamPlace place)
        : owner_(Animatable::GetHandleByAnim(entity.Self())), place_(place) {}

    void Print(Printer& printer, bool nested) const override {
        std::vector<Value> items;
        for (int i = 0; i < Count(); ++i)
            items.push_back(At(i));
        printer.Append(MakeArray(std::move(items)), nested);
    }
    [[nodiscard]] std::wstring ClassName() const override { return L"ArrayParameter"; }
    [[nodiscard]] bool IsCollection() const override { return true; }

    std::optional<Value> FindProperty(const std::wstring& name) override {
        return name == L"count" ? std::optional(Value::Integer(Count())) : std::nullopt;
    }
    std::optional<Value> FindElement(const Value& index) override { return At(Position(index)); }
    bool SetElement(const Value& index, const Value& value) override {
        const ParamPlace element = ElementAt(Position(index));
        Owner().Set(element, ToScalar(ElementType(Owner().TypeOf(place_)), value));
        return true;
    }
    std::optional<Value> FindItem(size_t position) override {
        return position < static_cast<size_t>(Count())
                   ? std::optional(At(static_cast<int>(position)))
                   : std::nullopt;
    }

  private:
    [[nodiscard]] Entity& Owner() const {
        Entity* entity = EntityOf(Animatable::GetAnimByHandle(owner_));
        if (!entity)
            RaiseRuntime(L"attempt to access a deleted scene object");
        return *entity;
    }
    [[nodiscard]] int Count() const {
        return Owner().Blocks()[static_cast<size_t>(place_.block)]->CountAt(place_.index);
    }
    [[nodiscard]] int Position(const Value& index) const {
        const size_t position = ToPosition(index);
        if (position >= static_cast<size_t>(Count()))
            RaiseRuntime(L"array index out of range: " + TextOf(index));
        return static_cast<int>(position);
    }
    [[nodiscard]] ParamPlace ElementAt(int i) const { return {place_.block, place_.index, i}; }
    [[nodiscard]] Value At(int i) const {
        const Scalar* scalar = Owner().Get(ElementAt(i));
        return scalar ? FromScalar(ElementType(Owner().TypeOf(place_)), *scalar) : Value();
    }

    AnimHandle owner_;
    ParamPlace place_;
};

} // namespace

Value ReadParam(Entity& entity, ParamPlace place) {
    entity.faults.Check(Call::GetValue);
    const auto& block = entity.Blocks()[static_cast<size_t>(place.block)];
    block->faults.Check(Call::GetValue);
    const ParamType2 type = entity.TypeOf(place);
    if (IsTable(type))
        return {std::make_shared<TableValue>(entity, place)};
    const Scalar* scalar = entity.Get(place);
    return scalar ? FromScalar(type, *scalar) : Value();
}

void SetParam(Entity& entity, ParamPlace place, const Value& value) {
    const ParamType2 type = entity.TypeOf(place);
    if (!IsTable(type)) {
        entity.Set(place, ToScalar(type, value));
        return;
    }
    const auto* array = value.As<ArrayObject>();
    if (!array)
        RaiseConversion(value, L"Array");
    Table table;
    for (const Value& item : array->Items())
        table.push_back(ToScalar(ElementType(type), item));
    entity.Set(place, std::move(table));
}

} // namespace simhost::script
