#include "Recording.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace sonnel::test {

namespace {

constexpr float kLoud = 0.05F;
constexpr std::size_t kFrameBytes = 2 * sizeof(float);

}  // namespace

Recording::Recording(const std::string& path, int sampleRate)
    : sampleRate_(sampleRate), file_(open(path.c_str(), O_RDONLY | O_NONBLOCK)) {
    thread_ = std::thread(&Recording::Read, this);
}

Recording::~Recording() {
    stopping_ = true;
    thread_.join();
    close(file_);
}

void Recording::Read() {
    std::array<char, 16384> bytes{};
    std::size_t kept = 0;  // bytes of a frame that is not complete yet
    while (!stopping_) {
        pollfd waiting{file_, POLLIN, 0};
        if (poll(&waiting, 1, 100) <= 0) {
            continue;
        }
        const ssize_t count = read(file_, bytes.data() + kept, bytes.size() - kept);
        const Clock::time_point now = Clock::now();
        if (count <= 0) {  // no writer yet, or gone
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
            continue;
        }
        const std::size_t filled = kept + static_cast<std::size_t>(count);
        const std::size_t whole = filled / kFrameBytes;
        const std::lock_guard lock(mutex_);
        for (std::size_t i = 0; i < whole; ++i) {
            float sample = 0;
            std::memcpy(&sample, bytes.data() + i * kFrameBytes, sizeof sample);
            left_.push_back(sample);
        }
        kept = filled - whole * kFrameBytes;
        std::memmove(bytes.data(), bytes.data() + whole * kFrameBytes, kept);
        arrivals_.push_back({now, left_.size()});
        frames_ = left_.size();
    }
}

/// A reading can only come late, never early: of the readings within a second after the frame the
/// one that puts the frame earliest tells when it sounded.
Clock::time_point Recording::TimeOf(std::size_t frame) const {
    Clock::time_point earliest = Clock::time_point::max();
    for (const Arrival& arrival : arrivals_) {
        if (arrival.frames <= frame) {
            continue;
        }
        if (arrival.frames > frame + static_cast<std::size_t>(sampleRate_)) {
            break;
        }
        const auto after = static_cast<std::int64_t>(arrival.frames - frame);
        earliest = std::min(
            earliest, arrival.time - std::chrono::nanoseconds(after * 1'000'000'000 / sampleRate_));
    }
    return earliest;
}

std::vector<Clock::time_point> Recording::Onsets(std::chrono::milliseconds quiet) const {
    const std::lock_guard lock(mutex_);
    const auto quietFrames = static_cast<std::size_t>(quiet.count() * sampleRate_ / 1000);
    std::vector<Clock::time_point> onsets;
    std::size_t silent = quietFrames;
    for (std::size_t frame = 0; frame < left_.size(); ++frame) {
        if (std::abs(left_[frame]) < kLoud) {
            ++silent;
            continue;
        }
        if (silent >= quietFrames) {
            onsets.push_back(TimeOf(frame));
        }
        silent = 0;
    }
    return onsets;
}

}  // namespace sonnel::test
