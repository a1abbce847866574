#pragma once

#include "generator/Arranger.h"
#include "generator/Score.h"

#include <string>

namespace sonnel::songs {

/// The song as a Standard MIDI File of format 1: a conductor track, then the instruments.
[[nodiscard]] std::string WriteMidi(const Score& score, const Arrangement& song);

/// The same with the words in a track of text events, as karaoke players read them. Readers of
/// such files know one tempo only while the words go on, so tempo changes before the last syllable
/// are left out.
[[nodiscard]] std::string WriteKar(const Score& score, const Arrangement& song);

}  // namespace sonnel::songs
