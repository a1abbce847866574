#pragma once

#include "generator/Score.h"

#include <string_view>

namespace sonnel::songs {

/// General MIDI key of a drum of the score's styles ("kick", "hat"), or 0 when there is none.
[[nodiscard]] int DrumKey(std::string_view name);

/// Reads a score (UTF-8; songs/README.md describes the format). Whatever does not fit together
/// throws ScoreError with the line to correct.
[[nodiscard]] Score ReadScore(std::string_view text);

}  // namespace sonnel::songs
