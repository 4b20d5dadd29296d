#include "simhost/bindings/scene_params.h"

#include "inode.h"
#include "simhost/bindings/scene_value.h"
#include "simhost/script/convert.h"
#include "simhost/script/heap.h"
#include "simhost/script/interpreter.h"
#include "simhost/script/raise.h"

namespace simhost::script {
namespace {

constexpr float degreesPerRadian = 57.2957795f;

bool IsColor(ParamType2 type) {
    return type == TYPE_RGBA || type == TYPE_FRGBA || type == TYPE_HSV;
}

const wchar_t* ReferenceTypeName(ParamType2 type) {
    switch (type) {
    case TYPE_MTL:
        return L"Material";
    case TYPE_TEXMAP:
        return L"TextureMap";
    case TYPE_INODE:
        return L"<node>";
    default:
        return L"MAXWrapper";
    }
}

// A table parameter: reads and writes reach the thing that has it.
class TableValue final : public Object {
  public:
    TableValue(Entity& entity, ParamPlace place)
        : owner_(Animatable::GetHandleByAnim(entity.Self())), place_(place) {}

    void Print(Printer& printer, bool) const override {
        printer.Put(L"#(");
        const int count = Count();
        for (int i = 0; i < count; ++i) {
            printer.Put(i > 0 ? L", " : L"");
            if (i == 20) {
                printer.Put(L"...");
                break;
            }
            printer.Put(At(i), true);
        }
        printer.Put(L")");
    }
    [[nodiscard]] std::wstring ClassName() const override { return L"ArrayParameter"; }
    [[nodiscard]] bool IsCollection() const override { return true; }

    bool GetProperty(Interpreter&, const std::wstring& name, Value& result) override {
        if (name != L"count")
            return false;
        result = Value::Integer(Count());
        return true;
    }
    bool GetIndex(Interpreter&, const Value& index, Value& result) override {
        const size_t position = ToPosition(index);
        if (position >= static_cast<size_t>(Count()))
            RaiseRuntime(L"array index out of range: " + TextOf(index));
        result = At(static_cast<int>(position));
        return true;
    }
    bool SetIndex(Interpreter&, const Value& index, const Value& value) override {
        const size_t position = ToPosition(index);
        if (position >= static_cast<size_t>(Count()))
            RaiseRuntime(L"array index out of range: " + TextOf(index));
        ParamPlace element = place_;
        element.element = static_cast<int>(position);
        Owner().Set(element, ToScalar(Type(), value));
        return true;
    }
    bool Item(Interpreter&, size_t position, Value& result) override {
        if (position >= static_cast<size_t>(Count()))
            return false;
        result = At(static_cast<int>(position));
        return true;
    }

  private:
    [[nodiscard]] Entity& Owner() const {
        Entity* entity = EntityOf(Animatable::GetAnimByHandle(owner_));
        if (!entity)
            RaiseRuntime(L"attempt to access a deleted scene object");
        return *entity;
    }
    [[nodiscard]] ParamType2 Type() const { return ElementType(Owner().TypeOf(place_)); }
    [[nodiscard]] int Count() const {
        return Owner().Blocks()[static_cast<size_t>(place_.block)]->CountAt(place_.index);
    }
    [[nodiscard]] Value At(int i) const {
        ParamPlace element = place_;
        element.element = i;
        const Scalar* scalar = Owner().Get(element);
        return scalar ? FromScalar(Type(), *scalar) : Value();
    }

