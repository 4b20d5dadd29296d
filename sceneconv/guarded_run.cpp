#include "sceneconv/guarded_run.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace sceneconv {

int GuardedRun(const std::function<int()>& work, const std::string& crashText) {
    const pid_t child = fork();
    if (child < 0) {
        return work();
    }
    if (child == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL); // an interrupted command leaves nothing behind
        std::exit(work());
    }
    int status = 0;
    while (waitpid(child, &status, 0) < 0) {
        if (errno != EINTR) {
            return 1;
        }
    }
    if (WIFEXITED(status)) {
        return WEXITSTATUS(status);
    }
    std::fputs(crashText.c_str(), stderr);
    return 1;
}

} // namespace sceneconv
