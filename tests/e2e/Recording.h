#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <vector>

namespace sonnel::test {

using Clock = std::chrono::steady_clock;

/// What could be seen, and how long the sound file was, at one moment.
struct Sample {
    Clock::time_point at;
    double sung = 0;    ///< share of the screen's pixels in the selection colour
    double unsung = 0;  ///< in the text colour
    std::uintmax_t soundBytes = 0;
};

/// One change of the share of sung pixels. What goes on within 60 ms is the same step: the screen
/// may have been grabbed half painted.
struct Step {
    Clock::time_point at;  ///< when its first pixels were seen
    bool grown = false;
};
std::vector<Step> Steps(const std::vector<Sample>& samples);

/// The WAV file the player wrote what is heard to, 16-bit stereo.
class SoundFile {
  public:
    /// `samples` tell when how much of it was there: the player hands a frame to the file when its
    /// time has come, less the 10 ms it works ahead. So the earliest moment at which the file was
    /// seen to be so long, over all moments, ties its frames to the clock within about 10 ms.
    SoundFile(const std::filesystem::path& path, const std::vector<Sample>& samples);

    /// When the first sound in it was heard; the end of it all when there is none.
    Clock::time_point Onset() const;
    /// The loudest sample between two moments, full scale is 1.
    double Peak(Clock::time_point from, Clock::time_point to) const;

  private:
    Clock::time_point HeardAt(std::size_t frame) const;
    std::size_t FrameAt(Clock::time_point moment) const;

    std::vector<std::int16_t> samples_;
    double rate_ = 0;
    Clock::time_point origin_;
};

}  // namespace sonnel::test
