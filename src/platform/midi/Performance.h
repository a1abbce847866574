#pragma once

#include <algorithm>
#include <cstdint>

namespace sonnel {

/// What the singer changes of a song while it plays.
struct Performance {
    enum class Melody : std::uint8_t { Normal, Soft, Off };
    static constexpr int Melodies = 3;
    static constexpr int LowestKey = -12;
    static constexpr int HighestKey = 12;
    static constexpr int Slowest = 50;
    static constexpr int Fastest = 150;

    int key = 0;      ///< semitones by which notes sound higher
    int tempo = 100;  ///< percent of the song's own
    Melody melody = Melody::Normal;
    int melodyChannel = -1;  ///< 0 to 15; -1 when it is not known

    bool operator==(const Performance&) const = default;
};

/// The record as one number that threads can pass on; values out of range take the nearest bound.
[[nodiscard]] inline std::uint32_t Packed(const Performance& p) noexcept {
    const int key = std::clamp(p.key, Performance::LowestKey, Performance::HighestKey);
    const int tempo = std::clamp(p.tempo, Performance::Slowest, Performance::Fastest);
    const int channel = std::clamp(p.melodyChannel, -1, 15);
    return static_cast<std::uint32_t>(key - Performance::LowestKey) |
           static_cast<std::uint32_t>(tempo) << 8U | static_cast<std::uint32_t>(p.melody) << 16U |
           static_cast<std::uint32_t>(channel + 1) << 24U;
}

[[nodiscard]] inline Performance Unpacked(std::uint32_t packed) noexcept {
    return {static_cast<int>(packed & 0xFFU) + Performance::LowestKey,
            static_cast<int>(packed >> 8U & 0xFFU),
            static_cast<Performance::Melody>(packed >> 16U & 0xFFU),
            static_cast<int>(packed >> 24U) - 1};
}

}  // namespace sonnel
