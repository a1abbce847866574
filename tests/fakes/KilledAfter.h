#pragma once

#include <csignal>

#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

namespace sonnel::test {

/// Runs `work` in a process that is killed after so many stops, two for each of its system calls;
/// false when it came to its end before.
template <class Work>
bool KilledAfter(int stops, const Work& work) {
    const pid_t child = fork();
    if (child == 0) {
        if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) {
            _exit(1);  // nobody would see it stop
        }
        (void)raise(SIGSTOP);
        work();
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    for (; stops > 0 && WIFSTOPPED(status); --stops) {
        ptrace(PTRACE_SYSCALL, child, nullptr, nullptr);
        waitpid(child, &status, 0);
    }
    if (!WIFSTOPPED(status)) {
        return false;
    }
    kill(child, SIGKILL);
    waitpid(child, &status, 0);
    return true;
}

}  // namespace sonnel::test
