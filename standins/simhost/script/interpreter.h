#pragma once
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "simhost/script/callables.h"
#include "simhost/script/limits.h"

namespace simhost::script {

struct InterpreterOptions {
    Limits limits;
    bool usesFiles = true;                           // off for untrusted input
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
    /// Run for scripts that run scripts. Same limits, caller's run goes on.
    Value RunNested(std::wstring text);
    /// Reads a whole script without running it. The first error, if any.
    [[nodiscard]] std::optional<ScriptError> Check(std::wstring text);

    [[nodiscard]] GlobalTable& Globals() { return globals_; }
    [[nodiscard]] const InterpreterOptions& Options() const { return options_; }

    // Building the global names.
    void Define(std::wstring_view name, size_t least, size_t most, Native native);
    void DefineMapped(std::wstring_view name, size_t least, size_t most, Native native);
    void DefineVariable(std::wstring_view name, std::function<Value()> read);
    InterfaceObject& DefineInterface(std::wstring_view name);
    /// The class of that name; made, and made a global, when there is none. The class that comes
    /// first keeps its superclass.
    ClassObject& DefineClass(std::wstring_view name, std::wstring_view super = {});
    /// Null when there is none.
    [[nodiscard]] std::shared_ptr<ClassObject> FindClass(std::wstring_view name) const;
    /// `classOf`.
    [[nodiscard]] std::shared_ptr<ClassObject> ClassOf(const Value& value);

    // Working with values. All throw ScriptError (Runtime) in the host's words.
    Value Call(const Value& callee, Arguments& arguments);
    Value ReadProperty(const Value& object, const std::wstring& name);
    void SetProperty(const Value& object, const std::wstring& name, const Value& value);
    Value ReadElement(const Value& object, const Value& index);
    void SetElement(const Value& object, const Value& index, const Value& value);
    Value Convert(const Value& value, const Value& toClass);
    void SetGlobal(Global& global, const Value& value);
    /// Runs `each` for every item until it answers false. Throws when nothing can be iterated.
    void ForEach(const Value& collection, const std::function<bool(const Value&)>& each);
    [[nodiscard]] std::vector<Value> CollectItems(const Value& collection);

    void Print(std::wstring_view text);
    /// Counts work; throws ScriptError (Limit) beyond the limit.
    void Charge(uint64_t steps);
    void CheckStack() const;

    /// Who finds the nodes that `$name` means; without one, none is found.
    std::function<Value(const std::wstring& pattern)> paths;
    Position position;               // of the operation that runs; where an error belongs
    std::vector<ScriptError> caught; // of the catches that run, innermost last

    /// A call of a script's function; throws when there are too many inside each other.
    class CallLevel {
      public:
        explicit CallLevel(Interpreter& interpreter);
        ~CallLevel() { --interpreter_.callDepth_; }
        CallLevel(const CallLevel&) = delete;
        CallLevel& operator=(const CallLevel&) = delete;

      private:
        Interpreter& interpreter_;
    };

  private:
    Value RunExpressions(std::wstring text);

    InterpreterOptions options_;
    GlobalTable globals_;
    std::unordered_map<std::wstring, std::shared_ptr<ClassObject>> classes_; // by lower-case name
    uint64_t steps_ = 0;
    int callDepth_ = 0;
    const StackGuard* stack_ = nullptr;
};

} // namespace simhost::script
