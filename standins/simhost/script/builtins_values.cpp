// The classes of values, conversions between them, and questions about classes and properties.
#include "simhost/script/builtins.h"
#include "simhost/script/convert.h"
#include "simhost/script/interpreter.h"
#include "simhost/script/number.h"
#include "simhost/script/operators.h"
#include "simhost/script/raise.h"
#include "simhost/script/text.h"

namespace simhost::script {

void RegisterBuiltins(Interpreter& interpreter) {
    RegisterValues(interpreter);
    RegisterStrings(interpreter);
    RegisterArrays(interpreter);
    RegisterSystem(interpreter);
    RegisterFiles(interpreter);
}

namespace {

// The number at the head of a text; undefined when there is none.
Value NumberIn(std::wstring_view text) {
    while (!text.empty() && IsBlank(text.front()))
        text.remove_prefix(1);
    const bool minus = text.starts_with(L'-');
    if (minus || text.starts_with(L'+'))
        text.remove_prefix(1);
    const auto number = FindNumber(text);
    if (!number)
        return {};
    return minus ? Negate(number->value) : number->value;
}

Value ToNumber(const Value& value, Type type, const wchar_t* name) {
    const auto* text = value.As<StringObject>();
    const Value number = text ? NumberIn(text->Text()) : value;
    if (text && number.IsUndefined())
        return number;
    if (!number.IsNumber())
        RaiseConversion(value, name);
    return type == Type::Float ? Value::Float(ToFloat(number))
                               : Value::Whole(type, ToWhole(number));
}

void RegisterNumberClasses(Interpreter& in) {
    struct Kind {
        Type type;
        const wchar_t* name;
    };
    constexpr Kind kinds[] = {{Type::Integer, L"Integer"},
                              {Type::Integer64, L"Integer64"},
                              {Type::IntegerPtr, L"IntegerPtr"},
                              {Type::Float, L"Float"}};
    in.DefineClass(L"Value");
    in.DefineClass(L"Number", L"Value");
    for (const Kind& kind : kinds) {
        in.DefineClass(kind.name, L"Number").convert = [kind](Interpreter&, const Value& value) {
            return ToNumber(value, kind.type, kind.name);
        };
    }
}

void RegisterTextClasses(Interpreter& in) {
    in.DefineClass(L"String", L"Value").convert = [](Interpreter& i, const Value& value) {
        std::wstring text = TextOf(value);
        i.Charge(text.size() / 64);
        return MakeString(std::move(text));
    };
    in.DefineClass(L"Name", L"Value").convert = [](Interpreter&, const Value& value) {
        return value.As<NameObject>() ? value : MakeName(ToString(value));
    };
    in.DefineClass(L"Array", L"Value").convert = [](Interpreter& i, const Value& value) {
        if (!IsCollection(value))
            RaiseConversion(value, L"Array");
        return value.As<ArrayObject>() ? value : MakeArray(i.CollectItems(value));
    };
}

void RegisterVectorClasses(Interpreter& in) {
    for (const VectorKind kind :
         {VectorKind::Point2, VectorKind::Point3, VectorKind::Point4, VectorKind::Color}) {
        const VectorObject zero(kind, {});
        const size_t most = zero.Size();
        const size_t least = kind == VectorKind::Color ? 3 : most;
        const std::wstring name = zero.ClassName();
        in.DefineClass(name, L"Value").create = [=](Interpreter&, Arguments& args) {
            if (args.items.size() < least || args.items.size() > most)
                RaiseArgumentCount(name, least, args.items.size());
            std::array<float, 4> components{0, 0, 0, kind == VectorKind::Color ? 255.0f : 0.0f};
            for (size_t i = 0; i < args.items.size(); ++i)
                components[i] = ToFloat(args.items[i]);
            return Value(std::make_shared<VectorObject>(kind, components));
        };
    }
}

Value ClassOf(Interpreter& in, Arguments& args) {
    return {in.ClassOf(args.items[0])};
}

Value SuperClassOf(Interpreter& in, Arguments& args) {
    const std::wstring& super = in.ClassOf(args.items[0])->Super();
    return {in.FindClass(super.empty() ? L"Value" : super)};
}

Value IsKindOf(Interpreter& in, Arguments& args) {
    const auto* target = args.items[1].As<ClassObject>();
    auto at = in.ClassOf(args.items[0]);
    while (at && at.get() != target)
        at = at->Super().empty() ? nullptr : in.FindClass(at->Super());
    return Value::Bool(at != nullptr);
}

Value HasProperty(Interpreter&, Arguments& args) {
    const Value& object = args.items[0];
    const std::wstring name = Lower(ToNameText(args.items[1]));
    try {
        return Value::Bool(object.AsObject() && object.AsObject()->FindProperty(name));
    } catch (const ScriptError& error) {
        if (error.GetKind() == ScriptError::Kind::Limit)
            throw;
        return Value::Bool(true); // there, but not readable now
    }
}

// getProperty and setProperty take a name, no string.
const std::wstring& PropertyName(const Value& value) {
    const auto* name = value.As<NameObject>();
    if (!name)
        RaiseNoFunction(L"map", Value());
    return name->Text();
}

Value GetPropNames(Interpreter&, Arguments& args) {
    if (!args.items[0].AsObject())
        RaiseNoFunction(L"getPropNames", args.items[0]);
    std::vector<std::wstring> names;
    args.items[0].AsObject()->CollectPropertyNames(names);
    std::vector<Value> values;
    for (std::wstring& name : names)
        values.push_back(MakeName(std::move(name)));
    return MakeArray(std::move(values));
}

Value CopyValue(Interpreter&, Arguments& args) {
    const Value& value = args.items[0];
    if (!value.IsUndefined() && (!value.AsObject() || value.As<NameObject>()))
        return value;
    auto copied = value.AsObject() ? value.AsObject()->Copy() : std::nullopt;
    if (!copied)
        RaiseNoFunction(L"copy", value);
    return std::move(*copied);
}

} // namespace

void RegisterValues(Interpreter& in) {
    const std::pair<const wchar_t*, Value> constants[] = {
        {L"true", Value::Bool(true)}, {L"false", Value::Bool(false)},
        {L"undefined", Value()},      {L"unsupplied", Value::Unsupplied()},
        {L"ok", Value::Ok()},         {L"dontCollect", Value::DontCollect()},
    };
    for (const auto& [name, value] : constants)
        in.DefineVariable(name, [value = value] { return value; });
    RegisterNumberClasses(in);
    RegisterTextClasses(in);
    RegisterVectorClasses(in);
    for (const wchar_t* name : {L"UndefinedClass", L"OkClass", L"BooleanClass", L"MAXWrapper"})
        in.DefineClass(name, L"Value");

    in.Define(L"classOf", 1, 1, ClassOf);
    in.Define(L"superClassOf", 1, 1, SuperClassOf);
    in.Define(L"isKindOf", 2, 2, IsKindOf);
    in.Define(L"isProperty", 2, 2, HasProperty);
    in.Define(L"hasProperty", 2, 2, HasProperty);
    in.Define(L"getProperty", 2, 2, [](Interpreter& i, Arguments& args) {
        return i.ReadProperty(args.items[0], PropertyName(args.items[1]));
    });
    in.Define(L"setProperty", 3, 3, [](Interpreter& i, Arguments& args) {
        i.SetProperty(args.items[0], PropertyName(args.items[1]), args.items[2]);
        return args.items[2];
    });
    in.Define(L"getPropNames", 1, 1, GetPropNames);
    in.Define(L"copy", 1, 2, CopyValue);
}

} // namespace simhost::script
