#include "simhost/script/convert.h"

#include <cmath>
#include <limits>

#include "simhost/script/number.h"
#include "simhost/script/raise.h"
#include "simhost/script/text.h"

namespace simhost::script {
namespace {

constexpr int deepestPrint = 12;
constexpr size_t longestPrint = size_t{1} << 20;

std::wstring TimeText(double ticks) {
    constexpr double ticksPerFrame = ticksPerSecond / 30.0;
    return GeneralText(ticks / ticksPerFrame, 6) + L"f";
}

std::wstring SmallText(const Value& value) {
    switch (value.GetType()) {
    case Type::Undefined:
        return L"undefined";
    case Type::Unsupplied:
        return L"unsupplied";
    case Type::Ok:
        return L"OK";
    case Type::DontCollect:
        return L"dontCollect";
    case Type::Boolean:
        return value.AsBool() ? L"true" : L"false";
    case Type::Integer:
        return std::to_wstring(value.AsWhole());
    case Type::Integer64:
        return std::to_wstring(value.AsWhole()) + L"L";
    case Type::IntegerPtr:
        return std::to_wstring(value.AsWhole()) + L"P";
    case Type::Float:
        return FloatText(static_cast<float>(value.AsReal()));
    case Type::Double:
        return DoubleText(value.AsReal());
    case Type::Time:
        return TimeText(value.AsReal());
    case Type::Object:
        break;
    }
    return {};
}

} // namespace

void Printer::Put(const Value& value, bool nested) {
    if (!value.Is(Type::Object)) {
        text_ += SmallText(value);
        return;
    }
    if (depth_ >= deepestPrint || text_.size() > longestPrint) {
        text_ += L"...";
        return;
    }
    ++depth_;
    value.AsObject()->Print(*this, nested);
    --depth_;
}

void Printer::PutNumber(double number) {
    text_ += GeneralText(number, 6);
}

std::wstring TextOf(const Value& value) {
    Printer printer;
    printer.Put(value, false);
    return printer.Take();
}

std::wstring QuotedText(const Value& value) {
    Printer printer;
    printer.Put(value, true);
    return printer.Take();
}

std::wstring ClassNameOf(const Value& value) {
    switch (value.GetType()) {
    case Type::Undefined:
        return L"UndefinedClass";
    case Type::Unsupplied:
    case Type::DontCollect:
        return L"Value";
    case Type::Ok:
        return L"OkClass";
    case Type::Boolean:
        return L"BooleanClass";
    case Type::Integer:
        return L"Integer";
    case Type::Integer64:
        return L"Integer64";
    case Type::IntegerPtr:
        return L"IntegerPtr";
    case Type::Float:
        return L"Float";
    case Type::Double:
        return L"Double";
    case Type::Time:
        return L"Time";
    case Type::Object:
        break;
    }
    return value.AsObject()->ClassName();
}

bool ToBool(const Value& value) {
    if (!value.Is(Type::Boolean))
        RaiseConversion(value, L"Boolean");
    return value.AsBool();
}

int64_t ToWhole(const Value& value) {
    if (value.IsWhole())
        return value.AsWhole();
    if (!value.IsReal() && !value.Is(Type::Time))
        RaiseConversion(value, L"Integer");
    const double real = std::trunc(value.AsReal());
    if (std::isnan(real))
        return 0;
    if (real >= 9.2233720368547748e18)
        return std::numeric_limits<int64_t>::max();
    if (real <= -9.2233720368547748e18)
        return std::numeric_limits<int64_t>::min();
    return static_cast<int64_t>(real);
}

int ToInt(const Value& value) {
    if (!value.IsNumber() && !value.Is(Type::Time))
        RaiseConversion(value, L"Integer");
    return static_cast<int>(static_cast<uint32_t>(ToWhole(value)));
}

double ToReal(const Value& value) {
    if (!value.IsNumber() && !value.Is(Type::Time))
        RaiseConversion(value, L"Float");
    return value.AsReal();
}

float ToFloat(const Value& value) {
    return static_cast<float>(ToReal(value));
}

const std::wstring& ToString(const Value& value) {
    const auto* text = value.As<StringObject>();
    if (!text)
        RaiseConversion(value, L"String");
    return text->Text();
}

const std::wstring& ToFileName(const Value& value) {
    const auto* text = value.As<StringObject>();
    if (!text)
        RaiseConversion(value, L"FileName");
    return text->Text();
}

std::wstring ToNameText(const Value& value) {
    if (const auto* name = value.As<NameObject>())
        return name->Text();
    if (const auto* text = value.As<StringObject>())
        return text->Text();
    RaiseConversion(value, L"Name");
}

ArrayObject& ToArray(const Value& value) {
    auto* array = value.As<ArrayObject>();
    if (!array)
        RaiseConversion(value, L"Array");
    return *array;
}

VectorObject& ToVector(const Value& value, VectorKind kind) {
    auto* vector = value.As<VectorObject>();
    if (!vector || vector->Kind() != kind)
        RaiseConversion(value, VectorObject(kind, {}).ClassName());
    return *vector;
}

size_t ToPosition(const Value& index) {
    if (!index.IsNumber())
        RaiseConversion(index, L"Integer");
    const int64_t number = ToWhole(index);
    if (number < 1)
        RaiseRuntime(L"Array index must be positive number, got: " + TextOf(index));
    return static_cast<size_t>(number) - 1;
}

bool EqualValues(const Value& a, const Value& b) {
    if (a.IsNumber() && b.IsNumber()) {
        if (a.IsWhole() && b.IsWhole())
            return a.AsWhole() == b.AsWhole();
        if (a.Is(Type::Double) || b.Is(Type::Double))
            return a.AsReal() == b.AsReal();
        return static_cast<float>(a.AsReal()) == static_cast<float>(b.AsReal());
    }
    if (a.GetType() != b.GetType()) {
        // A time equals the number of its frames.
        if (a.Is(Type::Time) && b.IsNumber())
            return a.AsReal() * 30 / ticksPerSecond == b.AsReal();
        return b.Is(Type::Time) && a.IsNumber() && EqualValues(b, a);
    }
    switch (a.GetType()) {
    case Type::Boolean:
        return a.AsBool() == b.AsBool();
    case Type::Time:
        return a.AsReal() == b.AsReal();
    case Type::Object:
        return a.AsObject()->Equals(*b.AsObject());
    default:
        return true;
    }
}

} // namespace simhost::script
