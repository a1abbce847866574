#pragma once

#include "song/Timeline.h"

#include <string>
#include <vector>

namespace sonnel {

/// What the singers' screen shows beside the page, each as its user wants it.
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
    double cantati = 0;      ///< characters sung, with a part of one; a line end counts two
    std::string prossima{};  ///< line of the next page, ""
    bool annuncia = false;   ///< it is to be seen already
    int punti = 0;           ///< dots of the count-in, 3 to 0
    bool titolo = false;     ///< title and author instead of a page

    bool operator==(const Scena&) const = default;
};

/// The scene at a time in tenths of a second, the compensation included. The page and the words
/// begun are those of the main window, which has shown the events up to the timeline's last.
[[nodiscard]] Scena ScenaA(const Timeline& timeline, double tempo, const MostraScena& mostra);

}  // namespace sonnel
