// Runs work of which a crash must not be ours.
#pragma once

#include <functional>
#include <string>

namespace sceneconv {

/// Runs `work` in a child process and returns its result. When the child dies of a signal, which
/// damaged files make the import library do, `crashText` goes to standard error and the result
/// is 1.
int GuardedRun(const std::function<int()>& work, const std::string& crashText);

} // namespace sceneconv
