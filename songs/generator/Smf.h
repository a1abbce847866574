#pragma once

#include "generator/Arranger.h"
#include "generator/Score.h"

#include <string>

namespace sonnel::songs {

/// The song as a Standard MIDI File of format 1: a conductor track, then the instruments.
[[nodiscard]] std::string WriteMidi(const Score& score, const Arrangement& song);

/// The same to the ear, with the words in a track of text events, as karaoke players read them.
/// Readers of such files take one tempo for all ticks before a word, so the file has the song's
/// first tempo throughout: where the song goes at another, its events leave the beat to keep their
/// time.
[[nodiscard]] std::string WriteKar(const Score& score, const Arrangement& song);

}  // namespace sonnel::songs
