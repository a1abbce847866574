#include "generator/Player.h"

#include "generator/ScoreReader.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace sonnel::songs {

namespace {

constexpr int Modulation = 1;
constexpr int DataEntry = 6;
constexpr int ChannelVolume = 7;
constexpr int Pan = 10;
constexpr int Expression = 11;
constexpr int DataEntryFine = 38;
constexpr int Sustain = 64;
constexpr int Reverb = 91;
constexpr int Chorus = 93;
constexpr int RpnLow = 100;
constexpr int RpnHigh = 101;
constexpr int BendCentre = 8192;

/// A hand is never quite even: -5 to 5, the same for the same place.
int Unevenness(int tick, int channel) {
    auto x = static_cast<std::uint32_t>(tick) * 2654435761U +
             static_cast<std::uint32_t>(channel) * 40503U;
    x ^= x >> 15U;
    x *= 2246822519U;
    x ^= x >> 13U;
    return static_cast<int>(x % 11U) - 5;
}

/// The keys of a chord in close position, from the lowest key allowed upwards.
std::vector<int> Voicing(const Chord& chord, int low) {
    std::vector<int> keys;
    for (const int tone : chord.tones) {
        const int pitchClass = (chord.root + tone) % 12;
        keys.push_back(low + (pitchClass - low % 12 + 12) % 12);
    }
    std::sort(keys.begin(), keys.end());
    return keys;
}

/// The tone a bass letter means.
int BassKey(const Chord& chord, char letter) {
    constexpr int low = 33;
    const int third = chord.tones[1];
    const int fifth = chord.tones[2];
    const int pitchClass = letter == '5'   ? chord.root + fifth
                           : letter == '3' ? chord.root + third
                                           : chord.bass;
    const int key = low + (pitchClass - low % 12 + 24) % 12;
    return letter == '8' ? key + 12 : key;
}

const ChordSpan& ChordAt(const Section& section, int tick) {
    const auto after =
        std::find_if(section.chords.begin(), section.chords.end(),
                     [tick](const ChordSpan& span) { return span.start + span.length > tick; });
    return after == section.chords.end() ? section.chords.back() : *after;
}

}  // namespace

Player::Player(const Score& score, const Track& track, int channel)
    : score_(score), track_(track), channel_(channel) {
    out_.name = track.name;
    SetUp();
}

void Player::Add(int tick, Rank rank, int status, int data1, int data2) {
    std::string bytes{static_cast<char>(status | channel_), static_cast<char>(data1)};
    if (status != 0xC0) {
        bytes += static_cast<char>(data2);
    }
    out_.events.push_back({tick, rank, std::move(bytes)});
}

void Player::Control(int tick, int controller, int value) {
    Add(tick, Rank::Setting, 0xB0, controller, std::clamp(value, 0, 127));
}

void Player::SetUp() {
    Add(0, Rank::Setting, 0xC0, track_.program - 1, 0);
    Control(0, ChannelVolume, track_.volume);
    Control(0, Pan, track_.pan);
    Control(0, Expression, 127);
    Control(0, Reverb, track_.reverb);
    Control(0, Chorus, track_.chorus);
    if (track_.scoop) {
        Control(0, RpnHigh, 0);
        Control(0, RpnLow, 0);
        Control(0, DataEntry, 2);
        Control(0, DataEntryFine, 0);
        Control(0, RpnHigh, 127);
        Control(0, RpnLow, 127);
        Add(0, Rank::Setting, 0xE0, BendCentre & 0x7F, BendCentre >> 7);
    }
}

void Player::Sound(int tick, int length, int key, int velocity) {
    // A little air between a note and the next, so that a repeated key is struck anew.
    const int sounding = std::max(length - std::max(length / 24, 6), 1);
    Add(tick, Rank::NoteOn, 0x90, key, velocity);
    Add(tick + sounding, Rank::NoteOff, 0x80, key, 64);
}

int Player::Velocity(int base, int tick, int level) const {
    const int bar = score_.time.BarTicks();
    const int accent = tick % bar == 0 ? 8 : tick % score_.time.BeatTicks() == 0 ? 3 : 0;
    return std::clamp((base + accent + Unevenness(tick, channel_)) * level / 100, 1, 127);
}

void Player::Play(const Passage& passage, int start) {
    switch (track_.role) {
        case Role::Tune:
            PlayTune(passage, start, 0);
            break;
        case Role::Echo:
            if (passage.echo > 0) {
                PlayTune(passage, start, passage.echo * score_.time.BarTicks());
            }
            break;
        case Role::Chords:
        case Role::Bass:
            PlayPatterns(passage, start);
            break;
        case Role::Drums:
            PlayDrums(passage, start);
            break;
    }
    Shade(passage, start);
}

void Player::PlayTune(const Passage& passage, int start, int delay) {
    const int end = passage.section->bars * score_.time.BarTicks();
    for (const Note& note : passage.section->tune) {
        const int from = note.start + delay;
        if (from >= end) {
            break;
        }
        const int length = std::min(note.length, end - from);
        const int tick = start + from;
        Sound(tick, length, note.pitch + passage.shift + 12 * track_.octave,
              Velocity(98, tick, 100));
        Ornament(tick, length);
    }
}

