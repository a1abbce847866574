#include "library/AggiornaIndice.h"

#include "library/Indice.h"
#include "platform/Paths.h"
#include "platform/Text.h"
#include "song/LeggiIntestazione.h"
#include "ui/PuntatoreOccupato.h"

#include <algorithm>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <tuple>
#include <unordered_set>
#include <utility>

namespace sonnel {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view Estensione = ".lyk";

struct FileLyk {
    fs::path percorso;
    std::string nome;    ///< without extension
    std::string chiave;  ///< the file's whole name in folded case
};

/// The LYK files of the directory, in any letter case, ordered by name.
Result<std::vector<FileLyk>> ElencaLyk(const fs::path& directory) {
    std::vector<FileLyk> elenco;
    std::error_code errore;
    fs::directory_iterator voce(directory, errore);
    for (; !errore && voce != fs::directory_iterator(); voce.increment(errore)) {
        std::string nome = Utf8FromPath(voce->path().filename());
        std::string chiave = FoldCase(nome);
        std::error_code ignoto;
        const bool file = voce->is_regular_file(ignoto);
        // What cannot be examined may be there still: it is passed over later, and its entry kept.
        const bool ignota = ignoto && ignoto != std::errc::no_such_file_or_directory;
        if (chiave.ends_with(Estensione) && (file || ignota)) {
            nome.erase(nome.rfind('.'));
            elenco.push_back({voce->path(), std::move(nome), std::move(chiave)});
        }
    }
    if (errore && errore != std::errc::no_such_file_or_directory &&
        errore != std::errc::not_a_directory) {
        return Error{errore.value(), "Can't list the directory " + Utf8FromPath(directory) + ": " +
                                         errore.message() + "."};
    }
    std::sort(elenco.begin(), elenco.end(), [](const FileLyk& a, const FileLyk& b) {
        // The player opens the file with the extension in small letters first.
        const bool altraA = a.percorso.extension() != Estensione;
        const bool altraB = b.percorso.extension() != Estensione;
        return std::tie(a.chiave, altraA, a.percorso.native()) <
               std::tie(b.chiave, altraB, b.percorso.native());
    });
    return elenco;
}

/// The base name in folded case.
std::string_view Base(const FileLyk& file) {
    return std::string_view(file.chiave).substr(0, file.chiave.size() - Estensione.size());
}

/// Puts the header of a song's file into the index.
std::optional<Error> Registra(ProfileFile& indice, const FileLyk& file) {
    const Result<Intestazione> letta = LeggiIntestazione(file.percorso);
    if (!letta) {
        return letta.error();
    }
    // The files of the song are looked for under the name in the index.
    (void)indice.Respell(SezioneBrani, file.nome);
    ScriviBrano(indice, file.nome, letta->Titolo, letta->Autore, letta->Album);
    return std::nullopt;
}

/// First phase: headers into the index. Returns what was passed over.
std::vector<std::string> RegistraTutti(ProfileFile& indice, const std::vector<FileLyk>& elenco,
                                       SystemEvents& eventi) {
    std::vector<std::string> saltati;
    const auto salta = [&](const FileLyk& file, std::string_view motivo) {
        saltati.push_back("Can't index the file " + Utf8FromPath(file.percorso) + ": " +
                          std::string(motivo) + ".");
    };
    std::unordered_set<std::string_view> visti;
    for (const FileLyk& file : elenco) {
        if (const std::string_view motivo = ImpedimentoNome(file.nome); !motivo.empty()) {
            salta(file, motivo);
        } else if (!visti.insert(Base(file)).second) {
            salta(file, "another song's name differs only in letter case");
        } else if (std::optional<Error> errore = Registra(indice, file)) {
            saltati.push_back(std::move(errore->text));
        }
        eventi.RunPending();
    }
    return saltati;
}

/// Second phase: index into the table, without the songs whose LYK file is gone.
void RiempiTabella(ProfileFile& indice, const std::vector<FileLyk>& presenti,
                   const Libreria& libreria) {
    std::unordered_set<std::string_view> basi;
    for (const FileLyk& file : presenti) {
        basi.insert(Base(file));
    }
    libreria.brani.Azzera();
    const std::string elenco = LeggiIndice(indice, SezioneBrani, "", "");
    std::string_view resto = elenco;
    std::string chiave;
    while (ProssimaChiave(resto, chiave)) {
        if (basi.contains(FoldCase(chiave))) {
            Intestazione voce = LeggiBrano(indice, chiave);
            ScriviIndice(indice, SezioneAlbum, voce.Album, ValoreAlbum);
            libreria.brani.InserisciBrano(
                {chiave, std::move(voce.Titolo), std::move(voce.Autore), std::move(voce.Album)});
        } else {
            RimuoviVoce(indice, chiave);
        }
        libreria.eventi.RunPending();
    }
}

}  // namespace

EsitoAggiornamento AggiornaIndice(const Libreria& libreria) {
    const PuntatoreOccupato puntatore(libreria.eventi);
    const fs::path directory = PathFromUtf8(libreria.config.OpenDir);
    ProfileFile indice(PercorsoIndice(libreria.config.OpenDir));
    EsitoAggiornamento esito;
    Result<std::vector<FileLyk>> elenco = ElencaLyk(directory);
    {
        ProfileFile::Batch lotto(indice);
        if (elenco) {
            esito.saltati = RegistraTutti(indice, *elenco, libreria.eventi);
            // Files may have come and gone since.
            elenco = ElencaLyk(directory);
        }
        if (elenco) {
            RiempiTabella(indice, *elenco, libreria);
            if (libreria.brani.NumBrani() == 0 && Accessibile(directory)) {
                AssicuraIndice(indice);
            }
            esito.errore = lotto.Commit();
        } else {
            esito.errore = elenco.error();
        }
    }
    if (esito.errore) {
        // The index is as it was: the table shows its content.
        const ProfileFile::Batch prova(indice);
        if (elenco) {
            RiempiTabella(indice, *elenco, libreria);
        } else {
            CaricaTabella(indice, libreria.brani);
        }
    }
    return esito;
}

}  // namespace sonnel
