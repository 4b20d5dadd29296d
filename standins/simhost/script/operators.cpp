#include "simhost/script/operators.h"

#include <cmath>

#include "simhost/script/convert.h"
#include "simhost/script/interpreter.h"
#include "simhost/script/raise.h"

namespace simhost::script {
namespace {

const wchar_t* Spelling(BinaryOp op) {
    switch (op) {
    case BinaryOp::Add:
        return L"+";
    case BinaryOp::Subtract:
        return L"-";
    case BinaryOp::Multiply:
        return L"*";
    case BinaryOp::Divide:
        return L"/";
    case BinaryOp::Power:
        return L"^";
    case BinaryOp::Equal:
        return L"==";
    case BinaryOp::NotEqual:
        return L"!=";
    case BinaryOp::Less:
        return L"<";
    case BinaryOp::Greater:
        return L">";
    case BinaryOp::LessEqual:
        return L"<=";
    case BinaryOp::GreaterEqual:
        return L">=";
    }
    return L"";
}

// The host prints the quotes of an operator's name doubled.
[[noreturn]] void RaiseNoOperator(BinaryOp op, const Value& value) {
    RaiseNoFunction(L"\"" + std::wstring(Spelling(op)) + L"\"", value);
}

// The kind of two numbers' result: the wider of both.
Type Common(const Value& a, const Value& b) {
    for (const Type type : {Type::Double, Type::Float, Type::IntegerPtr, Type::Integer64}) {
        if (a.Is(type) || b.Is(type)) {
            const bool wide = a.Is(Type::Integer64) || b.Is(Type::Integer64) ||
                              a.Is(Type::IntegerPtr) || b.Is(Type::IntegerPtr);
            return type == Type::Float && wide ? Type::Double : type;
        }
    }
    return Type::Integer;
}

Value MakeWhole(Type type, uint64_t bits) {
    if (type == Type::Integer)
        return Value::Integer(static_cast<int32_t>(static_cast<uint32_t>(bits)));
    return type == Type::Integer64 ? Value::Integer64(static_cast<int64_t>(bits))
                                   : Value::IntegerPtr(static_cast<int64_t>(bits));
}

Value MakeReal(Type type, double value) {
    return type == Type::Double ? Value::Double(value) : Value::Float(static_cast<float>(value));
}

// Whole numbers wrap around, as the host's do.
Value ApplyWhole(Type type, BinaryOp op, int64_t a, int64_t b) {
    const auto x = static_cast<uint64_t>(a);
    const auto y = static_cast<uint64_t>(b);
    switch (op) {
    case BinaryOp::Add:
        return MakeWhole(type, x + y);
    case BinaryOp::Subtract:
        return MakeWhole(type, x - y);
    case BinaryOp::Multiply:
        return MakeWhole(type, x * y);
    case BinaryOp::Divide:
        if (b == 0)
            RaiseRuntime(L"Runtime error: Divide by zero");
        return MakeWhole(type, b == -1 ? 0 - x : static_cast<uint64_t>(a / b));
    default: {
        const double power = std::pow(static_cast<double>(a), static_cast<double>(b));
        return MakeWhole(type, static_cast<uint64_t>(ToWhole(Value::Double(power))));
    }
    }
}

double ApplyReal(BinaryOp op, double a, double b) {
    switch (op) {
    case BinaryOp::Add:
        return a + b;
    case BinaryOp::Subtract:
        return a - b;
    case BinaryOp::Multiply:
        return a * b;
    case BinaryOp::Divide:
        return b == 0 && a == 0 ? std::nan("") : b == 0 ? std::copysign(HUGE_VAL, a) : a / b;
    default:
        return std::pow(a, b);
    }
}

Value ApplyNumbers(BinaryOp op, const Value& a, const Value& b) {
    const Type type = Common(a, b);
    if (type == Type::Float || type == Type::Double)
        return MakeReal(type, ApplyReal(op, a.AsReal(), b.AsReal()));
    return ApplyWhole(type, op, a.AsWhole(), b.AsWhole());
}

// Numbers count as frames beside a time, as factors in products.
Value ApplyTimes(BinaryOp op, const Value& a, const Value& b) {
    const double ticksPerFrame = ticksPerSecond / 30.0;
    if (op == BinaryOp::Multiply || op == BinaryOp::Divide) {
        if (a.Is(Type::Time) && b.Is(Type::Time))
            return Value::Float(static_cast<float>(ApplyReal(op, a.AsReal(), b.AsReal())));
        return Value::Time(ApplyReal(op, ToReal(a), ToReal(b)));
    }
    const double x = a.Is(Type::Time) ? a.AsReal() : ToReal(a) * ticksPerFrame;
    const double y = b.Is(Type::Time) ? b.AsReal() : ToReal(b) * ticksPerFrame;
    return Value::Time(ApplyReal(op, x, y));
}

MatrixObject::Rows Multiply(const MatrixObject::Rows& a, const MatrixObject::Rows& b) {
    MatrixObject::Rows product{};
    for (size_t row = 0; row < 4; ++row) {
        for (size_t column = 0; column < 3; ++column) {
            float sum = row == 3 ? b[3][column] : 0.0f;
            for (size_t k = 0; k < 3; ++k)
                sum += a[row][k] * b[k][column];
            product[row][column] = sum;
        }
    }
    return product;
}

Value Transform(const VectorObject& point, const MatrixObject::Rows& m) {
    std::array<float, 4> result{};
    for (size_t column = 0; column < 3; ++column)
        result[column] = point.At(0) * m[0][column] + point.At(1) * m[1][column] +
                         point.At(2) * m[2][column] + m[3][column];
    return {std::make_shared<VectorObject>(VectorKind::Point3, result)};
}

Value ApplyVector(BinaryOp op, const VectorObject& a, const Value& b) {
    if (const auto* matrix = b.As<MatrixObject>();
        matrix && op == BinaryOp::Multiply && a.Kind() == VectorKind::Point3)
        return Transform(a, matrix->GetRows());
    const auto* other = b.As<VectorObject>();
    if (!other && !b.IsNumber())
        RaiseConversion(b, a.ClassName());
    if (other && other->Size() != a.Size())
        RaiseConversion(b, a.ClassName());
    std::array<float, 4> result{};
    for (size_t i = 0; i < a.Size(); ++i) {
        const double y = other ? static_cast<double>(other->At(i)) : b.AsReal();
        result[i] = static_cast<float>(ApplyReal(op, static_cast<double>(a.At(i)), y));
    }
    if (a.Kind() == VectorKind::Color)
        result[3] = a.At(3);
    return {std::make_shared<VectorObject>(a.Kind(), result)};
}

Value ApplyArray(Interpreter& interpreter, BinaryOp op, const ArrayObject& a, const Value& b) {
    if (op == BinaryOp::Add) {
        const ArrayObject& other = ToArray(b);
        std::vector<Value> items = a.Items();
        items.insert(items.end(), other.Items().begin(), other.Items().end());
        interpreter.Charge(items.size() / 8);
        return MakeArray(std::move(items));
    }
    if (op != BinaryOp::Subtract)
        return {};
    std::vector<Value> items;
    const ArrayObject& other = ToArray(b);
    interpreter.Charge(a.Items().size() * (other.Items().size() / 8 + 1));
    for (const Value& item : a.Items()) {
        bool kept = true;
        for (const Value& removed : other.Items())
            kept = kept && !EqualValues(item, removed);
        if (kept)
            items.push_back(item);
    }
    return MakeArray(std::move(items));
}

Value ApplyBits(BinaryOp op, const BitArrayObject& a, const BitArrayObject& b) {
    auto result = std::make_shared<BitArrayObject>();
    const size_t size = std::max(a.Bits().size(), b.Bits().size());
    for (size_t i = size; i-- > 0;) {
        const bool x = i < a.Bits().size() && a.Bits()[i];
        const bool y = i < b.Bits().size() && b.Bits()[i];
        const bool on = op == BinaryOp::Add ? x || y : op == BinaryOp::Subtract ? x && !y : x && y;
        if (on)
            result->Set(i, true);
    }
    return {result};
}

Value AddStrings(Interpreter& interpreter, const StringObject& a, const Value& b) {
    const std::wstring& other = ToString(b);
    const size_t size = a.Text().size() + other.size();
    if (size > interpreter.Options().limits.stringUnits)
        throw ScriptError(ScriptError::Kind::Limit, L"String too long");
    interpreter.Charge(size / 64);
    return MakeString(a.Text() + other);
}

Value ApplyArithmetic(Interpreter& interpreter, BinaryOp op, const Value& a, const Value& b) {
    if (a.IsNumber() && b.IsNumber())
        return ApplyNumbers(op, a, b);
    if (a.Is(Type::Time) || (b.Is(Type::Time) && a.IsNumber()))
        return ApplyTimes(op, a, b);
    if (const auto* text = a.As<StringObject>(); text && op == BinaryOp::Add)
        return AddStrings(interpreter, *text, b);
    if (const auto* vector = a.As<VectorObject>())
        return ApplyVector(op, *vector, b);
    if (const auto* vector = b.As<VectorObject>(); vector && a.IsNumber()) {
        const auto x = static_cast<float>(a.AsReal());
        return ApplyVector(op, VectorObject(vector->Kind(), {x, x, x, x}), b);
    }
    if (const auto* matrix = a.As<MatrixObject>()) {
        const auto* other = b.As<MatrixObject>();
        if (!other || op != BinaryOp::Multiply)
            RaiseConversion(b, L"Matrix3");
        return {std::make_shared<MatrixObject>(Multiply(matrix->GetRows(), other->GetRows()))};
    }
    if (const auto* bits = a.As<BitArrayObject>(); bits && b.As<BitArrayObject>())
        return ApplyBits(op, *bits, *b.As<BitArrayObject>());
    if (const auto* array = a.As<ArrayObject>()) {
        if (Value result = ApplyArray(interpreter, op, *array, b); !result.IsUndefined())
            return result;
    }
    if (a.IsNumber())
        RaiseConversion(b, ClassNameOf(a));
    RaiseNoOperator(op, a);
}

} // namespace

int Compare(const Value& a, const Value& b, const wchar_t* op) {
    if ((a.IsNumber() || a.Is(Type::Time)) && (b.IsNumber() || b.Is(Type::Time))) {
        if (a.IsWhole() && b.IsWhole())
            return a.AsWhole() < b.AsWhole() ? -1 : a.AsWhole() > b.AsWhole() ? 1 : 0;
        const double ticksPerFrame = ticksPerSecond / 30.0;
        double x = a.Is(Type::Time) ? a.AsReal() / ticksPerFrame : a.AsReal();
        double y = b.Is(Type::Time) ? b.AsReal() / ticksPerFrame : b.AsReal();
        if (!a.Is(Type::Double) && !b.Is(Type::Double)) {
            x = static_cast<double>(static_cast<float>(x));
            y = static_cast<double>(static_cast<float>(y));
        }
        return x < y ? -1 : x > y ? 1 : 0;
    }
    if (const auto* text = a.As<StringObject>()) {
        const int order = text->Text().compare(ToString(b));
        return order < 0 ? -1 : order > 0 ? 1 : 0;
    }
    if (a.IsNumber() || a.Is(Type::Time))
        RaiseConversion(b, ClassNameOf(a));
    RaiseNoFunction(L"\"" + std::wstring(op) + L"\"", a);
}

Value Apply(Interpreter& interpreter, BinaryOp op, const Value& a, const Value& b) {
    switch (op) {
    case BinaryOp::Equal:
        return Value::Bool(EqualValues(a, b));
    case BinaryOp::NotEqual:
        return Value::Bool(!EqualValues(a, b));
    case BinaryOp::Less:
        return Value::Bool(Compare(a, b, L"<") < 0);
    case BinaryOp::Greater:
        return Value::Bool(Compare(a, b, L">") > 0);
    case BinaryOp::LessEqual:
        return Value::Bool(Compare(a, b, L"<=") <= 0);
    case BinaryOp::GreaterEqual:
        return Value::Bool(Compare(a, b, L">=") >= 0);
    default:
        return ApplyArithmetic(interpreter, op, a, b);
    }
}

Value Negate(const Value& a) {
    switch (a.GetType()) {
    case Type::Integer:
    case Type::Integer64:
    case Type::IntegerPtr:
        return MakeWhole(a.GetType(), 0 - static_cast<uint64_t>(a.AsWhole()));
    case Type::Float:
    case Type::Double:
        return MakeReal(a.GetType(), -a.AsReal());
    case Type::Time:
        return Value::Time(-a.AsReal());
    default:
        break;
    }
    if (const auto* vector = a.As<VectorObject>()) {
        std::array<float, 4> result = vector->Components();
        for (float& component : result)
            component = -component;
        return {std::make_shared<VectorObject>(vector->Kind(), result)};
    }
    if (const auto* bits = a.As<BitArrayObject>()) {
        auto result = std::make_shared<BitArrayObject>();
        for (size_t i = bits->Bits().size(); i-- > 0;) {
            if (!bits->Bits()[i])
                result->Set(i, true);
        }
        return {result};
    }
    RaiseNoFunction(L"\"-\"", a);
}

} // namespace simhost::script
