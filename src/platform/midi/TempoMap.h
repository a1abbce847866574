#pragma once

#include "platform/midi/SmfReader.h"

#include <cstdint>
#include <vector>

namespace sonnel {

/// The times of a file's ticks. The tempo changes of all tracks count for all tracks. Times are at
/// most the largest 32-bit number of milliseconds.
class TempoMap {
  public:
    explicit TempoMap(const SmfFile& file);
    /// Milliseconds from the start of the song, rounded.
    [[nodiscard]] std::int32_t Milliseconds(std::uint64_t tick) const;
    /// The same in tenths of a second.
    [[nodiscard]] std::int32_t Tenths(std::uint64_t tick) const;
    /// Frames from the start of the song, rounded, at `rate` frames per second.
    [[nodiscard]] std::int64_t Frame(std::uint64_t tick, int rate) const;

  private:
    /// From `tick` on each tick lasts `micros` microseconds divided by unit_; the start is in
    /// microseconds multiplied by unit_, so that no rounding adds up.
    struct Stretch {
        std::uint64_t tick;
        std::uint64_t start;
        std::uint64_t micros;
    };

    void AddTempos(const SmfFile& file);
    [[nodiscard]] std::uint64_t Time(const Stretch& stretch, std::uint64_t tick) const;
    [[nodiscard]] double Microseconds(std::uint64_t tick) const;

    std::uint64_t unit_;
    std::uint64_t latest_;
    std::vector<Stretch> stretches_;
};

}  // namespace sonnel
