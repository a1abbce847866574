#pragma once

#include "platform/midi/SmfReader.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace sonnel {

/// A message for the synthesizer: a channel message, or a system-exclusive one (status F0), whose
/// bytes the sequence keeps.
struct SequenceEvent {
    std::int64_t frame = 0;
    std::uint32_t offset = 0;
    std::uint32_t size = 0;
    std::uint8_t status = 0;
    std::uint8_t data1 = 0;
    std::uint8_t data2 = 0;
};

/// A song ready to be played at one sample rate: the messages of all tracks in the order in which
/// they are due (at the same tick by track, then as they stand in the track).
struct Sequence {
    int rate = 0;
    std::vector<SequenceEvent> events;
    std::vector<std::uint8_t> exclusive;
    std::int64_t endFrame = 0;  ///< of the last event that is not an end-of-track mark
    std::int32_t lengthMs = 0;  ///< the same in milliseconds

    /// The bytes of a system-exclusive message without its F0 and its final F7.
    [[nodiscard]] std::span<const std::uint8_t> Exclusive(const SequenceEvent& event) const {
        return std::span(exclusive).subspan(event.offset, event.size);
    }
    /// The number of the first event that is due at this frame or later.
    [[nodiscard]] std::size_t FirstAt(std::int64_t frame) const;
};

/// Lays the tracks of a file out in time.
[[nodiscard]] Sequence MakeSequence(const SmfFile& file, int rate);

/// Length of a file in milliseconds: its last event that is not an end-of-track mark.
[[nodiscard]] std::int32_t LengthMs(const SmfFile& file);

}  // namespace sonnel
