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

} // namespace brimwave
