#include "sceneconv/guarded_run.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <iostream>

#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace sceneconv {

namespace {

#ifdef BRIMWAVE_SANITIZED
constexpr bool canLimitMemory = false; // the sanitizer maps terabytes
#else
constexpr bool canLimitMemory = true;
#endif

[[noreturn]] void RunInChild(const std::function<int()>& work, std::uint64_t memory) {
    prctl(PR_SET_PDEATHSIG, SIGKILL); // an interrupted command leaves nothing behind
    if (canLimitMemory && memory > 0) {
        const rlimit limit{memory, memory};
        setrlimit(RLIMIT_AS, &limit);
    }
    const int result = work();
    std::cout.flush();
    std::cerr.flush();
    std::fflush(nullptr);
    _exit(result); // what the library leaked or broke is of no interest any more
}

} // namespace

int GuardedRun(const std::function<int()>& work, const std::string& crashText,
               std::uint64_t memory) {
    const pid_t child = fork();
    if (child < 0)
        return work();
    if (child == 0)
        RunInChild(work, memory);
    int status = 0;
    while (waitpid(child, &status, 0) < 0) {
        if (errno != EINTR)
            return 1;
    }
    if (WIFEXITED(status))
        return WEXITSTATUS(status);
    std::fputs(crashText.c_str(), stderr);
    return 1;
}

} // namespace sceneconv
