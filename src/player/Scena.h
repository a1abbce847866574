#pragma once

#include "song/Timeline.h"

#include <string>
#include <vector>

namespace sonnel {

/// What the singers' screen shows besides the page; the user can switch each part off.
struct MostraScena {
    bool flusso = true;    ///< colour moves through the syllables
    bool prossima = true;  ///< the first line of the next page
    bool punti = true;     ///< the count-in
    bool titolo = true;    ///< before the first page
    bool annuncio = true;  ///< the next turn of the queue, after the song

    bool operator==(const MostraScena&) const = default;
};

/// What the singers' screen shows at one moment of a song.
struct Scena {
    std::vector<std::string> righe{};  ///< of the page
    double cantati = 0;      ///< characters sung, with fractions; a line end counts as two
    std::string prossima{};  ///< line of the next page, ""
    bool annuncia = false;   ///< whether the next line is to be shown now
    int punti = 0;           ///< dots of the count-in, 3 to 0
    bool titolo = false;     ///< title and author instead of a page

    bool operator==(const Scena&) const = default;
};

/// The scene at a time in tenths of a second, compensation included. Page and words follow the main
/// window, that is the timeline's UltimoEvento.
[[nodiscard]] Scena ScenaA(const Timeline& timeline, double tempo, const MostraScena& mostra);

}  // namespace sonnel
