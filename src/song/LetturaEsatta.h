#pragma once

#include "platform/Result.h"
#include "song/TestiMidi.h"

#include <string>
#include <string_view>

namespace sonnel {

/// Error numbers of MIDI files that make no song.
enum class ErroreEsatto : int { SenzaParole = 1201, TroppoLungo = 1202, TroppiEventi = 1203 };

/// What a karaoke MIDI file became.
struct LetturaEsatta {
    std::string Testo;  ///< of the LYK file: UTF-8, lines end with CR LF
    GenereParole Genere = GenereParole::Nessuno;
    bool Danneggiato = false;  ///< parts of the file could not be read
};

/// The song that a MIDI file holds, with times by its whole tempo map. `nome`, the file's name
/// without its extension, gives the title and the author ("Author - Title") that the file itself
/// does not. Fails with the MIDI reader's error, for a file that cannot be played, and for one
/// whose words are missing or do not fit into a song; the text of the error is the reason.
[[nodiscard]] Result<LetturaEsatta> LeggiEsatto(const SmfFile& file, std::string_view nome);

}  // namespace sonnel
