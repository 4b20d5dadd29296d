// Conditions, loops, jumps and error handling.
#include <optional>

#include "simhost/script/convert.h"
#include "simhost/script/evaluator.h"
#include "simhost/script/raise.h"

namespace simhost::script {

bool Evaluator::Condition(const Expr& expr) {
    const Value value = Run(expr);
    interpreter_.position = expr.where;
    return ToBool(value);
}

Value Evaluator::If(const IfExpr& expr) {
    for (const auto& [condition, value] : expr.branches) {
        if (Condition(*condition))
            return Run(*value);
    }
    return expr.otherwise ? Run(*expr.otherwise) : Value();
}

Value Evaluator::Case(const CaseExpr& expr) {
    const Value subject = expr.subject ? Run(*expr.subject) : Value();
    for (const auto& [label, value] : expr.items) {
        const bool chosen = expr.subject ? EqualValues(subject, Run(*label)) : Condition(*label);
        if (chosen)
            return Run(*value);
    }
    return expr.otherwise ? Run(*expr.otherwise) : Value();
}

Value Evaluator::Jump(const JumpExpr& expr) {
    const Value value = expr.value ? Run(*expr.value) : Value();
    interpreter_.position = expr.where;
    if (!expr.direct)
        throw JumpSignal{expr.jump, value};
    interpreter_.jump = {true, expr.jump, value};
    return value;
}

namespace {

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

Value Evaluator::Try(const TryExpr& expr) {
    std::optional<ScriptError> error;
    try {
        return Run(*expr.body);
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
    const Catching catching(interpreter_.caught, std::move(*error));
    return Run(*expr.handler);
}

void Evaluator::Reset(const std::vector<uint32_t>& slots) {
    for (const uint32_t slot : slots)
        frame_.slots[slot] = Value();
}

// One pass through a loop's body. `skipped`: ended by a continue.
Evaluator::Step Evaluator::RunLoopBody(const Expr& body, Value& value, bool& skipped) {
    skipped = false;
    try {
        value = Run(body);
    } catch (JumpSignal& signal) {
        if (signal.kind == JumpKind::Return)
            throw;
        interpreter_.jump = {true, signal.kind, std::move(signal.value)};
    }
    Interpreter::Jump& jump = interpreter_.jump;
    if (!jump.pending)
        return Step::Next;
    value = jump.value;
    if (jump.kind == JumpKind::Return)
        return Step::Leave;
    jump.pending = false;
    jump.value = Value();
    skipped = jump.kind == JumpKind::Continue;
    return skipped ? Step::Next : Step::Leave;
}

Value Evaluator::While(const WhileExpr& expr) {
    Value value;
    bool skipped = false;
    if (!expr.bodyFirst) {
        while (Condition(*expr.condition)) {
            Reset(expr.slots);
            if (RunLoopBody(*expr.body, value, skipped) == Step::Leave)
                return value;
        }
        return value;
    }
    do {
        Reset(expr.slots);
        if (RunLoopBody(*expr.body, value, skipped) == Step::Leave)
            return value;
    } while (Condition(*expr.condition));
    return value;
}

struct Evaluator::LoopState {
    std::shared_ptr<ArrayObject> collected; // null for `do`
    int32_t seen = 0;
    int32_t kept = 0;
    bool left = false; // by exit or return
    Value value;       // of the exit or return
};

Evaluator::Step Evaluator::LoopBody(const ForExpr& loop, const Value& item, LoopState& state) {
    interpreter_.Charge(1);
    Reset(loop.slots);
    frame_.slots[loop.nameSlots[0]] = item;
    ++state.seen;
    if (loop.nameSlots.size() > 1)
        frame_.slots[loop.nameSlots[1]] = Value::Integer(state.seen);
    if (loop.nameSlots.size() > 2)
        frame_.slots[loop.nameSlots[2]] = Value::Integer(state.kept + 1);
    if (loop.whileTrue && !Condition(*loop.whileTrue))
        return Step::Leave;
    if (loop.where_ && !Condition(*loop.where_))
        return Step::Next;
    ++state.kept;
    Value value;
    bool skipped = false;
    if (RunLoopBody(*loop.body, value, skipped) == Step::Leave) {
        state.left = true;
        state.value = value;
        return Step::Leave;
    }
    if (state.collected && !skipped && !value.Is(Type::DontCollect))
        state.collected->Append(std::move(value));
    return Step::Next;
}

void Evaluator::Range(const ForExpr& loop, LoopState& state) {
    const Value first = Run(*loop.first);
    const Value last = Run(*loop.last);
    const Value step = loop.step ? Run(*loop.step) : Value::Integer(1);
    interpreter_.position = loop.where;
    if (first.IsWhole() && last.IsWhole() && step.IsWhole()) {
        const int64_t end = last.AsWhole();
        const int64_t by = step.AsWhole();
        for (int64_t i = first.AsWhole(); by < 0 ? i >= end : i <= end;) {
            const Value item = first.Is(Type::Integer)     ? Value::Integer(static_cast<int32_t>(i))
                               : first.Is(Type::Integer64) ? Value::Integer64(i)
                                                           : Value::IntegerPtr(i);
            if (LoopBody(loop, item, state) == Step::Leave || __builtin_add_overflow(i, by, &i))
                return;
        }
        return;
    }
    const bool time = first.Is(Type::Time) || last.Is(Type::Time);
    const double ticksPerFrame = static_cast<double>(ticksPerSecond) / interpreter_.FrameRate();
    const auto number = [&](const Value& value) {
        return time && !value.Is(Type::Time) ? ToReal(value) * ticksPerFrame : ToReal(value);
    };
    const bool isDouble = first.Is(Type::Double) || last.Is(Type::Double) || step.Is(Type::Double);
    const double end = number(last);
    const double by = number(step);
    for (double i = number(first); by < 0 ? i >= end : i <= end;) {
        const Value item = time       ? Value::Time(i)
                           : isDouble ? Value::Double(i)
                                      : Value::Float(static_cast<float>(i));
        if (LoopBody(loop, item, state) == Step::Leave)
            return;
        // Floats gather their rounding as they do in the host.
        i = isDouble || time ? i + by : static_cast<double>(static_cast<float>(i + by));
    }
}

Value Evaluator::For(const ForExpr& expr) {
    LoopState state;
    if (expr.collect)
        state.collected = std::make_shared<ArrayObject>();
    if (expr.last) {
        Range(expr, state);
    } else {
        const Value collection = Run(*expr.first);
        interpreter_.position = expr.where;
        interpreter_.ForEach(collection, [&](const Value& item) {
            return LoopBody(expr, item, state) == Step::Next;
        });
    }
    if (state.left && !state.value.IsUndefined())
        return state.value;
    if (state.collected)
        return {state.collected};
    return state.left ? state.value : Value::Ok();
}

} // namespace simhost::script
