#pragma once

#include "platform/Synthesizer.h"
#include "platform/midi/Performance.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace sonnel {

/// Sends a song's channel messages to the synthesizer in the key and with the melody that the
/// singer has chosen. A note ends as it began, whatever has changed since. Neither allocates nor
/// throws.
class NoteSender {
  public:
    explicit NoteSender(Synthesizer& synthesizer);

    /// Concerns the notes that begin from now on; a melody that is switched off ends its own.
    void Adopt(const Performance& performance) noexcept;
    void Send(std::uint8_t status, std::uint8_t key, std::uint8_t value) noexcept;
    /// All sound was switched off.
    void Forget() noexcept;

  private:
    static constexpr int kNone = -1;

    /// A key of the song on its channel.
    struct Note {
        std::int16_t sounds = kNone;  ///< the key that sounds for it, as long as it does
        std::int16_t owner = kNone;   ///< the song's key for which this key sounds
        bool leftOut = false;         ///< it began, but was not sent
    };

    void Begin(std::uint8_t channel, std::uint8_t key, std::uint8_t velocity) noexcept;
    void End(std::uint8_t status, std::uint8_t key, std::uint8_t value) noexcept;
    void Silence(std::uint8_t channel, std::uint8_t key) noexcept;

    Synthesizer& synth_;
    Performance performance_;
    std::array<std::array<Note, 128>, 16> notes_;
};

}  // namespace sonnel
