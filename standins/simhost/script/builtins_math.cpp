// Numbers and points. Angles are in degrees.
#include <algorithm>
#include <cmath>
#include <memory>
#include <random>

#include "simhost/script/builtins.h"
#include "simhost/script/convert.h"
#include "simhost/script/interpreter.h"
#include "simhost/script/number.h"
#include "simhost/script/operators.h"
#include "simhost/script/raise.h"

namespace simhost::script {
namespace {

constexpr double pi = 3.14159265358979323846;

Value SameReal(const Value& like, double value) {
    return like.Is(Type::Double) ? Value::Double(value) : Value::Float(static_cast<float>(value));
}

void DefineReal(Interpreter& in, const wchar_t* name, double (*function)(double)) {
    in.Define(name, 1, 1, [function](Interpreter&, Arguments& args) {
        return SameReal(args.items[0], function(ToReal(args.items[0])));
    });
}

void RegisterFunctions(Interpreter& in) {
    DefineReal(in, L"sin", [](double x) { return std::sin(x * pi / 180); });
    DefineReal(in, L"cos", [](double x) { return std::cos(x * pi / 180); });
    DefineReal(in, L"tan", [](double x) { return std::tan(x * pi / 180); });
    DefineReal(in, L"asin", [](double x) { return std::asin(x) * 180 / pi; });
    DefineReal(in, L"acos", [](double x) { return std::acos(x) * 180 / pi; });
    DefineReal(in, L"atan", [](double x) { return std::atan(x) * 180 / pi; });
    DefineReal(in, L"degToRad", [](double x) { return x * pi / 180; });
    DefineReal(in, L"radToDeg", [](double x) { return x * 180 / pi; });
    DefineReal(in, L"sqrt", [](double x) { return std::sqrt(x); });
    DefineReal(in, L"exp", [](double x) { return std::exp(x); });
    DefineReal(in, L"log", [](double x) { return std::log(x); });
    DefineReal(in, L"log10", [](double x) { return std::log10(x); });
    DefineReal(in, L"floor", [](double x) { return std::floor(x); });
    DefineReal(in, L"ceil", [](double x) { return std::ceil(x); });
    in.Define(L"atan2", 2, 2, [](Interpreter&, Arguments& args) {
        return SameReal(args.items[0],
                        std::atan2(ToReal(args.items[0]), ToReal(args.items[1])) * 180 / pi);
    });
    in.Define(L"pow", 2, 2, [](Interpreter& i, Arguments& args) {
        return Apply(i, BinaryOp::Power, args.items[0], args.items[1]);
    });
    in.Define(L"abs", 1, 1, [](Interpreter&, Arguments& args) {
        const Value& value = args.items[0];
        static_cast<void>(ToReal(value));
        return value.AsReal() < 0 ? Negate(value) : value;
    });
    in.Define(L"mod", 2, 2, [](Interpreter&, Arguments& args) {
        const Value& a = args.items[0];
        const Value& b = args.items[1];
        if (a.IsWhole() && b.IsWhole() && b.AsWhole() != 0) {
            const int64_t rest = b.AsWhole() == -1 ? 0 : a.AsWhole() % b.AsWhole();
            return a.Is(Type::Integer) ? Value::Integer(static_cast<int32_t>(rest))
                                       : Value::Integer64(rest);
        }
        return SameReal(a, std::fmod(ToReal(a), ToReal(b)));
    });
}

// amin, amax: of an array's items or of all arguments.
void DefineExtreme(Interpreter& in, const wchar_t* name, int wantedOrder) {
    in.Define(name, 1, NativeFunction::anyCount, [wantedOrder](Interpreter& i, Arguments& args) {
        std::vector<Value> items = args.items;
        if (const auto* array = args.items[0].As<ArrayObject>())
            items = array->Items();
        i.Charge(items.size());
        Value best;
        for (const Value& item : items) {
            if (best.IsUndefined() || Compare(item, best, L"<") == wantedOrder)
                best = item;
        }
        return best;
    });
}

// At least 0, below 1.
double Fraction(std::mt19937& engine) {
    return static_cast<double>(static_cast<uint32_t>(engine())) / 4294967296.0;
}

void RegisterRandom(Interpreter& in) {
    const auto engine = std::make_shared<std::mt19937>();
    in.Define(L"seed", 1, 1, [engine](Interpreter&, Arguments& args) {
        engine->seed(static_cast<uint32_t>(ToInt(args.items[0])));
        return Value::Ok();
    });
    in.Define(L"random", 2, 2, [engine](Interpreter&, Arguments& args) {
        const Value& a = args.items[0];
        const Value& b = args.items[1];
        const double fraction = Fraction(*engine);
        if (a.IsWhole() && b.IsWhole()) {
            const auto low = static_cast<double>(std::min(a.AsWhole(), b.AsWhole()));
            const auto high = static_cast<double>(std::max(a.AsWhole(), b.AsWhole()));
            return Value::Integer(ToInt(Value::Double(low + fraction * (high - low + 1))));
        }
        if (const auto* from = a.As<VectorObject>()) {
            const VectorObject& to = ToVector(b, from->Kind());
            std::array<float, 4> mixed{};
            for (size_t i = 0; i < from->Size(); ++i)
                mixed[i] =
                    from->At(i) + static_cast<float>(Fraction(*engine)) * (to.At(i) - from->At(i));
            return Value(std::make_shared<VectorObject>(from->Kind(), mixed));
        }
        return SameReal(a, ToReal(a) + fraction * (ToReal(b) - ToReal(a)));
    });
}

double Dot(const VectorObject& a, const VectorObject& b) {
    double sum = 0;
    for (size_t i = 0; i < a.Size(); ++i)
        sum += static_cast<double>(a.At(i)) * static_cast<double>(b.At(i));
    return sum;
}

const VectorObject& AnyPoint(const Value& value) {
    const auto* vector = value.As<VectorObject>();
    if (!vector)
        RaiseConversion(value, L"Point3");
    return *vector;
}

void RegisterPoints(Interpreter& in) {
    in.Define(L"dot", 2, 2, [](Interpreter&, Arguments& args) {
        const VectorObject& a = AnyPoint(args.items[0]);
        return Value::Float(static_cast<float>(Dot(a, ToVector(args.items[1], a.Kind()))));
    });
    in.Define(L"cross", 2, 2, [](Interpreter&, Arguments& args) {
        const VectorObject& a = ToVector(args.items[0], VectorKind::Point3);
        const VectorObject& b = ToVector(args.items[1], VectorKind::Point3);
        return MakeVector(VectorKind::Point3, a.At(1) * b.At(2) - a.At(2) * b.At(1),
                          a.At(2) * b.At(0) - a.At(0) * b.At(2),
                          a.At(0) * b.At(1) - a.At(1) * b.At(0));
    });
    in.Define(L"length", 1, 1, [](Interpreter&, Arguments& args) {
        const VectorObject& a = AnyPoint(args.items[0]);
        return Value::Float(static_cast<float>(std::sqrt(Dot(a, a))));
    });
    in.Define(L"normalize", 1, 1, [](Interpreter& i, Arguments& args) {
        const VectorObject& a = AnyPoint(args.items[0]);
        const double length = std::sqrt(Dot(a, a));
        return length > 0 ? Apply(i, BinaryOp::Divide, args.items[0], Value::Double(length))
                          : args.items[0];
    });
    in.Define(L"distance", 2, 2, [](Interpreter& i, Arguments& args) {
        const Value difference = Apply(i, BinaryOp::Subtract, args.items[0], args.items[1]);
        const VectorObject& d = AnyPoint(difference);
        return Value::Float(static_cast<float>(std::sqrt(Dot(d, d))));
    });
    in.Define(L"transMatrix", 1, 1, [](Interpreter&, Arguments& args) {
        const VectorObject& p = ToVector(args.items[0], VectorKind::Point3);
        return Value(std::make_shared<MatrixObject>(
            MatrixObject::Rows{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {p.At(0), p.At(1), p.At(2)}}}));
    });
    in.Define(L"scaleMatrix", 1, 1, [](Interpreter&, Arguments& args) {
        const VectorObject& p = ToVector(args.items[0], VectorKind::Point3);
        return Value(std::make_shared<MatrixObject>(
            MatrixObject::Rows{{{p.At(0), 0, 0}, {0, p.At(1), 0}, {0, 0, p.At(2)}, {0, 0, 0}}}));
    });
}

void RegisterBits(Interpreter& in) {
    InterfaceObject& bit = in.DefineInterface(L"bit");
    const auto define = [&bit](const wchar_t* name, uint32_t (*function)(uint32_t, uint32_t)) {
        bit.Function(name, 2, 2, [function](Interpreter&, Arguments& args) {
            return Value::Integer(
                static_cast<int32_t>(function(static_cast<uint32_t>(ToInt(args.items[0])),
                                              static_cast<uint32_t>(ToInt(args.items[1])))));
        });
    };
    define(L"and", [](uint32_t a, uint32_t b) { return a & b; });
    define(L"or", [](uint32_t a, uint32_t b) { return a | b; });
    define(L"xor", [](uint32_t a, uint32_t b) { return a ^ b; });
    define(L"shift", [](uint32_t a, uint32_t by) {
        const auto count = static_cast<int32_t>(by);
        if (count <= -32 || count >= 32)
            return 0u;
        return count < 0 ? a >> -count : a << count;
    });
    bit.Function(L"not", 1, 1, [](Interpreter&, Arguments& args) {
        return Value::Integer(~ToInt(args.items[0]));
    });
    bit.Function(L"get", 2, 2, [](Interpreter&, Arguments& args) {
        const size_t position = ToPosition(args.items[1]);
        return Value::Bool(position < 32 &&
                           (static_cast<uint32_t>(ToInt(args.items[0])) >> position & 1) != 0);
    });
    bit.Function(L"set", 3, 3, [](Interpreter&, Arguments& args) {
        const size_t position = ToPosition(args.items[1]);
        const uint32_t mask = position < 32 ? 1u << position : 0u;
        const auto value = static_cast<uint32_t>(ToInt(args.items[0]));
        return Value::Integer(
            static_cast<int32_t>(ToBool(args.items[2]) ? value | mask : value & ~mask));
    });
    bit.Function(L"intAsChar", 1, 1, [](Interpreter&, Arguments& args) {
        return MakeString(std::wstring(1, static_cast<wchar_t>(ToInt(args.items[0]) & 0xFFFF)));
    });
    bit.Function(L"charAsInt", 1, 1, [](Interpreter&, Arguments& args) {
        const std::wstring& text = ToString(args.items[0]);
        return Value::Integer(text.empty() ? 0 : static_cast<int32_t>(text[0]));
    });
    bit.Function(L"intAsHex", 1, 1, [](Interpreter&, Arguments& args) {
        auto value = static_cast<uint32_t>(ToInt(args.items[0]));
        std::wstring text;
        do {
            text.insert(text.begin(), L"0123456789abcdef"[value & 15]);
            value >>= 4;
        } while (value != 0);
        return MakeString(std::move(text));
    });
}

void RegisterConstants(Interpreter& in) {
    in.DefineVariable(L"pi", [](Interpreter&) { return Value::Float(static_cast<float>(pi)); });
    in.DefineVariable(L"e", [](Interpreter&) { return Value::Float(2.7182818f); });
    struct Named {
        const wchar_t* name;
        VectorKind kind;
        float x, y, z;
    };
    constexpr Named vectors[] = {
        {L"x_axis", VectorKind::Point3, 1, 0, 0},     {L"y_axis", VectorKind::Point3, 0, 1, 0},
        {L"z_axis", VectorKind::Point3, 0, 0, 1},     {L"red", VectorKind::Color, 255, 0, 0},
        {L"green", VectorKind::Color, 0, 255, 0},     {L"blue", VectorKind::Color, 0, 0, 255},
        {L"white", VectorKind::Color, 255, 255, 255}, {L"black", VectorKind::Color, 0, 0, 0},
        {L"gray", VectorKind::Color, 128, 128, 128},  {L"yellow", VectorKind::Color, 255, 255, 0},
        {L"orange", VectorKind::Color, 255, 128, 0},  {L"brown", VectorKind::Color, 136, 61, 0},
    };
    for (const Named& named : vectors) {
        in.DefineVariable(named.name, [named](Interpreter&) {
            return MakeVector(named.kind, named.x, named.y, named.z,
                              named.kind == VectorKind::Color ? 255.0f : 0.0f);
        });
    }
}

} // namespace

void RegisterMath(Interpreter& in) {
    RegisterConstants(in);
    RegisterFunctions(in);
    DefineExtreme(in, L"amin", -1);
    DefineExtreme(in, L"amax", 1);
    RegisterRandom(in);
    RegisterPoints(in);
    RegisterBits(in);
}

} // namespace simhost::script
