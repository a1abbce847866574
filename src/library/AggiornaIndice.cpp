#include "library/AggiornaIndice.h"

#include "library/Indice.h"
#include "platform/Files.h"
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
        if (chiave.ends_with(Estensione) && voce->is_regular_file(ignoto)) {
            nome.resize(nome.size() - Estensione.size());
            elenco.push_back({voce->path(), std::move(nome), std::move(chiave)});
        }
    }
    if (errore && errore != std::errc::no_such_file_or_directory &&
        errore != std::errc::not_a_directory) {
        return Error{errore.value(), "Can't list the directory " + Utf8FromPath(directory) + ": " +
                                         errore.message() + "."};
    }
    std::sort(elenco.begin(), elenco.end(), [](const FileLyk& a, const FileLyk& b) {
        return std::tie(a.chiave, a.percorso.native()) < std::tie(b.chiave, b.percorso.native());
    });
    return elenco;
}

/// The base name in folded case.
std::string_view Base(const FileLyk& file) {
    return std::string_view(file.chiave).substr(0, file.chiave.size() - Estensione.size());
}

/// Why the index cannot hold a song of this name; "" when it can.
std::string_view Impedimento(std::string_view nome) {
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

/// Puts into the index what a song's file says.
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
                                       EventiSistema& eventi) {
    std::vector<std::string> saltati;
    const auto salta = [&](const FileLyk& file, std::string_view motivo) {
        saltati.push_back("Can't index the file " + Utf8FromPath(file.percorso) + ": " +
                          std::string(motivo) + ".");
    };
    std::unordered_set<std::string_view> visti;
    for (const FileLyk& file : elenco) {
        if (const std::string_view motivo = Impedimento(file.nome); !motivo.empty()) {
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
            esito.errore = lotto.Commit();
        } else {
            esito.errore = elenco.error();
        }
    }
    if (esito.errore) {
        // The index is as it was, and the table shows what it says.
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
