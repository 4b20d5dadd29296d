#pragma once
#include <utility>

namespace brimwave {

/// Makes a call into the host that may throw: third-party classes do, and one that does must not
/// stop the work on the others. True when it did not throw.
template <class Call>
bool Attempt(Call&& call) noexcept {
    try {
        std::forward<Call>(call)();
        return true;
    } catch (...) {
        return false;
    }
}

/// What the call gives, or `fallback` when it throws.
template <class Value, class Call>
[[nodiscard]] Value AttemptOr(Value fallback, Call&& call) noexcept {
    Attempt([&] { fallback = std::forward<Call>(call)(); });
    return fallback;
}

} // namespace brimwave
