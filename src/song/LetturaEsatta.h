#pragma once

#include "platform/Result.h"
#include "song/TestiMidi.h"

#include <string>
#include <string_view>

namespace sonnel {

/// Error numbers for MIDI files that cannot be made into a song.
enum class ErroreEsatto : int { SenzaParole = 1201, TroppoLungo = 1202, TroppiEventi = 1203 };

/// A karaoke MIDI file made into a song.
struct LetturaEsatta {
    std::string Testo;  ///< of the LYK file: UTF-8, lines end with CR LF
    GenereParole Genere = GenereParole::Nessuno;
    bool Danneggiato = false;  ///< parts of the file could not be read
};

/// Makes a song of a MIDI file, with times from its complete tempo map. Title and author that the
/// file lacks come from `nome`, its name without extension ("Author - Title"). Fails when the file
/// cannot be read or played, or when its words are missing or do not fit into a song; the error's
/// text is the reason.
[[nodiscard]] Result<LetturaEsatta> LeggiEsatto(const SmfFile& file, std::string_view nome);

}  // namespace sonnel
