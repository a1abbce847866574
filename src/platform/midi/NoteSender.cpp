#include "platform/midi/NoteSender.h"

#include <utility>

namespace sonnel {
namespace {

constexpr std::uint8_t kNoteOff = 0x80;
constexpr std::uint8_t kNoteOn = 0x90;
constexpr std::uint8_t kKeyPressure = 0xA0;
constexpr std::uint8_t kUsualVelocity = 64;
constexpr int kKeys = 128;

}  // namespace

NoteSender::NoteSender(Synthesizer& synthesizer) : synth_(synthesizer) {
    Forget();
}

void NoteSender::Forget() noexcept {
    for (auto& channel : notes_) {
        channel.fill({});
    }
}

void NoteSender::Adopt(const Performance& performance) noexcept {
    const Performance before = std::exchange(performance_, performance);
    const int channel = performance.melodyChannel;
    const bool off = performance.melody == Performance::Melody::Off;
    if (!off || channel < 0 ||
        (before.melody == Performance::Melody::Off && before.melodyChannel == channel)) {
        return;
    }
    for (int key = 0; key < kKeys; ++key) {
        Silence(static_cast<std::uint8_t>(channel), static_cast<std::uint8_t>(key));
    }
}

void NoteSender::Send(std::uint8_t status, std::uint8_t key, std::uint8_t value) noexcept {
    const auto kind = static_cast<std::uint8_t>(status & 0xF0U);
    if (kind == kNoteOn && value > 0) {
        Begin(static_cast<std::uint8_t>(status & 0x0FU), key, value);
    } else if (kind == kNoteOn || kind == kNoteOff || kind == kKeyPressure) {
        End(status, key, value);
    } else {
        synth_.ChannelMessage(status, key, value);
    }
}

void NoteSender::Begin(std::uint8_t channel, std::uint8_t key, std::uint8_t velocity) noexcept {
    auto& notes = notes_[channel];
    Note& note = notes[key];
    const bool moved = performance_.key != 0 && !synth_.PlaysDrums(channel);
    const int sounds = moved ? key + performance_.key : key;
    if (note.sounds != kNone && note.sounds != sounds) {
        Silence(channel, key);
    }
    const bool melody = channel == performance_.melodyChannel;
    note.leftOut = sounds < 0 || sounds >= kKeys ||
                   (melody && performance_.melody == Performance::Melody::Off);
    if (note.leftOut) {
        return;
    }
    Note& sounding = notes[static_cast<std::size_t>(sounds)];
    if (sounding.owner != kNone && sounding.owner != key) {
        // The synthesizer ends what sounds on this key.
        notes[static_cast<std::size_t>(sounding.owner)].sounds = kNone;
    }
    sounding.owner = static_cast<std::int16_t>(key);
    note.sounds = static_cast<std::int16_t>(sounds);
    if (melody && performance_.melody == Performance::Melody::Soft) {
        velocity = static_cast<std::uint8_t>((velocity + 1) / 2);
    }
    synth_.ChannelMessage(static_cast<std::uint8_t>(kNoteOn | channel),
                          static_cast<std::uint8_t>(sounds), velocity);
}

/// The end of a note, or the pressure on its key.
void NoteSender::End(std::uint8_t status, std::uint8_t key, std::uint8_t value) noexcept {
    auto& notes = notes_[status & 0x0FU];
    Note& note = notes[key];
    // An end too many goes on as it stands, but not to a key that sounds for another note.
    if (note.leftOut || (note.sounds == kNone && note.owner != kNone)) {
        return;
    }
    const int sounds = note.sounds == kNone ? key : note.sounds;
    if ((status & 0xF0U) != kKeyPressure && note.sounds != kNone) {
        notes[static_cast<std::size_t>(sounds)].owner = kNone;
        note.sounds = kNone;
    }
    synth_.ChannelMessage(status, static_cast<std::uint8_t>(sounds), value);
}

/// Ends the note of a key if it sounds.
void NoteSender::Silence(std::uint8_t channel, std::uint8_t key) noexcept {
    Note& note = notes_[channel][key];
    if (note.sounds != kNone) {
        End(static_cast<std::uint8_t>(kNoteOff | channel), key, kUsualVelocity);
        note.leftOut = true;  // its end is not sent twice
    }
}

}  // namespace sonnel
