#pragma once

#include "platform/Result.h"

#include <cstdint>
#include <optional>
#include <span>

namespace sonnel {

/// The door to one synthesizer with 16 channels. After Prepare only one thread at a time uses it;
/// except for Prepare, its functions do not block, throw or allocate (the library behind may).
class Synthesizer {
  public:
    virtual ~Synthesizer() = default;
    /// Makes the synthesizer ready for this sample rate (frames per second): loads the SoundFont on
    /// the first call. When there is none, the error says what to do.
    virtual std::optional<Error> Prepare(int sampleRate) = 0;
    /// Back to the state after Prepare: programs, controllers, bends, tunings, no sound.
    virtual void Reset() noexcept = 0;
    /// A channel message, status 0x80 to 0xEF; `data2` is ignored where the message has one byte.
    virtual void ChannelMessage(std::uint8_t status, std::uint8_t data1,
                                std::uint8_t data2) noexcept = 0;
    /// Whether notes on this channel, 0 to 15, are drums rather than pitches.
    [[nodiscard]] virtual bool PlaysDrums(int channel) noexcept = 0;
    /// A system-exclusive message without its F0 and its final F7.
    virtual void SystemExclusive(std::span<const std::uint8_t> data) noexcept = 0;
    /// Silences every voice at once.
    virtual void AllSoundOff() noexcept = 0;
    /// Renders the next frames: left and right interleaved, so `out` has two floats a frame.
    virtual void Render(std::span<float> out) noexcept = 0;
};

}  // namespace sonnel
