#include "library/ElencoBrani.h"

namespace sonnel {

std::string_view AlbumMostrato(std::string_view album) {
    return album == AlbumGenerico ? "<None>" : album;
}

std::string RigaBrano(const Brano& brano, Ordine ordine) {
    const std::string album(AlbumMostrato(brano.Album));
    switch (ordine) {
        case Ordine::Autore:
            return brano.Autore + ": " + brano.Titolo + " - " + album;
        case Ordine::Album:
            return album + " : " + brano.Titolo + " (" + brano.Autore + ")";
        case Ordine::Titolo:
            break;
    }
    return brano.Titolo + " (" + brano.Autore + ") - " + album;
}

std::size_t RigaCasuale(std::size_t righe, std::mt19937& caso) {
    constexpr double Valori = static_cast<double>(std::mt19937::max()) + 1;
    const double frazione = static_cast<double>(caso()) / Valori;
    return static_cast<std::size_t>(frazione * static_cast<double>(righe));
}

}  // namespace sonnel
