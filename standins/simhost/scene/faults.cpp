#include "simhost/scene/faults.h"

#include <iterator>
#include <stdexcept>
#include <string>

namespace simhost {

namespace {

struct CallRow {
    std::string_view name;
    bool canAnswerNothing;
};

// In the order of Call.
#define SIMHOST_THROWS(name) {#name, false},
#define SIMHOST_GIVES(name) {#name, true},
constexpr CallRow calls[] = {SIMHOST_CALLS(SIMHOST_THROWS, SIMHOST_GIVES)};
#undef SIMHOST_GIVES
#undef SIMHOST_THROWS

} // namespace

std::optional<Call> CallOfName(std::string_view name) {
    for (size_t i = 0; i < std::size(calls); ++i)
        if (calls[i].name == name)
            return static_cast<Call>(i);
    return std::nullopt;
}

std::string_view NameOfCall(Call call) {
    return calls[static_cast<size_t>(call)].name;
}

bool CanAnswerNothing(Call call) {
    return calls[static_cast<size_t>(call)].canAnswerNothing;
}

void Faults::AddAll() {
    thrown_ = ~Bit(Call::GetChildNode);
}

void Faults::Throw(Call call) const {
    if (otherKind_)
        throw static_cast<int>(call);
    throw std::runtime_error("simulated fault in " + std::string(NameOfCall(call)));
}

} // namespace simhost
