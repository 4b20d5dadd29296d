// The classes of values, conversions between them, and questions about classes and properties.
#include <cmath>

#include "simhost/script/builtins.h"
#include "simhost/script/convert.h"
#include "simhost/script/interpreter.h"
#include "simhost/script/number.h"
#include "simhost/script/raise.h"
#include "simhost/script/text.h"

namespace simhost::script {

void RegisterBuiltins(Interpreter& interpreter) {
    RegisterValues(interpreter);
    RegisterMath(interpreter);
    RegisterStrings(interpreter);
    RegisterArrays(interpreter);
    RegisterFiles(interpreter);
    RegisterStreams(interpreter);
    RegisterSystem(interpreter);
}

namespace {

// Numbers out of strings and the other way round; a text that is no number gives undefined.
Value ToKind(Type kind, const Value& value, const wchar_t* name) {
    Value number = value;
    if (const auto* text = value.As<StringObject>()) {
        if (kind == Type::Float || kind == Type::Double) {
            const auto real = LeadingReal(text->Text());
            if (!real)
                return {};
            number = Value::Double(*real);
        } else {
            const auto whole = LeadingWhole(text->Text());
            if (!whole)
                return {};
            number = Value::Integer64(*whole);
        }
    } else if (value.Is(Type::Time)) {
        number = Value::Double(kind == Type::Float || kind == Type::Double
                                   ? value.AsReal() * 30 / ticksPerSecond
                                   : std::trunc(value.AsReal() * 30 / ticksPerSecond));
    } else if (!value.IsNumber()) {
        RaiseConversion(value, name);
    }
    switch (kind) {
    case Type::Integer:
        return Value::Integer(static_cast<int32_t>(static_cast<uint32_t>(ToWhole(number))));
    case Type::Integer64:
        return Value::Integer64(ToWhole(number));
    case Type::IntegerPtr:
        return Value::IntegerPtr(ToWhole(number));
    case Type::Float:
        return Value::Float(ToFloat(number));
    default:
        return Value::Double(ToReal(number));
    }
}

Value ToArrayValue(Interpreter& interpreter, const Value& value) {
    if (value.As<ArrayObject>())
        return value;
    if (!value.AsObject() || !value.AsObject()->IsCollection())
        RaiseConversion(value, L"Array");
    return MakeArray(interpreter.Items(value));
}

Value ToBitArray(Interpreter& interpreter, const Value& value) {
    if (value.As<BitArrayObject>())
        return value;
    if (!value.AsObject() || !value.AsObject()->IsCollection())
        RaiseConversion(value, L"BitArray");
    auto bits = std::make_shared<BitArrayObject>();
    for (const Value& item : interpreter.Items(value))
        bits->Set(ToPosition(item), true);
    return {bits};
}

// Points and colours turn into each other component by component.
Value ToVectorKind(const Value& value, VectorKind kind) {
    const VectorObject wanted(kind, {});
    const auto* vector = value.As<VectorObject>();
    if (!vector)
        RaiseConversion(value, wanted.ClassName());
    std::array<float, 4> components = vector->Components();
    if (kind == VectorKind::Color && vector->Kind() != VectorKind::Color)
        components[3] = vector->Kind() == VectorKind::Point4 ? components[3] : 255.0f;
    if (kind == VectorKind::Point3)
        components[3] = 0;
    return {std::make_shared<VectorObject>(kind, components)};
}

void RegisterNumberClasses(Interpreter& in) {
    struct Kind {
        Type type;
        const wchar_t* name;
    };
    constexpr Kind kinds[] = {{Type::Integer, L"Integer"},
                              {Type::Integer64, L"Integer64"},
                              {Type::IntegerPtr, L"IntegerPtr"},
                              {Type::Float, L"Float"},
                              {Type::Double, L"Double"}};
    in.DefineClass(L"Value");
    in.DefineClass(L"Number", L"Value");
    for (const Kind& kind : kinds) {
        in.DefineClass(kind.name, L"Number")->convert = [kind](Interpreter&, const Value& value) {
            return ToKind(kind.type, value, kind.name);
        };
    }
    in.DefineClass(L"Time", L"Value")->convert = [](Interpreter& i, const Value& value) {
        if (value.Is(Type::Time))
            return value;
        return Value::Time(ToReal(value) * ticksPerSecond / i.FrameRate());
    };
    in.DefineClass(L"BooleanClass", L"Value")->convert = [](Interpreter&, const Value& value) {
        if (value.IsWhole())
            return Value::Bool(value.AsWhole() != 0);
        return Value::Bool(ToBool(value));
    };
    in.DefineConstant(L"Boolean", {in.FindClass(L"BooleanClass")});
}

void RegisterTextClasses(Interpreter& in) {
    in.DefineClass(L"String", L"Value")->convert = [](Interpreter& i, const Value& value) {
        if (value.As<StringObject>())
            return value;
        std::wstring text = TextOf(value);
        i.Charge(text.size() / 64);
        return MakeString(std::move(text));
    };
    in.DefineClass(L"Name", L"Value")->convert = [](Interpreter&, const Value& value) {
        return value.As<NameObject>() ? value : MakeName(ToString(value));
    };
    in.DefineClass(L"Array", L"Value")->convert = ToArrayValue;
    in.DefineClass(L"BitArray", L"Value")->convert = ToBitArray;
}

Value MakeVectorOf(VectorKind kind, Arguments& args) {
    std::array<float, 4> components{};
    if (kind == VectorKind::Color)
        components[3] = 255;
    for (size_t i = 0; i < args.items.size(); ++i)
        components[i] = ToFloat(args.items[i]);
    return {std::make_shared<VectorObject>(kind, components)};
}

void RegisterVectorClasses(Interpreter& in) {
    struct Kind {
        VectorKind kind;
        size_t least;
        size_t most;
    };
    constexpr Kind kinds[] = {{VectorKind::Point2, 2, 2}, {VectorKind::Point3, 3, 3},
                              {VectorKind::Point4, 4, 4}, {VectorKind::Color, 3, 4},
                              {VectorKind::Quat, 4, 4},   {VectorKind::Euler, 3, 3}};
    for (const Kind& kind : kinds) {
        const std::wstring name = VectorObject(kind.kind, {}).ClassName();
        const auto entry = in.DefineClass(name, L"Value");
        entry->convert = [kind](Interpreter&, const Value& value) {
            return ToVectorKind(value, kind.kind);
        };
        entry->create = [kind, name](Interpreter&, Arguments& args) {
            if (args.items.size() < kind.least || args.items.size() > kind.most)
                RaiseArgumentCount(name, kind.least, args.items.size());
            return MakeVectorOf(kind.kind, args);
        };
    }
    in.DefineClass(L"Matrix3", L"Value")->create = [](Interpreter&, Arguments& args) {
        MatrixObject::Rows rows{};
        if (args.items.size() == 1) {
            const float diagonal = ToInt(args.items[0]) != 0 ? 1.0f : 0.0f;
            for (size_t i = 0; i < 3; ++i)
                rows[i][i] = diagonal;
            return Value(std::make_shared<MatrixObject>(rows));
        }
        if (args.items.size() != 4)
            RaiseArgumentCount(L"Matrix3", 4, args.items.size());
        for (size_t i = 0; i < 4; ++i) {
            const VectorObject& row = ToVector(args.items[i], VectorKind::Point3);
            rows[i] = {row.At(0), row.At(1), row.At(2)};
        }
        return Value(std::make_shared<MatrixObject>(rows));
    };
    in.DefineClass(L"Interval", L"Value")->create = [](Interpreter& i, Arguments& args) {
        if (args.items.size() != 2)
            RaiseArgumentCount(L"Interval", 2, args.items.size());
        const auto ticks = [&i](const Value& value) {
            return value.Is(Type::Time) ? value.AsReal()
                                        : ToReal(value) * ticksPerSecond / i.FrameRate();
        };
        return Value(std::make_shared<IntervalObject>(ticks(args.items[0]), ticks(args.items[1])));
    };
}

bool IsKindOf(Interpreter& in, const Value& value, const Value& wanted) {
    const auto* target = wanted.As<ClassObject>();
    if (!target) {
        const auto* instance = value.As<StructInstance>();
        return instance && wanted.AsObject().get() == &instance->Type();
    }
    std::shared_ptr<ClassObject> entry = in.ClassOf(value);
    for (int steps = 0; entry && steps < 20; ++steps) {
        if (entry.get() == target)
            return true;
        entry = entry->Super().empty() ? nullptr : in.FindClass(entry->Super());
    }
    return false;
}

Value ClassOf(Interpreter& in, Arguments& args) {
    if (const auto* instance = args.items[0].As<StructInstance>())
        return Value(std::const_pointer_cast<Object>(instance->Type().shared_from_this()));
    return {in.ClassOf(args.items[0])};
}

Value SuperClassOf(Interpreter& in, Arguments& args) {
    const auto entry = in.ClassOf(args.items[0]);
    return {in.DefineClass(entry->Super().empty() ? L"Value" : entry->Super())};
}

bool HasProperty(Interpreter& in, const Value& object, const std::wstring& name) {
    if (!object.AsObject())
        return false;
    Value ignored;
    try {
        return object.AsObject()->GetProperty(in, Lower(name), ignored);
    } catch (const ScriptError& error) {
        if (error.GetKind() == ScriptError::Kind::Limit)
            throw;
        return true; // there, but not readable now
    }
}

void RegisterProperties(Interpreter& in) {
    in.Define(L"isProperty", 2, 2, [](Interpreter& i, Arguments& args) {
        return Value::Bool(HasProperty(i, args.items[0], ToNameText(args.items[1])));
    });
    in.Define(L"hasProperty", 2, 2, [](Interpreter& i, Arguments& args) {
        return Value::Bool(HasProperty(i, args.items[0], ToNameText(args.items[1])));
    });
    in.Define(L"getProperty", 2, 2, [](Interpreter& i, Arguments& args) {
        if (!args.items[1].As<NameObject>())
            RaiseNoFunction(L"map", Value());
        return i.GetProperty(args.items[0], ToNameText(args.items[1]));
    });
    in.Define(L"setProperty", 3, 3, [](Interpreter& i, Arguments& args) {
        if (!args.items[1].As<NameObject>())
            RaiseNoFunction(L"map", Value());
        i.SetProperty(args.items[0], ToNameText(args.items[1]), args.items[2]);
        return args.items[2];
    });
    in.Define(L"getPropNames", 1, 2, [](Interpreter&, Arguments& args) {
        std::vector<std::wstring> names;
        if (!args.items[0].AsObject())
            RaiseNoFunction(L"getPropNames", args.items[0]);
        args.items[0].AsObject()->PropertyNames(names);
        std::vector<Value> values;
        for (std::wstring& name : names)
            values.push_back(MakeName(std::move(name)));
        return MakeArray(std::move(values));
    });
}

// Copies of the values that scripts make; everything else copies itself.
Value CopyValue(Interpreter& in, const std::wstring& how, Arguments& args) {
    const Value& value = args.items[0];
    if (const auto* text = value.As<StringObject>())
        return MakeString(text->Text());
    if (const auto* array = value.As<ArrayObject>()) {
        in.Charge(array->Items().size() / 8);
        if (args.items.size() > 1)
            return MakeArray(array->Items());
        std::vector<Value> copies;
        for (const Value& item : array->Items()) {
            Arguments each;
            each.items.push_back(item);
            copies.push_back(
                item.Is(Type::Object) && !item.As<ArrayObject>() ? CopyValue(in, how, each) : item);
        }
        return MakeArray(std::move(copies));
    }
    if (const auto* vector = value.As<VectorObject>())
        return {std::make_shared<VectorObject>(vector->Kind(), vector->Components())};
    if (const auto* matrix = value.As<MatrixObject>())
        return {std::make_shared<MatrixObject>(matrix->GetRows())};
    if (const auto* bits = value.As<BitArrayObject>()) {
        auto copy = std::make_shared<BitArrayObject>();
        for (size_t i = bits->Bits().size(); i-- > 0;) {
            if (bits->Bits()[i])
                copy->Set(i, true);
        }
        return {copy};
    }
    if (!value.AsObject() && !value.IsUndefined())
        return value;
    if (value.As<NameObject>())
        return value;
    Value result;
    if (!value.AsObject() || !value.AsObject()->Copy(in, how, args, result))
        RaiseNoFunction(how, value);
    return result;
}

} // namespace

void RegisterValues(Interpreter& in) {
    in.DefineConstant(L"true", Value::Bool(true));
    in.DefineConstant(L"false", Value::Bool(false));
    in.DefineConstant(L"unsupplied", Value::Unsupplied());
    in.DefineConstant(L"ok", Value::Ok());
    in.DefineConstant(L"silentValue", Value::Ok());
    in.DefineConstant(L"dontCollect", Value::DontCollect());
    for (const wchar_t* name : {L"true", L"false", L"unsupplied", L"ok"}) {
        const Value value = in.Globals().Find(name)->value;
        in.DefineVariable(name, [value](Interpreter&) { return value; });
    }
    in.DefineVariable(L"undefined", [](Interpreter&) { return Value(); });

    RegisterNumberClasses(in);
    RegisterTextClasses(in);
    RegisterVectorClasses(in);
    for (const wchar_t* name :
         {L"UndefinedClass", L"OkClass", L"MAXScriptFunction", L"MappedFunction", L"Primitive",
          L"MappedPrimitive", L"MAXClass", L"StructDef", L"StringStream", L"FileStream",
          L"Interface", L"ValueRef", L"MAXWrapper"})
        in.DefineClass(name, L"Value");

    in.Define(L"classOf", 1, 1, ClassOf);
    in.Define(L"superClassOf", 1, 1, SuperClassOf);
    in.Define(L"isKindOf", 2, 2, [](Interpreter& i, Arguments& args) {
        return Value::Bool(IsKindOf(i, args.items[0], args.items[1]));
    });
    for (const wchar_t* how : {L"copy", L"instance", L"reference"}) {
        in.Define(how, 1, 2, [name = std::wstring(how)](Interpreter& i, Arguments& args) {
            const Value& first = args.items[0];
            // Live sets of nodes are copied node by node.
            if (first.AsObject() && first.AsObject()->IsCollection() && !first.As<ArrayObject>() &&
                !first.As<BitArrayObject>()) {
                Arguments items;
                items.items.push_back(MakeArray(i.Items(first)));
                return CopyValue(i, name, items);
            }
            return CopyValue(i, name, args);
        });
    }
    RegisterProperties(in);
}

} // namespace simhost::script
