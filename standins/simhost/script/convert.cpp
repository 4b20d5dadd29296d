#include "simhost/script/convert.h"

#include <cmath>
#include <limits>

#include "simhost/script/number.h"
#include "simhost/script/raise.h"

namespace simhost::script {
namespace {

constexpr int deepestPrint = 12;
constexpr size_t longestPrint = size_t{1} << 20;

// Of the values that are no objects, in the order of their types.
constexpr const wchar_t* classNames[] = {L"UndefinedClass", L"Value",        L"OkClass",
                                         L"Value",          L"BooleanClass", L"Integer",
                                         L"Integer64",      L"IntegerPtr",   L"Float"};

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
    case Type::Integer64:
        return std::to_wstring(value.AsWhole()) + L"L";
    case Type::IntegerPtr:
        return std::to_wstring(value.AsWhole()) + L"P";
    case Type::Float:
        return FloatText(static_cast<float>(value.AsReal()));
    default:
        return std::to_wstring(value.AsWhole());
    }
}

std::wstring Printed(const Value& value, bool nested) {
    Printer printer;
    printer.Append(value, nested);
    return printer.Take();
}

} // namespace

void Printer::Append(const Value& value, bool nested) {
    if (!value.AsObject()) {
        text_ += SmallText(value);
    } else if (depth_ >= deepestPrint || text_.size() > longestPrint) {
        text_ += L"...";
    } else {
        ++depth_;
        value.AsObject()->Print(*this, nested);
        --depth_;
    }
}

std::wstring TextOf(const Value& value) {
    return Printed(value, false);
}

std::wstring QuotedText(const Value& value) {
    return Printed(value, true);
}

std::wstring ClassNameOf(const Value& value) {
    return value.AsObject() ? value.AsObject()->ClassName()
                            : classNames[static_cast<size_t>(value.GetType())];
}

bool IsCollection(const Value& value) {
    return value.AsObject() && value.AsObject()->IsCollection();
}

bool ToBool(const Value& value) {
    if (!value.Is(Type::Boolean))
        RaiseConversion(value, L"Boolean");
    return value.AsBool();
}

int64_t ToWhole(const Value& value) {
    if (value.IsWhole())
        return value.AsWhole();
    if (!value.IsNumber())
        RaiseConversion(value, L"Integer");
    return ToWhole(value.AsReal());
}

int64_t ToWhole(double real) {
    if (std::isnan(real))
        return 0;
    if (std::fabs(real) >= 9.2233720368547748e18)
        return real > 0 ? std::numeric_limits<int64_t>::max() : std::numeric_limits<int64_t>::min();
    return static_cast<int64_t>(real);
}

int ToInt(const Value& value) {
    return static_cast<int>(ToWhole(value));
}

float ToFloat(const Value& value) {
    if (!value.IsNumber())
        RaiseConversion(value, L"Float");
    return static_cast<float>(value.AsReal());
}

const std::wstring& ToString(const Value& value, const wchar_t* type) {
    const auto* text = value.As<StringObject>();
    if (!text)
        RaiseConversion(value, type);
    return text->Text();
}

std::wstring ToNameText(const Value& value) {
    const auto* name = value.As<NameObject>();
    return name ? name->Text() : ToString(value, L"Name");
}

VectorObject& ToVector(const Value& value, VectorKind kind) {
    auto* vector = value.As<VectorObject>();
    if (!vector || vector->Kind() != kind)
        RaiseConversion(value, VectorObject(kind, {}).ClassName());
    return *vector;
}

size_t ToPosition(const Value& index) {
    const int64_t number = ToWhole(index);
    if (number < 1)
        RaiseRuntime(L"Array index must be positive number, got: " + TextOf(index));
    return static_cast<size_t>(number) - 1;
}

bool EqualValues(const Value& a, const Value& b) {
    if (a.IsWhole() && b.IsWhole())
        return a.AsWhole() == b.AsWhole();
    if (a.IsNumber() && b.IsNumber())
        return static_cast<float>(a.AsReal()) == static_cast<float>(b.AsReal());
    if (a.GetType() != b.GetType())
        return false;
    if (a.Is(Type::Boolean))
        return a.AsBool() == b.AsBool();
    return !a.AsObject() || a.AsObject()->Equals(*b.AsObject());
}

} // namespace simhost::script
