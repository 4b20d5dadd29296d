// Errors, environment, version, time.
#include <chrono>
#include <cstdlib>

#include "simhost/script/builtins.h"
#include "simhost/script/convert.h"
#include "simhost/script/environment.h"
#include "simhost/script/interpreter.h"
#include "simhost/script/raise.h"

namespace simhost::script {
namespace {

// The release that this host plays; its year is 2024.
constexpr int release = 26000;
constexpr int apiNumber = 64;

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

Value MaxVersion(Interpreter&, Arguments&) {
    const int year = release / 1000 - 2 + 2000;
    return MakeArray({Value::Integer(release), Value::Integer(apiNumber), Value::Integer(0),
                      Value::Integer(release / 1000), Value::Integer(0), Value::Integer(0),
                      Value::Integer(0), Value::Integer(year), MakeString(L".0 Release")});
}

} // namespace

void RegisterSystem(Interpreter& in) {
    in.Define(L"throw", 0, 2, Throw);
    in.Define(L"getCurrentException", 0, 0, [](Interpreter& i, Arguments&) {
        if (i.caught.empty())
            RaiseRuntime(L"Runtime error: getCurrentException() outside of a catch");
        return MakeString(i.CurrentException());
    });
    in.Define(L"maxVersion", 0, 0, MaxVersion);
    in.Define(L"timeStamp", 0, 0, [](Interpreter&, Arguments&) {
        const auto now = std::chrono::system_clock::now().time_since_epoch();
        const auto ms = std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
        return Value::Integer(static_cast<int32_t>(ms % 86'400'000));
    });
    in.Define(L"gc", 0, 0, [](Interpreter&, Arguments&) { return Value::Ok(); });
    in.DefineVariable(L"currentTime", [](Interpreter&) { return Value::Time(0); });
    in.DefineVariable(L"sliderTime", [](Interpreter&) { return Value::Time(0); });
    in.DefineVariable(L"frameRate", [](Interpreter& i) { return Value::Integer(i.FrameRate()); });
    in.DefineVariable(L"ticksPerFrame", [](Interpreter& i) {
        return Value::Integer(ticksPerSecond / i.FrameRate());
    });
    InterfaceObject& system = in.DefineInterface(L"systemTools");
    system.Function(L"getEnvVariable", 1, 1, [](Interpreter&, Arguments& args) {
        const auto value = ReadEnvironment(ToString(args.items[0]));
        return value ? MakeString(*value) : Value();
    });
    system.Function(L"setEnvVariable", 2, 2, [](Interpreter& i, Arguments& args) {
        if (!i.Options().writesFiles)
            RaiseRuntime(L"Runtime error: the environment cannot be changed here");
        return Value::Bool(WriteEnvironment(ToString(args.items[0]), ToString(args.items[1])));
    });
}

} // namespace simhost::script
