#include "library/AlbumBrani.h"

#include "library/ElencoBrani.h"
#include "library/ScritturaBrani.h"
#include "platform/Text.h"
#include "ui/PuntatoreOccupato.h"
#include "ui/Titoli.h"

namespace sonnel {
namespace {

/// What an album made by renaming has as its value.
constexpr std::string_view ValoreRinominato = "0";

void Avvisa(MsgBox& msgBox, const std::string& testo) {
    (void)msgBox.Show({testo, Icon::Exclamation});
}

bool Conferma(MsgBox& msgBox, const std::string& domanda, Icon icona) {
    return msgBox.Show({domanda, icona, Buttons::OkCancel, 2}) == Answer::Ok;
}

/// The positions of an album's songs.
std::vector<std::int16_t> BraniDi(const TabellaBrani& brani, std::string_view album) {
    std::vector<std::int16_t> posizioni;
    for (int i = 1; i <= brani.NumBrani(); ++i) {
        const auto posizione = static_cast<std::int16_t>(i);
        if (brani.Brani(posizione).Album == album) {
            posizioni.push_back(posizione);
        }
    }
    return posizioni;
}

void Sposta(const std::vector<std::int16_t>& posizioni, std::string_view album, TabellaBrani& brani,
            ScritturaBrani& scrittura) {
    for (const std::int16_t posizione : posizioni) {
        Brano& brano = brani.Cambia(posizione);
        brano.Album = album;
        scrittura.Scrivi(brano);
    }
}

bool EsisteAlbum(const Libreria& libreria, const std::string& nome) {
    const ProfileFile indice(PercorsoIndice(libreria.config.OpenDir));
    return nome == AlbumGenerico || !LeggiIndice(indice, SezioneAlbum, nome, "").empty();
}

bool ConfermaSpostamento(const Libreria& libreria, std::size_t brani) {
    return Conferma(libreria.msgBox,
                    "Selected album has " + std::to_string(brani) +
                        " songs: if you remove it, all songs will be assigned to the \"generic\" "
                        "album. Do you really want to do so?",
                    Icon::Question);
}

}  // namespace

std::string TestoCampo(std::string_view testo) {
    std::string campo = OneLine(testo);
    campo.erase(campo.find_last_not_of(' ') + 1);
    campo.erase(0, campo.find_first_not_of(' '));
    return campo;
}

std::string AlbumDaTesto(std::string_view testo) {
    std::string album = TestoCampo(testo);
    return album == AlbumMostrato(AlbumGenerico) ? std::string(AlbumGenerico) : album;
}

std::string ImpedimentoAlbum(std::string_view album) {
    constexpr std::size_t Massimo = 1000;  // leaves room for title and author in a song's entry
    if (CodePoints(album) > Massimo) {
        return "The album's name is too long: it can have at most " + std::to_string(Massimo) +
               " characters.";
    }
    if (album.find('=') == std::string_view::npos) {
        return "";
    }
    return "The album can't be called \"" + std::string(album) +
           "\": the index of the database can't store names with the character \"=\".";
}

std::vector<std::string> ElencaAlbum(const Libreria& libreria) {
    const ProfileFile indice(PercorsoIndice(libreria.config.OpenDir));
    return indice.Keys(SezioneAlbum);
}

bool InserisciAlbum(const Libreria& libreria, const std::string& nome) {
    if (const std::string motivo = ImpedimentoAlbum(nome); !motivo.empty()) {
        Avvisa(libreria.msgBox, motivo);
        return false;
    }
    ProfileFile indice(PercorsoIndice(libreria.config.OpenDir));
    ScriviIndice(indice, SezioneAlbum, nome, ValoreAlbum);
    return true;
}

bool EliminaAlbum(const Libreria& libreria, ListaBrani& lista, const std::string& album) {
    if (!Conferma(libreria.msgBox, "Remove album \"" + album + "\"?", Icon::Question)) {
        return false;
    }
    const std::vector<std::int16_t> posizioni = BraniDi(libreria.brani, album);
    if (!posizioni.empty() && !ConfermaSpostamento(libreria, posizioni.size())) {
        return false;
    }
    PuntatoreOccupato puntatore(libreria.eventi);
    ScritturaBrani scrittura(libreria);
    Sposta(posizioni, AlbumGenerico, libreria.brani, scrittura);
    if (!posizioni.empty()) {
        lista.AggiornaLista();
    }
    ScriviIndice(scrittura.Indice(), SezioneAlbum, album, "");
    puntatore.Ripristina();
    scrittura.Concludi();
    return true;
}

bool RinominaAlbum(const Libreria& libreria, ListaBrani& lista, const std::string& vecchio,
                   const std::string& nuovo) {
    std::string motivo = ImpedimentoAlbum(nuovo);
    if (EsisteAlbum(libreria, nuovo)) {
        motivo = "Can't reate album \"" + std::string(AlbumMostrato(nuovo)) +
                 "\" because it already exists!";
    }
    if (vecchio == AlbumGenerico) {
        motivo = "\"<None>\" is no album and can't be renamed: pick the album to be renamed first.";
    }
    if (!motivo.empty()) {
        Avvisa(libreria.msgBox, motivo);
        return false;
    }
    if (!Conferma(libreria.msgBox,
                  "Rename album \"" + vecchio + "\" in \"" + nuovo +
                      "\" and assign to it currently assigned songs?",
                  Icon::None)) {
        return false;
    }
    PuntatoreOccupato puntatore(libreria.eventi);
    ScritturaBrani scrittura(libreria);
    Sposta(BraniDi(libreria.brani, vecchio), nuovo, libreria.brani, scrittura);
    lista.AggiornaLista();
    ScriviIndice(scrittura.Indice(), SezioneAlbum, vecchio, "");
    ScriviIndice(scrittura.Indice(), SezioneAlbum, nuovo, ValoreRinominato);
    puntatore.Ripristina();
    scrittura.Concludi();
    return true;
}

}  // namespace sonnel
