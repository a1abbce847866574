#include "e2e/Process.h"

#include "fakes/TempDirectory.h"

#include <cerrno>
#include <csignal>
#include <stdexcept>
#include <system_error>
#include <thread>
#include <utility>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace sonnel::test {
namespace {

constexpr std::chrono::seconds kPatience(5);
constexpr int kSignalled = 128;

}  // namespace

Process::Process(const std::vector<std::string>& command, std::filesystem::path log)
    : log_(std::move(log)) {
    std::vector<std::string> words = command;
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (std::string& word : words) {
        arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, log_.c_str(),
                                     O_WRONLY | O_CREAT | O_TRUNC, 0600);
    posix_spawn_file_actions_adddup2(&actions, STDOUT_FILENO, STDERR_FILENO);
    const int error =
        posix_spawnp(&pid_, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0) {
        throw std::system_error(error, std::generic_category(), command[0]);
    }
}

Process::~Process() {
    for (const int signal : {SIGTERM, SIGKILL}) {
        if (Running()) {
            kill(pid_, signal);
            WaitForEnd(kPatience);
        }
    }
}

std::optional<int> Process::WaitForEnd(std::chrono::milliseconds limit) {
    WaitUntil(
        [this] {
            int status = 0;
            if (!status_ && waitpid(pid_, &status, WNOHANG) == pid_) {
                status_ = WIFEXITED(status) ? WEXITSTATUS(status) : kSignalled + WTERMSIG(status);
            }
            return status_.has_value();
        },
        limit);
    return status_;
}

std::string Process::Output() const {
    return Content(log_);
}

void Sleep(std::chrono::milliseconds time) {
    std::this_thread::sleep_for(time);
}

}  // namespace sonnel::test