    AnimHandle owner_;
    ParamPlace place_;
};

Value FromFloat(ParamType2 type, float number) {
    if (type == TYPE_ANGLE)
        return Value::Float(number * degreesPerRadian);
    return Value::Float(type == TYPE_PCNT_FRAC ? number * 100 : number);
}

float ToFloatOf(ParamType2 type, const Value& value) {
    const float number = ToFloat(value);
    if (type == TYPE_ANGLE)
        return number / degreesPerRadian;
    return type == TYPE_PCNT_FRAC ? number / 100 : number;
}

Value FromInt(ParamType2 type, int number) {
    switch (type) {
    case TYPE_BOOL:
        return Value::Bool(number != 0);
    case TYPE_TIMEVALUE:
        return Value::Time(number);
    case TYPE_INDEX:
        return Value::Integer(number + 1);
    default:
        return Value::Integer(number);
    }
}

int ToIntOf(ParamType2 type, const Value& value) {
    switch (type) {
    case TYPE_BOOL:
        return value.IsNumber() ? ToReal(value) != 0 : ToBool(value);
    case TYPE_TIMEVALUE:
        return value.Is(Type::Time) ? static_cast<int>(value.AsReal())
                                    : ToInt(value) * ticksPerSecond / 30;
    case TYPE_INDEX:
        return ToInt(value) - 1;
    default:
        return value.Is(Type::Boolean) ? value.AsBool() : ToInt(value);
    }
}

const VectorObject& AnyVector(ParamType2 type, const Value& value) {
    const auto* vector = value.As<VectorObject>();
    if (!vector || vector->Size() < 3)
        RaiseConversion(value, IsColor(type) ? L"Color" : L"Point3");
    return *vector;
}

Scalar ToReference(ParamType2 type, const Value& value) {
    if (value.IsUndefined())
        return Ref<ReferenceTarget>();
    auto* thing = dynamic_cast<ReferenceTarget*>(ThingOf(value));
    if (!thing || !FitsReference(type, thing))
        RaiseConversion(value, ReferenceTypeName(type));
    return Ref<ReferenceTarget>(thing);
}

} // namespace

Value FromPoint(const Point3& point) {
    return MakeVector(VectorKind::Point3, point.x, point.y, point.z);
}

Point3 ToPoint(const Value& value) {
    const VectorObject& point = ToVector(value, VectorKind::Point3);
    return {point.At(0), point.At(1), point.At(2)};
}

Value FromMatrix(const Matrix3& matrix) {
    MatrixObject::Rows rows{};
    for (int i = 0; i < 4; ++i)
        rows[static_cast<size_t>(i)] = {matrix[i].x, matrix[i].y, matrix[i].z};
    return {std::make_shared<MatrixObject>(rows)};
}

Matrix3 ToMatrix(const Value& value) {
    const auto* object = value.As<MatrixObject>();
    if (!object)
        RaiseConversion(value, L"Matrix3");
    Matrix3 matrix;
    for (int i = 0; i < 4; ++i) {
        const auto& row = object->GetRows()[static_cast<size_t>(i)];
        matrix[i] = {row[0], row[1], row[2]};
    }
    return matrix;
}

Value FromScalar(ParamType2 type, const Scalar& scalar) {
    if (const auto* number = std::get_if<float>(&scalar))
        return FromFloat(type, *number);
    if (const auto* number = std::get_if<int>(&scalar))
        return FromInt(type, *number);
    if (const auto* p = std::get_if<Point3>(&scalar)) {
        if (IsColor(type))
            return MakeVector(VectorKind::Color, p->x * 255, p->y * 255, p->z * 255, 255);
        return FromPoint(*p);
    }
    if (const auto* p = std::get_if<Point4>(&scalar)) {
        if (IsColor(type))
            return MakeVector(VectorKind::Color, p->x * 255, p->y * 255, p->z * 255, p->w * 255);
        return MakeVector(VectorKind::Point4, p->x, p->y, p->z, p->w);
    }
    if (const auto* text = std::get_if<Text>(&scalar))
        return *text ? MakeString(**text) : Value();
    if (const auto* reference = std::get_if<Ref<ReferenceTarget>>(&scalar))
        return WrapThing(reference->Get());
    return FromMatrix(std::get<Matrix3>(scalar));
}

Scalar ToScalar(ParamType2 type, const Value& value) {
    switch (StorageOf(type)) {
    case Storage::Number:
        return ToFloatOf(type, value);
    case Storage::Integer:
        return ToIntOf(type, value);
    case Storage::Three: {
        const VectorObject& v = AnyVector(type, value);
        const float factor = IsColor(type) ? 1 / 255.0f : 1;
        return Point3(v.At(0) * factor, v.At(1) * factor, v.At(2) * factor);
    }
    case Storage::Four: {
        const VectorObject& v = AnyVector(type, value);
        const float factor = IsColor(type) ? 1 / 255.0f : 1;
        const float fourth = v.Size() == 4 ? v.At(3) : IsColor(type) ? 255.0f : 0.0f;
        return Point4(v.At(0) * factor, v.At(1) * factor, v.At(2) * factor, fourth * factor);
    }
    case Storage::String:
        return value.IsUndefined() ? Text() : Text(ToString(value));
    case Storage::Reference:
        return ToReference(type, value);
    case Storage::Matrix:
        return ToMatrix(value);
    case Storage::Unsupported:
        break;
    }
    RaiseRuntime(L"Runtime error: this host cannot keep such a parameter");
}

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

void WriteParam(Entity& entity, ParamPlace place, const Value& value) {
    const ParamType2 type = entity.TypeOf(place);
    if (!IsTable(type)) {
        entity.Set(place, ToScalar(type, value));
        return;
    }
    Table table;
    for (const Value& item : ToArray(value).Items())
        table.push_back(ToScalar(ElementType(type), item));
    entity.Set(place, std::move(table));
}

} // namespace simhost::script
