// Numbers, errors, the environment.
#include <windows.h>

#include <cmath>

#include "simhost/script/builtins.h"
#include "simhost/script/convert.h"
#include "simhost/script/interpreter.h"
#include "simhost/script/operators.h"
#include "simhost/script/raise.h"

namespace simhost::script {
namespace {

// throw text [value]; without arguments, the error whose catch runs goes on.
Value Throw(Interpreter& in, Arguments& args) {
    if (args.items.empty()) {
        if (in.caught.empty())
            RaiseRuntime(L"Runtime error: throw() outside of a catch");
        throw ScriptError(in.caught.back());
    }
    std::wstring message = L"Runtime error: " + TextOf(args.items[0]);
    if (args.items.size() > 1 && !args.items[1].Is(Type::Boolean))
        message += L": " + QuotedText(args.items[1]);
    RaiseRuntime(std::move(message));
}

Value CurrentException(Interpreter& in, Arguments&) {
    if (in.caught.empty())
        RaiseRuntime(L"Runtime error: getCurrentException() outside of a catch");
    return MakeString(L"-- " + in.caught.back().Message());
}

// Undefined when the process has no such variable.
Value ReadEnvironment(Interpreter&, Arguments& args) {
    const std::wstring& name = ToString(args.items[0]);
    const DWORD size = GetEnvironmentVariableW(name.c_str(), nullptr, 0);
    if (size == 0)
        return {};
    std::wstring value(size, L'\0');
    value.resize(GetEnvironmentVariableW(name.c_str(), value.data(), size));
    return MakeString(std::move(value));
}

Value Abs(Interpreter&, Arguments& args) {
    return ToFloat(args.items[0]) < 0 ? Negate(args.items[0]) : args.items[0];
}

// A Float, also of whole numbers.
Value Mod(Interpreter&, Arguments& args) {
    return Value::Float(std::fmod(ToFloat(args.items[0]), ToFloat(args.items[1])));
}

} // namespace

void RegisterSystem(Interpreter& in) {
    in.Define(L"abs", 1, 1, Abs);
    in.Define(L"mod", 2, 2, Mod);
    in.Define(L"throw", 0, 2, Throw);
    in.Define(L"getCurrentException", 0, 0, CurrentException);
    in.DefineInterface(L"systemTools").DefineFunction(L"getEnvVariable", 1, 1, ReadEnvironment);
}

} // namespace simhost::script
