#pragma once

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include <sys/types.h>

namespace sonnel::test {

/// A program that runs beside the test. It is ended with the object.
class Process {
  public:
    /// Starts a command, its program looked for as the shell does; what it prints goes into `log`.
    Process(const std::vector<std::string>& command, std::filesystem::path log);
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;
    ~Process();

    /// Waits for its end; the exit status, 128 and the signal's number when a signal ended it, or
    /// nothing when it still runs after `limit`.
    std::optional<int> WaitForEnd(std::chrono::milliseconds limit);
    bool Running() { return !WaitForEnd(std::chrono::milliseconds(0)); }
    /// What it has printed so far.
    std::string Output() const;

  private:
    pid_t pid_ = -1;
    std::filesystem::path log_;
    std::optional<int> status_;
};

/// Asks a question every 10 ms until the answer is yes; false when it still is not after `limit`.
template <typename Question>
bool WaitUntil(Question question, std::chrono::milliseconds limit);

void Sleep(std::chrono::milliseconds time);

template <typename Question>
bool WaitUntil(Question question, std::chrono::milliseconds limit) {
    const auto end = std::chrono::steady_clock::now() + limit;
    while (!question()) {
        if (std::chrono::steady_clock::now() >= end) {
            return false;
        }
        Sleep(std::chrono::milliseconds(10));
    }
    return true;
}

}  // namespace sonnel::test
