#include "simhost/script/operators.h"

#include <cmath>

#include "simhost/script/convert.h"
#include "simhost/script/interpreter.h"
#include "simhost/script/raise.h"

namespace simhost::script {
namespace {

// In the order of the operators.
constexpr const wchar_t* spellings[] = {L"+",  L"-", L"*", L"/",  L"^", L"==",
                                        L"!=", L"<", L">", L"<=", L">="};

// The host prints the quotes of an operator's name doubled.
[[noreturn]] void RaiseNoOperator(BinaryOp op, const Value& value) {
    RaiseNoFunction(L"\"" + std::wstring(spellings[static_cast<size_t>(op)]) + L"\"", value);
}

// Of two whole numbers: the wider one.
Type CommonType(const Value& a, const Value& b) {
    for (const Type type : {Type::IntegerPtr, Type::Integer64}) {
        if (a.Is(type) || b.Is(type))
            return type;
    }
    return Type::Integer;
}

// Whole numbers wrap around, as the host's do.
int64_t ApplyWhole(BinaryOp op, int64_t a, int64_t b) {
    const auto x = static_cast<uint64_t>(a);
    const auto y = static_cast<uint64_t>(b);
    switch (op) {
    case BinaryOp::Add:
        return static_cast<int64_t>(x + y);
    case BinaryOp::Subtract:
        return static_cast<int64_t>(x - y);
    case BinaryOp::Multiply:
        return static_cast<int64_t>(x * y);
    case BinaryOp::Divide:
        if (b == 0)
            RaiseRuntime(L"Runtime error: Divide by zero");
        return b == -1 ? static_cast<int64_t>(0 - x) : a / b;
    default:
        return ToWhole(std::pow(static_cast<double>(a), static_cast<double>(b)));
    }
}

float ApplyReal(BinaryOp op, double a, double b) {
    switch (op) {
    case BinaryOp::Add:
        return static_cast<float>(a + b);
    case BinaryOp::Subtract:
        return static_cast<float>(a - b);
    case BinaryOp::Multiply:
        return static_cast<float>(a * b);
    case BinaryOp::Divide:
        if (b == 0)
            return a == 0 ? std::nanf("") : static_cast<float>(std::copysign(HUGE_VAL, a));
        return static_cast<float>(a / b);
    default:
        return static_cast<float>(std::pow(a, b));
    }
}

Value ApplyArithmetic(Interpreter& interpreter, BinaryOp op, const Value& a, const Value& b) {
    if (a.IsWhole() && b.IsWhole())
        return Value::Whole(CommonType(a, b), ApplyWhole(op, a.AsWhole(), b.AsWhole()));
    if (a.IsNumber() && b.IsNumber())
        return Value::Float(ApplyReal(op, a.AsReal(), b.AsReal()));
    if (const auto* text = a.As<StringObject>(); text && op == BinaryOp::Add) {
        const std::wstring& other = ToString(b);
        interpreter.Charge((text->Text().size() + other.size()) / 64);
        return MakeString(text->Text() + other);
    }
    if (a.IsNumber())
        RaiseConversion(b, ClassNameOf(a));
    RaiseNoOperator(op, a);
}

// Below, at or above zero as `a` comes before, with or behind `b`.
int Compare(BinaryOp op, const Value& a, const Value& b) {
    if (a.IsWhole() && b.IsWhole())
        return a.AsWhole() < b.AsWhole() ? -1 : a.AsWhole() > b.AsWhole() ? 1 : 0;
    if (a.IsNumber() && b.IsNumber()) {
        const auto x = static_cast<float>(a.AsReal());
        const auto y = static_cast<float>(b.AsReal());
        return x < y ? -1 : x > y ? 1 : 0;
    }
    if (const auto* text = a.As<StringObject>())
        return text->Text().compare(ToString(b));
    if (a.IsNumber())
        RaiseConversion(b, ClassNameOf(a));
    RaiseNoOperator(op, a);
}

} // namespace

Value Apply(Interpreter& interpreter, BinaryOp op, const Value& a, const Value& b) {
    switch (op) {
    case BinaryOp::Equal:
        return Value::Bool(EqualValues(a, b));
    case BinaryOp::NotEqual:
        return Value::Bool(!EqualValues(a, b));
    case BinaryOp::Less:
        return Value::Bool(Compare(op, a, b) < 0);
    case BinaryOp::Greater:
        return Value::Bool(Compare(op, a, b) > 0);
    case BinaryOp::LessEqual:
        return Value::Bool(Compare(op, a, b) <= 0);
    case BinaryOp::GreaterEqual:
        return Value::Bool(Compare(op, a, b) >= 0);
    default:
        return ApplyArithmetic(interpreter, op, a, b);
    }
}

Value Negate(const Value& a) {
    if (a.Is(Type::Float))
        return Value::Float(static_cast<float>(-a.AsReal()));
    if (!a.IsWhole())
        RaiseNoFunction(L"\"-\"", a);
    // 2147483648 has 64 bits, -2147483648 has 32.
    const bool narrow = a.Is(Type::Integer64) && a.AsWhole() == int64_t{1} << 31;
    return Value::Whole(narrow ? Type::Integer : a.GetType(),
                        static_cast<int64_t>(0 - static_cast<uint64_t>(a.AsWhole())));
}

} // namespace simhost::script
