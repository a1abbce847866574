#pragma once

#include <atomic>
#include <chrono>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace sonnel::test {

using Clock = std::chrono::steady_clock;

/// What is heard at a sink's monitor: stereo floats read from a pipe, each reading with the time it
/// came at.
class Recording {
  public:
    /// Reads from `path` (a named pipe) on a thread of its own until it ends or this dies.
    Recording(const std::string& path, int sampleRate);
    ~Recording();
    Recording(const Recording&) = delete;
    Recording& operator=(const Recording&) = delete;

    [[nodiscard]] bool Running() const { return frames_ > 0; }
    /// The moments at which sound began after at least `quiet` of silence.
    [[nodiscard]] std::vector<Clock::time_point> Onsets(std::chrono::milliseconds quiet) const;

  private:
    struct Arrival {
        Clock::time_point time;
        std::size_t frames = 0;  // received so far
    };
    void Read();
    [[nodiscard]] Clock::time_point TimeOf(std::size_t frame) const;

    const int sampleRate_;
    int file_ = -1;
    std::atomic<bool> stopping_{false};
    std::atomic<std::size_t> frames_{0};
    mutable std::mutex mutex_;
    std::vector<float> left_;
    std::vector<Arrival> arrivals_;
    std::thread thread_;
};

}  // namespace sonnel::test
