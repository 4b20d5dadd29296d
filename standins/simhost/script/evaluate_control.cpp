// Conditions, loops, jumps and error handling.
#include "simhost/script/convert.h"
#include "simhost/script/interpreter.h"
#include "simhost/script/raise.h"

namespace simhost::script {
namespace {

enum class Pass { Done, Skipped, Left };

// One pass through a loop's body. `value`: that of the body or of the exit that left the loop.
Pass RunBody(const Expr& body, Frame& frame, Value& value) {
    try {
        value = body.Run(frame);
        return Pass::Done;
    } catch (JumpSignal& signal) {
        if (signal.kind == JumpKind::Return)
            throw;
        value = std::move(signal.value);
        return signal.kind == JumpKind::Continue ? Pass::Skipped : Pass::Left;
    }
}

class ForLoop {
  public:
    ForLoop(const ForExpr& loop, Frame& frame) : loop_(loop), frame_(frame) {}

    Value Run() {
        if (loop_.last) {
            RunRange();
        } else {
            const Value collection = loop_.first->Run(frame_);
            frame_.interpreter.position = loop_.where;
            frame_.interpreter.ForEach(collection,
                                       [this](const Value& item) { return RunPass(item); });
        }
        return loop_.collect ? MakeArray(std::move(collected_)) : result_;
    }

  private:
    // False: the loop ends here.
    bool RunPass(const Value& item) {
        frame_.interpreter.Charge(1);
        frame_.Reset(loop_.slots);
        const Value numbers[] = {item, Value::Integer(++seen_), Value::Integer(kept_ + 1)};
        for (size_t i = 0; i < loop_.names.size(); ++i)
            frame_.slots[loop_.names[i]] = numbers[i];
        if (loop_.whileTrue && !loop_.whileTrue->RunCondition(frame_))
            return false;
        if (loop_.whereTrue && !loop_.whereTrue->RunCondition(frame_))
            return true;
        ++kept_;
        Value value;
        const Pass pass = RunBody(*loop_.body, frame_, value);
        if (pass == Pass::Left)
            result_ = value;
        else if (loop_.collect && pass == Pass::Done && !value.Is(Type::DontCollect))
            Collect(std::move(value));
        return pass != Pass::Left;
    }

    void Collect(Value value) {
        if (collected_.size() == longestArray)
            throw ScriptError(ScriptError::Kind::Limit, L"Array too long");
        collected_.push_back(std::move(value));
        share_.Set(collected_.capacity() * sizeof(Value));
    }

    void RunRange() {
        const Value first = loop_.first->Run(frame_);
        const Value last = loop_.last->Run(frame_);
        const Value step = loop_.step ? loop_.step->Run(frame_) : Value::Integer(1);
        frame_.interpreter.position = loop_.where;
        if (!first.IsWhole() || !last.IsWhole() || !step.IsWhole()) {
            RunRealRange(ToFloat(first), ToFloat(last), ToFloat(step));
            return;
        }
        const int64_t by = step.AsWhole();
        int64_t i = first.AsWhole();
        while ((by < 0 ? i >= last.AsWhole() : i <= last.AsWhole()) &&
               RunPass(Value::Whole(first.GetType(), i)) && !__builtin_add_overflow(i, by, &i)) {
        }
    }

    // The sums gather their rounding as they do in the host.
    void RunRealRange(float i, float last, float by) {
        while ((by < 0 ? i >= last : i <= last) && RunPass(Value::Float(i)))
            i += by;
    }

    const ForExpr& loop_;
    Frame& frame_;
    std::vector<Value> collected_;
    MemoryShare share_;
    int32_t seen_ = 0;
    int32_t kept_ = 0;
    Value result_ = Value::Ok();
};

// Keeps the error that a catch handles known for as long as it runs.
class Catching {
  public:
    Catching(std::vector<ScriptError>& caught, ScriptError error) : caught_(caught) {
        caught_.push_back(std::move(error));
    }
    ~Catching() { caught_.pop_back(); }
    Catching(const Catching&) = delete;
    Catching& operator=(const Catching&) = delete;

  private:
    std::vector<ScriptError>& caught_;
};

} // namespace

Value IfExpr::Evaluate(Frame& frame) const {
    for (const auto& [condition, value] : branches) {
        if (condition->RunCondition(frame))
            return value->Run(frame);
    }
    return otherwise ? otherwise->Run(frame) : Value();
}

Value CaseExpr::Evaluate(Frame& frame) const {
    const Value wanted = subject ? subject->Run(frame) : Value();
    for (const auto& [label, value] : items) {
        if (subject ? EqualValues(wanted, label->Run(frame)) : label->RunCondition(frame))
            return value->Run(frame);
    }
    return otherwise ? otherwise->Run(frame) : Value();
}

Value ForExpr::Evaluate(Frame& frame) const {
    return ForLoop(*this, frame).Run();
}

Value WhileExpr::Evaluate(Frame& frame) const {
    Value value;
    if (!bodyFirst && !condition->RunCondition(frame))
        return value;
    do {
        frame.Reset(slots);
        if (RunBody(*body, frame, value) == Pass::Left)
            break;
    } while (condition->RunCondition(frame));
    return value;
}

Value JumpExpr::Evaluate(Frame& frame) const {
    const Value passed = value ? value->Run(frame) : Value();
    frame.interpreter.position = where;
    throw JumpSignal{kind, passed};
}

Value TryExpr::Evaluate(Frame& frame) const {
    std::optional<ScriptError> error;
    try {
        return body->Run(frame);
    } catch (const ScriptError& raised) {
        if (raised.GetKind() == ScriptError::Kind::Limit)
            throw;
        error = raised;
    } catch (const JumpSignal&) {
        throw;
    } catch (const std::bad_alloc&) {
        throw;
    } catch (...) { // scene things may throw anything
        error = ScriptError(ScriptError::Kind::Runtime, L"Runtime error: System exception");
    }
    const Catching catching(frame.interpreter.caught, std::move(*error));
    return handler->Run(frame);
}

Value UndoExpr::Evaluate(Frame& frame) const {
    static_cast<void>(state->RunCondition(frame));
    return body->Run(frame);
}

} // namespace simhost::script
