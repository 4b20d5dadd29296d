// Runs work of which a crash must not be ours.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace sceneconv {

/// Runs `work` in a child process and returns its result. When the child dies of a signal, which
/// damaged files make the import library do, `crashText` goes to standard error and the result
/// is 1. The child may take `memory` bytes (0: any number); beyond that it gets std::bad_alloc.
int GuardedRun(const std::function<int()>& work, const std::string& crashText,
               std::uint64_t memory = 0);

} // namespace sceneconv
