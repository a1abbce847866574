#include "generator/Smf.h"

#include "platform/Numbers.h"
#include "platform/Text.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace sonnel::songs {

namespace {

constexpr int TextEvent = 0x01;
constexpr int TrackName = 0x03;
constexpr int EndOfTrack = 0x2F;
constexpr int Tempo = 0x51;
constexpr int Time = 0x58;
constexpr int Key = 0x59;

std::string BigEndian(std::uint32_t value, int bytes) {
    std::string out;
    for (int i = bytes - 1; i >= 0; --i) {
        out += static_cast<char>(value >> static_cast<unsigned>(8 * i) & 0xFFU);
    }
    return out;
}

std::string VariableLength(std::uint32_t value) {
    std::string out(1, static_cast<char>(value & 0x7FU));
    while ((value >>= 7U) != 0) {
        out.insert(out.begin(), static_cast<char>((value & 0x7FU) | 0x80U));
    }
    return out;
}

std::string Meta(int type, std::string_view data) {
    std::string out{'\xFF', static_cast<char>(type)};
    out += VariableLength(static_cast<std::uint32_t>(data.size()));
    return out.append(data);
}

/// Texts go into the file in the single-byte code page where that can hold them.
std::string Text(int type, const std::string& text) {
    return Meta(type, ToWindows1252(text).value_or(text));
}

std::string Chunk(std::string_view type, std::string_view content) {
    std::string out(type);
    out += BigEndian(static_cast<std::uint32_t>(content.size()), 4);
    return out.append(content);
}

std::string TrackChunk(const MidiTrack& track, int endTick) {
    std::string content = std::string(1, '\0') + Text(TrackName, track.name);
    int now = 0;
    for (const MidiEvent& event : track.events) {
        content += VariableLength(static_cast<std::uint32_t>(event.tick - now)) + event.bytes;
        now = event.tick;
    }
    content += VariableLength(static_cast<std::uint32_t>(std::max(endTick - now, 0)));
    return Chunk("MTrk", content + Meta(EndOfTrack, ""));
}

/// Sharps (or, below 0, flats) of a key such as "F" or "Em".
std::pair<int, bool> Sharps(std::string_view key) {
    static constexpr std::array<std::string_view, 13> majors = {
        "Gb", "Db", "Ab", "Eb", "Bb", "F", "C", "G", "D", "A", "E", "B", "F#"};
    static constexpr std::array<std::string_view, 13> minors = {
        "Ebm", "Bbm", "Fm", "Cm", "Gm", "Dm", "Am", "Em", "Bm", "F#m", "C#m", "G#m", "D#m"};
    const bool minor = key.ends_with('m');
    const auto& keys = minor ? minors : majors;
    const auto* const found = std::find(keys.begin(), keys.end(), key);
    return {found == keys.end() ? 0 : static_cast<int>(found - keys.begin()) - 6, minor};
}

std::string TimeData(const TimeSignature& time) {
    const int power = time.unit == 8 ? 3 : time.unit == 4 ? 2 : 1;
    const int clocks = time.unit == 8 ? 36 : 96 / time.unit;
    return {static_cast<char>(time.beats), static_cast<char>(power), static_cast<char>(clocks),
            '\x08'};
}

MidiTrack Conductor(const Score& score, const std::vector<TempoChange>& tempos) {
    using namespace std::string_literals;
    MidiTrack track{score.title, {}};
    const auto [sharps, minor] = Sharps(score.key);
    // Every synthesizer begins from the General MIDI state.
    track.events.push_back({0, Rank::Setting, "\xF0\x05\x7E\x7F\x09\x01\xF7"s});
    track.events.push_back({0, Rank::Setting, Meta(Time, TimeData(score.time))});
    track.events.push_back(
        {0, Rank::Setting,
         Meta(Key, std::string{static_cast<char>(sharps), static_cast<char>(minor ? 1 : 0)})});
    for (const TempoChange& change : tempos) {
        const auto value = static_cast<std::uint32_t>(change.microseconds);
        track.events.push_back({change.tick, Rank::Setting, Meta(Tempo, BigEndian(value, 3))});
    }
    return track;
}

MidiTrack Words(const Score& score, const Arrangement& song) {
    MidiTrack track{"Words", {}};
    const auto add = [&track](int tick, const std::string& text) {
        track.events.push_back({tick, Rank::Setting, Text(TextEvent, text)});
    };
    add(0, "@L" + score.language);
    add(0, "@T" + score.title);
    add(0, "@T" + score.author);
    add(0, "@ISonnel demo songs");
    for (const SungPage& page : song.pages) {
        for (const SungLine& line : page) {
            const std::string opening = &line == &page.front() ? "\\" : "/";
            for (const SungSyllable& syllable : line) {
                const std::string blank = syllable.startsWord ? " " : "";
                add(syllable.tick, (&syllable == &line.front() ? opening : blank) + syllable.text);
            }
        }
    }
    return track;
}

std::string File(const std::vector<MidiTrack>& tracks, int endTick) {
    std::string out =
        Chunk("MThd", BigEndian(1, 2) + BigEndian(static_cast<std::uint32_t>(tracks.size()), 2) +
                          BigEndian(TicksPerQuarter, 2));
    for (const MidiTrack& track : tracks) {
        out += TrackChunk(track, endTick);
    }
    return out;
}

/// The song in its first tempo alone, each event at the tick that gives it its time there.
Arrangement InOneTempo(const Arrangement& song) {
    Arrangement even = song;
    even.tempos.resize(1);
    const double ticksPerMillisecond = 1000.0 * TicksPerQuarter / even.tempos[0].microseconds;
    const auto move = [&](int& tick) {
        tick = RoundHalfEven<int>(song.Milliseconds(tick) * ticksPerMillisecond);
    };
    for (MidiTrack& track : even.tracks) {
        for (MidiEvent& event : track.events) {
            move(event.tick);
        }
    }
    for (SungPage& page : even.pages) {
        for (SungLine& line : page) {
            for (SungSyllable& syllable : line) {
                move(syllable.tick);
            }
        }
    }
    move(even.endTick);
    return even;
}

}  // namespace

std::string WriteMidi(const Score& score, const Arrangement& song) {
    std::vector<MidiTrack> tracks = song.tracks;
    tracks.insert(tracks.begin(), Conductor(score, song.tempos));
    return File(tracks, song.endTick);
}

std::string WriteKar(const Score& score, const Arrangement& song) {
    const Arrangement even = InOneTempo(song);
    MidiTrack header{"Soft karaoke", {}};
    header.events.push_back({0, Rank::Setting, Text(TextEvent, "@KMIDI KARAOKE FILE")});
    std::vector<MidiTrack> tracks = {Conductor(score, even.tempos), header, Words(score, even)};
    tracks.insert(tracks.end(), even.tracks.begin(), even.tracks.end());
    return File(tracks, even.endTick);
}

}  // namespace sonnel::songs
