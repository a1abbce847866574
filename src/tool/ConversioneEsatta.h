#pragma once

#include "tool/PianoConversione.h"

namespace sonnel {

/// Makes a song of a MIDI file by the exact reading. A file that is not accepted leaves nothing.
/// With `sovrascrivi` a song that is there already keeps its title, author and album.
void ConvertiEsatto(const Conversione& lavoro, bool sovrascrivi, EsitoConversione& esito);

/// Removes the words that were written before the music could not be: those that are new would
/// stand in the way of another attempt.
void RitiraParole(const Conversione& lavoro, bool sovrascrivi, EsitoConversione& esito);

}  // namespace sonnel
