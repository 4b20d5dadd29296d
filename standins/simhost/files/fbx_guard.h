#pragma once
#include <new>
#include <utility>

namespace simhost {

/// Calls into scene things may throw anything (third-party classes do); one that does counts as
/// not answered and the export goes on.
template <class T, class Call>
[[nodiscard]] T FbxAsk(T unanswered, Call&& call) {
    try {
        return std::forward<Call>(call)();
    } catch (const std::bad_alloc&) {
        throw;
    } catch (...) {
        return unanswered;
    }
}

} // namespace simhost
