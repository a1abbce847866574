#pragma once

#include "fakes/TempDirectory.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <iterator>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace sonnel::test {

/// Asks a question every 10 ms until the answer is yes; false when it still is not after `limit`.
template <typename Question>
bool WaitUntil(Question question, std::chrono::milliseconds limit) {
    const auto end = std::chrono::steady_clock::now() + limit;
    while (!question()) {
        if (std::chrono::steady_clock::now() >= end) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return true;
}

/// A program that runs beside the test. It is ended with the object.
class Process {
  public:
    /// Starts a command, its program looked for as the shell does; what it prints goes into `log`.
    Process(const std::vector<std::string>& command, std::filesystem::path log)
        : log_(std::move(log)) {
        std::vector<std::string> words = {"sh", "-c", R"(exec "$@" >"$0" 2>&1 </dev/null)",
                                          log_.string()};
        words.insert(words.end(), command.begin(), command.end());
        std::vector<char*> arguments;
        std::transform(words.begin(), words.end(), std::back_inserter(arguments),
                       [](std::string& word) { return word.data(); });
        arguments.push_back(nullptr);
        if (posix_spawnp(&pid_, "sh", nullptr, nullptr, arguments.data(), environ) != 0) {
            throw std::runtime_error("cannot start " + command[0]);
        }
    }
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;
    ~Process() {
        for (const int signal : {SIGTERM, SIGKILL}) {
            if (Running()) {
                kill(pid_, signal);
                WaitForEnd(std::chrono::seconds(5));
            }
        }
    }

    /// Waits for its end; the exit status, -1 when a signal ended it, or nothing when it still runs
    /// after `limit`.
    std::optional<int> WaitForEnd(std::chrono::milliseconds limit) {
        WaitUntil(
            [this] {
                int status = 0;
                if (!status_ && waitpid(pid_, &status, WNOHANG) == pid_) {
                    status_ = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
                }
                return status_.has_value();
            },
            limit);
        return status_;
    }
    bool Running() { return !WaitForEnd(std::chrono::milliseconds(0)); }
    /// What it has printed so far.
    std::string Output() const { return Content(log_); }

  private:
    pid_t pid_ = -1;
    std::filesystem::path log_;
    std::optional<int> status_;
};

}  // namespace sonnel::test