void Player::Ornament(int tick, int length) {
    if (length < 3 * TicksPerQuarter / 2) {
        return;
    }
    if (track_.scoop) {
        constexpr int steps = 8;
        for (int i = 0; i <= steps; ++i) {
            const int bend = BendCentre - 2048 * (steps - i) / steps;
            Add(tick + i * 15, Rank::Setting, 0xE0, bend & 0x7F, bend >> 7);
        }
    }
    if (track_.vibrato) {
        for (int i = 0; i <= 4; ++i) {
            Control(tick + length / 3 + i * length / 8, Modulation, 12 * i);
        }
        Control(tick + length - 1, Modulation, 0);
    }
}

void Player::PlayPatterns(const Passage& passage, int start) {
    const auto found = passage.style->find(track_.name);
    if (found == passage.style->end()) {
        return;
    }
    const int barTicks = score_.time.BarTicks();
    const Section& section = *passage.section;
    std::vector<Step> steps;
    for (int bar = 0; bar < section.bars; ++bar) {
        const std::string& pattern =
            found->second[static_cast<std::size_t>(bar) % found->second.size()];
        const int share = barTicks / static_cast<int>(pattern.size());
        int now = bar * barTicks;
        for (const char letter : pattern) {
            const bool goesOn =
                letter == '-' && !steps.empty() && steps.back().start + steps.back().length == now;
            // What is held into another chord is struck again with it.
            if (goesOn && ChordAt(section, now).start != now) {
                steps.back().length += share;
            } else if (goesOn || (letter != '.' && letter != '-')) {
                steps.push_back({now, share, goesOn ? steps.back().letter : letter});
            }
            now += share;
        }
    }
    for (const Step& step : steps) {
        Chord chord = ChordAt(section, step.start).chord;
        chord.root = (chord.root + passage.shift + 12) % 12;
        chord.bass = (chord.bass + passage.shift + 12) % 12;
        if (track_.role == Role::Bass) {
            PlayBassStep(step, chord, start + step.start, passage.level);
        } else {
            PlayChordStep(step, chord, start + step.start, passage.level);
        }
    }
}

void Player::PlayChordStep(const Step& step, const Chord& chord, int tick, int level) {
    const std::vector<int> keys = Voicing(chord, track_.low + 12 * track_.octave);
    const bool whole = step.letter == 'x' || step.letter == 'X';
    if (whole) {
        const int velocity = Velocity(step.letter == 'X' ? 84 : 70, tick, level);
        for (const int key : keys) {
            Sound(tick, step.length, key, velocity);
        }
        return;
    }
    const auto index = static_cast<std::size_t>(step.letter - '1');
    const int key = keys[index % keys.size()] + 12 * static_cast<int>(index / keys.size());
    Sound(tick, step.length, key, Velocity(76, tick, level));
}

void Player::PlayBassStep(const Step& step, const Chord& chord, int tick, int level) {
    Sound(tick, step.length, BassKey(chord, step.letter) + 12 * track_.octave,
          Velocity(84, tick, level));
}

void Player::PlayDrums(const Passage& passage, int start) {
    const int barTicks = score_.time.BarTicks();
    for (const auto& [name, bars] : *passage.style) {
        const int key = DrumKey(name);
        for (int bar = 0; key != 0 && bar < passage.section->bars; ++bar) {
            const std::string& pattern = bars[static_cast<std::size_t>(bar) % bars.size()];
            const int share = barTicks / static_cast<int>(pattern.size());
            for (std::size_t i = 0; i < pattern.size(); ++i) {
                if (pattern[i] == '.') {
                    continue;
                }
                const int tick = start + bar * barTicks + static_cast<int>(i) * share;
                const int base = pattern[i] == 'X' ? 96 : pattern[i] == 'x' ? 78 : 56;
                Sound(tick, share, key, Velocity(base, tick, passage.level));
            }
        }
    }
}

void Player::Shade(const Passage& passage, int start) {
    for (const ChordSpan& span : passage.section->chords) {
        const int tick = start + span.start;
        if (track_.pedal) {
            Control(tick, Sustain, 0);
            Control(tick + 20, Sustain, 127);
        }
        if (track_.swell) {
            for (int i = 0; i < 8; ++i) {
                Control(tick + i * span.length / 8, Expression, 88 + 9 * std::min(i, 8 - i));
            }
        }
    }
    if (track_.pedal) {
        Control(start + passage.section->bars * score_.time.BarTicks() - 1, Sustain, 0);
    }
}

MidiTrack Player::Finish() && {
    std::stable_sort(out_.events.begin(), out_.events.end(),
                     [](const MidiEvent& a, const MidiEvent& b) {
                         return std::pair(a.tick, a.rank) < std::pair(b.tick, b.rank);
                     });
    return std::move(out_);
}

}  // namespace sonnel::songs
