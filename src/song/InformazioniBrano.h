#pragma once

#include <string>

namespace sonnel {

/// The fields of a song's LYK file for labels: every "&" is doubled.
struct InformazioniBrano {
    std::string Titolo;
    std::string Autore;
    std::string KaraokeBy;
    std::string Versione;
    std::string Data;
};

}  // namespace sonnel
