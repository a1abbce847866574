#pragma once

#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace sonnel::songs {

/// All positions and lengths are ticks of this many to a quarter note.
inline constexpr int TicksPerQuarter = 480;

/// What is wrong with a score, and the line of the file (from 1) to correct.
class ScoreError : public std::runtime_error {
  public:
    ScoreError(int lineNumber, const std::string& what)
        : std::runtime_error("line " + std::to_string(lineNumber) + ": " + what),
          line(lineNumber) {}
    int line;
};

struct TimeSignature {
    int beats = 4;
    int unit = 4;
    [[nodiscard]] int BarTicks() const { return beats * TicksPerQuarter * 4 / unit; }
    /// What the foot taps: a note of the unit, three of them where the bar goes in threes.
    [[nodiscard]] int BeatTicks() const {
        return (unit == 8 && beats % 3 == 0 ? 3 : 1) * TicksPerQuarter * 4 / unit;
    }
};

struct Note {
    int start = 0;  ///< from the start of its section; negative in a pickup
    int length = 0;
    int pitch = 0;  ///< MIDI key
};

struct Chord {
    int root = 0;            ///< pitch class
    std::vector<int> tones;  ///< semitones above the root, the root's 0 first
    int bass = 0;            ///< pitch class of the lowest voice
};

struct ChordSpan {
    int start = 0;
    int length = 0;
    Chord chord;
};

/// A stretch of whole bars. Its tune may begin earlier, in a pickup.
struct Section {
    int line = 0;
    int bars = 0;
    std::vector<ChordSpan> chords;
    std::vector<Note> tune;
};

/// What is sung on one note. A melisma has no text: it continues the syllable before it.
struct Syllable {
    std::string text;        ///< as shown, with its hyphen if it has one
    bool startsWord = true;  ///< after a blank, unless its line begins here
    bool melisma = false;
};

using VerseLine = std::vector<Syllable>;
using VersePage = std::vector<VerseLine>;

struct Verse {
    int line = 0;
    std::vector<VersePage> pages;
    [[nodiscard]] int Notes() const;
};

enum class Role { Tune, Echo, Chords, Bass, Drums };

struct Track {
    std::string name;
    Role role = Role::Chords;
    int program = 1;  ///< General MIDI, from 1
    int volume = 100;
    int pan = 64;
    int reverb = 40;
    int chorus = 0;
    int octave = 0;        ///< moves the written notes, in octaves
    int low = 55;          ///< lowest key of a chord
    bool pedal = false;    ///< sustain pedal, changed with each chord
    bool swell = false;    ///< expression rises and falls with each chord
    bool vibrato = false;  ///< modulation on long notes
    bool scoop = false;    ///< long notes are bent up into
};

/// What each track or drum plays: for each of the pattern's bars a text whose characters are equal
/// shares of the bar.
using Style = std::map<std::string, std::vector<std::string>>;

/// One section as it is played.
struct Passage {
    int line = 0;
    const Section* section = nullptr;
    const Style* style = nullptr;
    const Verse* verse = nullptr;  ///< none: not sung
    std::optional<double> tempo;   ///< quarter notes per minute from here on
    std::optional<double> slowTo;  ///< the tempo reached at its end, from its last bars on
    int slowBars = 1;
    int shift = 0;    ///< semitones
    int echo = 0;     ///< bars the echo track comes in later; 0: silent
    int level = 100;  ///< percent of the accompaniment's loudness
};

struct Score {
    std::string title;
    std::string author;
    std::string album = "?";
    std::string language = "ENGL";
    std::string key = "C";
    TimeSignature time;
    double tempo = 100;
    int octave = 4;
    std::vector<Track> tracks;
    std::map<std::string, Style> styles;
    std::map<std::string, Section> sections;
    std::map<std::string, Verse> verses;
    std::vector<Passage> passages;  ///< point into the maps above

    Score() = default;
    Score(const Score&) = delete;
    Score& operator=(const Score&) = delete;
    Score(Score&&) = default;
    Score& operator=(Score&&) = default;
    ~Score() = default;
};

}  // namespace sonnel::songs
