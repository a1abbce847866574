#pragma once

#include <cerrno>
#include <csignal>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <set>
#include <string>

#include <fcntl.h>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/user.h>
#include <sys/wait.h>
#include <unistd.h>

namespace sonnel::test {

/// A process that does `work` (a bool, which becomes its exit status: true is 0) and stops before
/// and after each of its system calls. Killed when it goes out of scope.
class TracedProcess {
  public:
    template <class Work>
    explicit TracedProcess(const Work& work) : child_(fork()) {
        if (child_ == 0) {
            if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) {
                _exit(2);  // nobody would see it stop
            }
            (void)raise(SIGSTOP);
            _exit(work() ? 0 : 1);
        }
        waitpid(child_, &status_, 0);
    }
    TracedProcess(const TracedProcess&) = delete;
    TracedProcess& operator=(const TracedProcess&) = delete;
    ~TracedProcess() {
        if (WIFSTOPPED(status_)) {
            kill(child_, SIGKILL);
            waitpid(child_, &status_, 0);
        }
    }
    /// Runs on to the next stop, or over so many; false when it has come to its end.
    bool Step(int stops = 1) {
        for (; stops > 0 && WIFSTOPPED(status_); --stops) {
            ptrace(PTRACE_SYSCALL, child_, nullptr, nullptr);
            waitpid(child_, &status_, 0);
        }
        return WIFSTOPPED(status_);
    }
    /// The exit status; -1 before the end and after a crash.
    [[nodiscard]] int ExitStatus() const { return WIFEXITED(status_) ? WEXITSTATUS(status_) : -1; }
#ifdef __x86_64__
    /// Before a system call: whether a full disk can make it fail.
    [[nodiscard]] bool TakesRoom() const {
        const std::set<long> makers{SYS_rename, SYS_link, SYS_mkdir};
        const std::set<long> writers{SYS_write, SYS_writev, SYS_fsync, SYS_ftruncate, SYS_sendfile};
        const auto value = [this](std::size_t at) {
            return ptrace(PTRACE_PEEKUSER, child_, at, nullptr);
        };
        const long call = value(offsetof(user, regs.orig_rax));
        if (call == SYS_openat) {
            return (value(offsetof(user, regs.rdx)) & O_CREAT) != 0;
        }
        // Not into a pipe, for one: the sanitizers try addresses with those.
        return makers.contains(call) ||
               (writers.contains(call) &&
                std::filesystem::is_regular_file("/proc/" + std::to_string(child_) + "/fd/" +
                                                 std::to_string(value(offsetof(user, regs.rdi)))));
    }
    /// Before a system call: makes it fail for want of room; runs on to the stop after it.
    void FailForRoom() {
        ptrace(PTRACE_POKEUSER, child_, offsetof(user, regs.orig_rax), -1L);  // no call at all
        (void)Step();
        ptrace(PTRACE_POKEUSER, child_, offsetof(user, regs.rax), long{-ENOSPC});
    }
#endif

  private:
    pid_t child_;
    int status_ = 0;
};

/// Does `work` on a disk that is full from its call number `call` on of those that take room; its
/// exit status, or nothing when it makes fewer such calls or the processor is another.
template <class Work>
std::optional<int> OnFullDisk([[maybe_unused]] int call, const Work& work) {
    TracedProcess process(work);
    bool full = false;
#ifdef __x86_64__
    while (process.Step()) {
        if (process.TakesRoom() && call-- <= 0) {
            full = true;
            process.FailForRoom();
        } else {
            (void)process.Step();
        }
    }
#endif
    return full ? std::optional(process.ExitStatus()) : std::nullopt;
}

}  // namespace sonnel::test
