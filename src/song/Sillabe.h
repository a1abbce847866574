#pragma once

#include "song/TestiMidi.h"

#include <cstdint>
#include <string>
#include <vector>

namespace sonnel {

/// What begins with a syllable.
enum class Inizio { Nulla, Riga, Pagina };

/// A syllable to sing, with the blanks around it.
struct Sillaba {
    std::uint64_t tick = 0;
    std::string testo;  ///< UTF-8, without marks
    Inizio inizio = Inizio::Nulla;
};

struct Sillabe {
    std::vector<Sillaba> sillabe;
    bool segni = false;  ///< the texts say where lines and pages end
};

/// Reads the marks in a song's texts, drops the hyphens between syllables, and separates words if
/// the texts have no blanks.
[[nodiscard]] Sillabe LeggiSillabe(const std::vector<TestoMidi>& testi, bool utf8);

}  // namespace sonnel
