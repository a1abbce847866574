#include "library/Indice.h"

#include "library/Brani.h"
#include "platform/Text.h"
#include "platform/files/Files.h"

#include <algorithm>
#include <cstddef>

namespace sonnel {
namespace {

constexpr std::string_view NomeIndice = "sonnel.snl";
constexpr char Separatore = '|';

/// Takes the text up to the next separator off `resto`; all of it when there is none.
std::string Campo(std::string_view& resto) {
    const std::size_t fine = resto.find(Separatore);
    const std::string_view campo = resto.substr(0, fine);
    resto.remove_prefix(fine == std::string_view::npos ? resto.size() : fine + 1);
    return std::string(campo);
}

}  // namespace

std::filesystem::path PercorsoIndice(std::string_view openDir) {
    const std::filesystem::path atteso = PathFromUtf8(openDir) / NomeIndice;
    return FindFile(atteso).value_or(atteso);
}

bool EsisteIndice(std::string_view openDir) {
    return FindFile(PathFromUtf8(openDir) / NomeIndice).has_value();
}

std::string LeggiIndice(const ProfileFile& indice, std::string_view sezione,
                        std::string_view chiave, std::string_view predefinito) {
    if (!chiave.empty()) {
        std::string valore = indice.Read(sezione, chiave, predefinito);
        valore.resize(FirstCodePoints(valore, MassimoValore).size());
        return valore;
    }
    std::string elenco;
    for (const std::string& nome : indice.Keys(sezione)) {
        elenco.append(nome).append(1, '\0');
    }
    return elenco;
}

void ScriviIndice(ProfileFile& indice, std::string_view sezione, std::string_view chiave,
                  std::string_view valore) {
    if (valore.empty()) {
        (void)indice.Remove(sezione, chiave);
    } else if (chiave.find('=') == std::string_view::npos) {
        (void)indice.Set(sezione, chiave, valore);
    }
}

bool ProssimaChiave(std::string_view& elenco, std::string& chiave) {
    if (elenco.empty() || elenco.front() == '\0') {
        chiave.clear();
        return false;
    }
    const std::size_t fine = elenco.find('\0');
    chiave = elenco.substr(0, fine);
    elenco.remove_prefix(fine == std::string_view::npos ? elenco.size() : fine + 1);
    return true;
}

Intestazione LeggiBrano(const ProfileFile& indice, std::string_view nome) {
    const std::string valore = LeggiIndice(indice, SezioneBrani, nome, "");
    std::string_view resto = valore;
    Intestazione brano;
    brano.Titolo = Campo(resto);
    brano.Autore = Campo(resto);
    brano.Album = resto;
    return brano;
}

void ScriviBrano(ProfileFile& indice, std::string_view nome, std::string_view titolo,
                 std::string_view autore, std::string_view album) {
    ProfileFile::Batch lotto(indice);
    std::string valore(titolo);
    valore.append(1, Separatore).append(autore).append(1, Separatore).append(album);
    ScriviIndice(indice, SezioneBrani, nome, valore);
    if (album != AlbumGenerico) {
        ScriviIndice(indice, SezioneAlbum, album, ValoreAlbum);
    }
    (void)lotto.Commit();
}

std::string_view ImpedimentoNome(std::string_view nome) {
    const bool controllo = std::any_of(nome.begin(), nome.end(), [](char carattere) {
        return static_cast<unsigned char>(carattere) < 0x20U || carattere == '\x7F';
    });
    if (controllo) {
        return "its name holds control characters";
    }
    if (!IsPlainName(nome)) {
        return "its name is no name of a song";
    }
    return nome.find('=') != std::string_view::npos ? "its name holds \"=\"" : "";
}

void RimuoviVoce(ProfileFile& indice, std::string_view nome) {
    ScriviIndice(indice, SezioneBrani, nome, "");
}

void CreaIndice(ProfileFile& indice) {
    ProfileFile::Batch lotto(indice);
    ScriviIndice(indice, SezioneBrani, AlbumGenerico, ValoreAlbum);
    RimuoviVoce(indice, AlbumGenerico);
    ScriviIndice(indice, SezioneAlbum, AlbumGenerico, ValoreAlbum);
    (void)lotto.Commit();
}

void AssicuraIndice(ProfileFile& indice) {
    // Check the batch first, which may have created it: looking for a missing file lists the whole
    // directory.
    if (indice.Keys(SezioneAlbum).empty() && !FindFile(indice.Path())) {
        CreaIndice(indice);
    }
}

void RegistraBrano(ProfileFile& indice, std::string_view nome, const Intestazione& campi) {
    AssicuraIndice(indice);
    (void)indice.Respell(SezioneBrani, nome);
    ScriviBrano(indice, nome, campi.Titolo, campi.Autore, campi.Album);
}

}  // namespace sonnel
