#pragma once

#include <string>

namespace sonnel {

/// What a song's LYK file says about it, ready for labels: every "&" is doubled.
struct InformazioniBrano {
    std::string Titolo;
    std::string Autore;
    std::string KaraokeBy;
    std::string Versione;
    std::string Data;
};

}  // namespace sonnel
