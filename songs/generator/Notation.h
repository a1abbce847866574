#pragma once

#include "generator/Score.h"

#include <string>
#include <string_view>
#include <vector>

namespace sonnel::songs {

/// A line of a score with its number in the file.
struct SourceLine {
    int number = 0;
    std::string text;
};

/// A text cut at blanks.
[[nodiscard]] std::vector<std::string> Tokens(std::string_view text);

/// A whole number within bounds; throws ScoreError.
[[nodiscard]] int Number(const std::string& text, int low, int high, int line);

/// Ticks of a written duration ("4", "2.", "8"); throws ScoreError.
[[nodiscard]] int Duration(std::string_view text, int line);

/// "G", "F#m7", "C/E" and the like; throws ScoreError.
[[nodiscard]] Chord ReadChord(std::string_view text, int line);

/// Chords by bar, each bar shared equally by its chords. The bars' number is returned in `bars`.
[[nodiscard]] std::vector<ChordSpan> ReadChords(const std::vector<SourceLine>& lines, int barTicks,
                                                int& bars);

/// A tune of `bars` full bars after a pickup of `pickup` ticks. Every bar is checked: one that is
/// too short or too long throws ScoreError.
[[nodiscard]] std::vector<Note> ReadTune(const std::vector<SourceLine>& lines, int barTicks,
                                         int bars, int pickup, int octave);

/// Lines of words; an empty line begins a new page. Pages have two or three lines, as
/// many as a page of a karaoke file can have.
[[nodiscard]] Verse ReadVerse(const std::vector<SourceLine>& lines, int headLine);

}  // namespace sonnel::songs
