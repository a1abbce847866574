#include "library/ProprietaBrano.h"

#include "library/AlbumBrani.h"
#include "library/ScritturaBrani.h"
#include "platform/Text.h"
#include "ui/PuntatoreOccupato.h"

namespace sonnel {
namespace {

/// The index gives back 8191 characters of an entry: title, author, album and the two separators.
constexpr std::size_t MassimoCampi = MassimoValore - 2;

}  // namespace

BottoniProprieta AbilitaBottoni(bool voceSelezionata, std::string_view testoAlbum,
                                bool modificato) {
    const std::string album = AlbumDaTesto(testoAlbum);
    if (album.empty()) {
        return {};
    }
    const bool nome = !voceSelezionata;
    return {.elimina = voceSelezionata && album != AlbumGenerico,
            .rinomina = nome,
            .inserisci = nome,
            .ok = modificato};
}

Intestazione CampiDaTesti(std::string_view titolo, std::string_view autore,
                          std::string_view album) {
    return {TestoCampo(titolo), TestoCampo(autore), AlbumDaTesto(album)};
}

std::string ImpedimentoProprieta(const Intestazione& campi) {
    if (CodePoints(campi.Titolo) + CodePoints(campi.Autore) + CodePoints(campi.Album) >
        MassimoCampi) {
        return "Title, author and album are too long: together they can have at most " +
               std::to_string(MassimoCampi) + " characters.";
    }
    return ImpedimentoAlbum(campi.Album);
}

void ModificaProprieta(const Libreria& libreria, ListaBrani& lista, std::int16_t posizione,
                       const Intestazione& campi) {
    PuntatoreOccupato puntatore(libreria.eventi);
    Brano& brano = libreria.brani.Cambia(posizione);
    brano.Titolo = campi.Titolo;
    brano.Autore = campi.Autore;
    brano.Album = campi.Album;
    ScritturaBrani scrittura(libreria);
    scrittura.Scrivi(brano);
    ScriviIndice(scrittura.Indice(), SezioneAlbum, brano.Album, ValoreAlbum);
    lista.AggiornaLista();
    lista.SelezionaBrano(posizione);
    puntatore.Ripristina();
    scrittura.Concludi();
}

}  // namespace sonnel
