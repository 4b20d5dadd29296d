#pragma once
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "simhost/script/callables.h"
#include "simhost/script/error.h"
#include "simhost/script/globals.h"
#include "simhost/script/limits.h"

namespace simhost::script {

struct InterpreterOptions {
    Limits limits;
    bool writesFiles = true; // createFile, deleteFile and their like; off for untrusted input
    bool readsFiles = true;
    std::function<void(std::wstring_view)> listener; // receives what print and format write
};

/// A script engine: global variables that outlive the runs, and what one run needs.
/// One engine runs at a time, on one thread.
class Interpreter {
  public:
    explicit Interpreter(InterpreterOptions options = {});
    ~Interpreter();
    Interpreter(const Interpreter&) = delete;
    Interpreter& operator=(const Interpreter&) = delete;

    /// Compiles and runs the expressions of a script one after the other; the value of the last.
    /// Throws ScriptError; what ran before the error stays done.
    Value Run(std::wstring text);
    /// Run for scripts that run scripts: fileIn, execute. Same limits, caller's run goes on.
    Value RunNested(std::wstring text);

    [[nodiscard]] GlobalTable& Globals() { return globals_; }
    [[nodiscard]] const InterpreterOptions& Options() const { return options_; }

    // Building the global names.
    void Define(std::wstring_view name, int least, int most, Native native);
    void DefineMapped(std::wstring_view name, int least, int most, Native native);
    void DefineConstant(std::wstring_view name, Value value);
    void DefineVariable(std::wstring_view name, std::function<Value(Interpreter&)> read,
                        std::function<void(Interpreter&, const Value&)> write = {});
    InterfaceObject& DefineInterface(std::wstring_view name);
    /// The class of that name; made, and made a global, when there is none. The class that comes
    /// first keeps its superclass.
    std::shared_ptr<ClassObject> DefineClass(std::wstring_view name, std::wstring_view super = {});
    [[nodiscard]] std::shared_ptr<ClassObject> FindClass(std::wstring_view name) const;
    /// `classOf`.
    [[nodiscard]] std::shared_ptr<ClassObject> ClassOf(const Value& value);

    // Working with values. All throw ScriptError (Runtime) in the host's words.
    Value Call(const Value& callee, Arguments& arguments);
    Value CallFunction(FunctionObject& function, Arguments& arguments);
    Value Construct(const std::shared_ptr<StructType>& type, Arguments& arguments);
    Value GetProperty(const Value& object, const std::wstring& name);
    void SetProperty(const Value& object, const std::wstring& name, const Value& value);
    Value GetIndex(const Value& object, const Value& index);
    void SetIndex(const Value& object, const Value& index, const Value& value);
    Value Convert(const Value& value, const Value& toClass);
    Value ResolvePath(const std::wstring& pattern);
    Value ReadGlobal(const Global& global);
    void WriteGlobal(Global& global, const Value& value);
    /// Runs `each` for every item until it answers false. Throws when nothing can be iterated.
    void ForEach(const Value& collection, const std::function<bool(const Value&)>& each);
    [[nodiscard]] std::vector<Value> Items(const Value& collection);

    void Print(std::wstring_view text);
    /// Counts work; throws ScriptError (Limit) beyond the limit.
    void Charge(uint64_t steps) {
        steps_ += steps;
        if (steps_ > options_.limits.steps)
            OutOfSteps();
    }
    void CheckStack() const;

    /// Message of the error whose catch runs, with the leading "-- "; empty outside of a catch.
    [[nodiscard]] std::wstring CurrentException() const;

    [[nodiscard]] int FrameRate() const { return frameRate_; } // frames a second
    /// Who finds the nodes that `$name` means; without one, none is found.
    std::function<Value(Interpreter&, const std::wstring& pattern)> paths;

    /// A jump on its way to its loop or function; see JumpExpr::direct.
    struct Jump {
        bool pending = false;
        JumpKind kind = JumpKind::Return;
        Value value;
    };
    Jump jump;
    Position position;               // of the operation that runs; where an error belongs
    std::vector<ScriptError> caught; // of the catches that run, innermost last

  private:
    [[noreturn]] static void OutOfSteps();
    Value RunExpressions(std::wstring text);
    void CollectGarbage(const Value& result);

    InterpreterOptions options_;
    GlobalTable globals_;
    std::unordered_map<std::wstring, std::shared_ptr<ClassObject>> classes_; // by lower-case name
    uint64_t steps_ = 0;
    int callDepth_ = 0;
    int runDepth_ = 0;
    int frameRate_ = 30;
    const StackGuard* stack_ = nullptr;
};

} // namespace simhost::script
