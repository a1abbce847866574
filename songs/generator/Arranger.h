#pragma once

#include "generator/Score.h"

#include <string>
#include <vector>

namespace sonnel::songs {

/// What happens first among events of one tick.
enum class Rank { NoteOff, Setting, NoteOn };

struct MidiEvent {
    int tick = 0;
    Rank rank = Rank::Setting;
    std::string bytes;  ///< the whole event without its delta time
};

struct MidiTrack {
    std::string name;
    std::vector<MidiEvent> events;  ///< sorted by tick and rank
};

struct TempoChange {
    int tick = 0;
    int microseconds = 0;  ///< to a quarter note
};

struct SungSyllable {
    int tick = 0;
    std::string text;
    bool startsWord = true;
};

using SungLine = std::vector<SungSyllable>;
using SungPage = std::vector<SungLine>;

/// A score worked out note by note.
struct Arrangement {
    std::vector<TempoChange> tempos;  ///< the first at tick 0
    std::vector<MidiTrack> tracks;    ///< one for each of the score's
    std::vector<SungPage> pages;
    int endTick = 0;

    /// Time of a tick through the tempo changes.
    [[nodiscard]] double Milliseconds(int tick) const;
};

/// Works a score out. The same score gives the same arrangement, always.
[[nodiscard]] Arrangement Arrange(const Score& score);

}  // namespace sonnel::songs
