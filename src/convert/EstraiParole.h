#pragma once

#include "convert/LeggiTempi.h"
#include "convert/Midifile.h"
#include "convert/PaginaKar.h"
#include "platform/Result.h"

#include <chrono>
#include <optional>
#include <string>

namespace sonnel {

/// What the words of a karaoke MIDI file became.
struct Estrazione {
    std::string Testo;                 ///< of the LYK file, as far as it was made
    int NumEventi = 0;                 ///< of the song, as its lines have them
    bool IntestazioneKaraoke = false;  ///< the file says that it is a karaoke file ("@K")
    bool TestoIniziato = false;        ///< there is a page of words
    bool Danneggiato = false;          ///< parts of the file could not be read
    std::optional<Error> Errore;       ///< what ended the extraction before its end

    /// Whether the file was a karaoke file with words.
    [[nodiscard]] bool Accettata() const { return !Errore && IntestazioneKaraoke && TestoIniziato; }
};

/// Shown for a file whose extraction was not accepted.
inline constexpr const char* KarNonAccettato =
    "Conversion failed: this KAR file isn't either in standard Midi Karaoke format or it's "
    "incompatible with this converter version.";

/// Walks the texts of the open file, up to the end of the first track with words, and makes the
/// text of a LYK file of them (UTF-8, lines end with CR LF). `base` is fresh from this file; `oggi`
/// goes into the header. A line end or a NUL within a text counts as a blank.
[[nodiscard]] Estrazione EstraiParole(Midifile& midifile, BaseTempi base,
                                      std::chrono::year_month_day oggi);

}  // namespace sonnel
