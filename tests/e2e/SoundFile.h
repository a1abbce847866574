#pragma once

#include "e2e/Player.h"

#include "fakes/TempDirectory.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <vector>

namespace sonnel::test {

/// The WAV file of 44,100 Hz, 16-bit stereo, that the player wrote what is heard to.
class SoundFile {
  public:
    /// The player hands a frame to the file when its time has come, less the 10 ms it works ahead.
    /// So the earliest moment at which the file was seen to be so long, over all moments, ties its
    /// frames to the clock within about 10 ms.
    explicit SoundFile(const Player& player) {
        const std::string bytes = Content(player.Sound());
        if (bytes.size() <= kHeaderBytes) {
            throw std::runtime_error("there is no sound");
        }
        samples_.resize((bytes.size() - kHeaderBytes) / sizeof(std::int16_t));
        std::memcpy(samples_.data(), &bytes[kHeaderBytes], samples_.size() * sizeof(std::int16_t));
        for (const Sample& seen : player.seen) {
            if (seen.soundBytes >= kHeaderBytes) {
                origin_ = std::min(origin_, seen.at - Length((seen.soundBytes - kHeaderBytes) / 4));
            }
        }
    }

    /// When the first sound in it was heard; the end of it all when there is none.
    Clock::time_point Onset() const {
        const auto first = std::find_if(samples_.begin(), samples_.end(), [](std::int16_t sample) {
            return std::abs(sample) > kAudible;
        });
        return origin_ + Length(static_cast<std::size_t>(first - samples_.begin()) / 2);
    }
    /// The loudest sample between two moments, full scale is 1.
    double Peak(Clock::time_point from, Clock::time_point to) const {
        int peak = 0;
        for (std::size_t i = 0; i < samples_.size(); ++i) {
            const Clock::time_point at = origin_ + Length(i / 2);
            peak = at >= from && at < to ? std::max(peak, std::abs(int{samples_[i]})) : peak;
        }
        return peak / 32767.0;
    }

  private:
    static constexpr std::size_t kHeaderBytes = 44;
    static constexpr int kAudible = 65;

    static Clock::duration Length(std::uintmax_t frames) {
        return std::chrono::nanoseconds(frames * 1'000'000'000 / 44100);
    }

    std::vector<std::int16_t> samples_;
    Clock::time_point origin_ = Clock::time_point::max();
};

}  // namespace sonnel::test
