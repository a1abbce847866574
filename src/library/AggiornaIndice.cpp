#include "library/AggiornaIndice.h"

#include "library/Indice.h"
#include "platform/Paths.h"
#include "platform/Text.h"
#include "platform/files/Directory.h"
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
    std::string file;    ///< its name in the directory
    std::string chiave;  ///< the same in folded case

    /// Without extension.
    [[nodiscard]] std::string_view Nome() const {
        return std::string_view(file).substr(0, file.rfind('.'));
    }
};

/// The LYK files of the directory, in any letter case.
Result<std::vector<FileLyk>> ElencaLyk(const fs::path& directory) {
    std::vector<FileLyk> elenco;
    const auto aggiungi = [&elenco](std::string_view nome, EntryKind tipo) {
        std::string chiave = FoldCase(nome);
        // An entry of unknown kind may be a file: if it cannot be read it is skipped later and
        // keeps its entry.
        const bool file = tipo == EntryKind::File || tipo == EntryKind::Unknown;
        if (file && chiave.ends_with(Estensione)) {
            elenco.push_back({std::string(nome), std::move(chiave)});
        }
    };
    const std::error_code errore = ListDirectory(directory, aggiungi);
    if (errore && errore != std::errc::no_such_file_or_directory &&
        errore != std::errc::not_a_directory) {
        return Error{errore.value(), "Can't list the directory " + Utf8FromPath(directory) + ": " +
                                         errore.message() + "."};
    }
    return elenco;
}

void OrdinaPerNome(std::vector<FileLyk>& elenco) {
    std::sort(elenco.begin(), elenco.end(), [](const FileLyk& a, const FileLyk& b) {
        // The player opens the file with the extension in small letters first.
        const bool altraA = !a.file.ends_with(Estensione);
        const bool altraB = !b.file.ends_with(Estensione);
        return std::tie(a.chiave, altraA, a.file) < std::tie(b.chiave, altraB, b.file);
    });
}

/// Puts the header of a song's file into the index.
std::optional<Error> Registra(ProfileFile& indice, const fs::path& file, std::string_view nome) {
    const Result<Intestazione> letta = LeggiIntestazione(file);
    if (!letta) {
        return letta.error();
    }
    // The index must spell the name like the file: the song's files are looked up by it.
    (void)indice.Respell(SezioneBrani, nome);
    ScriviBrano(indice, nome, letta->Titolo, letta->Autore, letta->Album);
    return std::nullopt;
}

/// First phase: headers into the index, in the order of the names. Returns a sentence for each
/// skipped file.
std::vector<std::string> RegistraTutti(ProfileFile& indice, const std::vector<FileLyk>& elenco,
                                       const fs::path& directory, SystemEvents& eventi) {
    std::vector<std::string> saltati;
    const auto salta = [&](const fs::path& file, std::string_view motivo) {
        saltati.push_back("Can't index the file " + Utf8FromPath(file) + ": " +
                          std::string(motivo) + ".");
    };
    std::string_view precedente;
    for (const FileLyk& voce : elenco) {
        const fs::path file = directory / PathFromUtf8(voce.file);
        const std::string_view nome = voce.Nome();
        if (const std::string_view motivo = ImpedimentoNome(nome); !motivo.empty()) {
            salta(file, motivo);
        } else if (voce.chiave == precedente) {
            salta(file, "another song's name differs only in letter case");
        } else if (std::optional<Error> errore = Registra(indice, file, nome)) {
            saltati.push_back(std::move(errore->text));
        }
        precedente = voce.chiave;
        eventi.RunPending();
    }
    return saltati;
}

/// Second phase: index into the table, without the songs whose LYK file is gone.
void RiempiTabella(ProfileFile& indice, const std::vector<FileLyk>& presenti,
                   const Libreria& libreria) {
    std::unordered_set<std::string_view, FoldedHash, FoldedEqual> basi(presenti.size());
    for (const FileLyk& file : presenti) {
        basi.insert(file.Nome());
    }
    libreria.brani.Azzera();
    for (std::string& chiave : indice.Keys(SezioneBrani)) {
        if (basi.contains(chiave)) {
            Intestazione voce = LeggiBrano(indice, chiave);
            ScriviIndice(indice, SezioneAlbum, voce.Album, ValoreAlbum);
            libreria.brani.InserisciBrano({std::move(chiave), std::move(voce.Titolo),
                                           std::move(voce.Autore), std::move(voce.Album)});
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
            OrdinaPerNome(*elenco);
            esito.saltati = RegistraTutti(indice, *elenco, directory, libreria.eventi);
            // Files may have been added or removed meanwhile.
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
        // The index is unchanged: fill the table from its content.
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
