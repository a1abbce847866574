#pragma once

#include "fakes/TempDirectory.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <vector>

namespace sonnel::bench {

using Clock = std::chrono::steady_clock;

/// What could be seen, and how long the sound file was, at one moment.
struct Sample {
    Clock::time_point at;
    std::ptrdiff_t sung = 0;  ///< pixels of the screen in the selection colour
    std::uintmax_t soundBytes = 0;
};

/// When the first sound in a WAV file of 44,100 Hz, 16-bit stereo, was heard, which the player
/// wrote; the end of time when there is none. The player hands a frame to the file when its time
/// has come, less the 10 ms it works ahead. So the earliest moment at which the file was seen to be
/// so long, over all moments, ties its frames to the clock within about 10 ms.
inline Clock::time_point FirstSound(const std::filesystem::path& file,
                                    const std::vector<Sample>& seen) {
    constexpr std::size_t HeaderBytes = 44;
    constexpr int Audible = 65;
    const auto length = [](std::uintmax_t frames) {
        return std::chrono::nanoseconds(frames * 1'000'000'000 / 44100);
    };
    const std::string bytes = test::Content(file);
    if (bytes.size() <= HeaderBytes) {
        return Clock::time_point::max();
    }
    std::vector<std::int16_t> samples((bytes.size() - HeaderBytes) / sizeof(std::int16_t));
    std::memcpy(samples.data(), &bytes[HeaderBytes], samples.size() * sizeof(std::int16_t));
    const auto first = std::find_if(samples.begin(), samples.end(),
                                    [](std::int16_t sample) { return std::abs(sample) > Audible; });
    auto origin = Clock::time_point::max();
    for (const Sample& sample : seen) {
        if (sample.soundBytes >= HeaderBytes) {
            origin = std::min(origin, sample.at - length((sample.soundBytes - HeaderBytes) / 4));
        }
    }
    return first == samples.end()
               ? Clock::time_point::max()
               : origin + length(static_cast<std::size_t>(first - samples.begin()) / 2);
}

}  // namespace sonnel::bench
