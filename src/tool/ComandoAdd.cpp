#include "library/Aggiunta.h"
#include "library/Indice.h"
#include "library/RaccoltaBrani.h"
#include "platform/Paths.h"
#include "platform/Text.h"
#include "tool/Comandi.h"
#include "tool/FileNominato.h"
#include "tool/Tenta.h"
#include "ui/basCommon.h"

#include <filesystem>
#include <map>
#include <optional>
#include <system_error>
#include <utility>

namespace sonnel {
namespace {

namespace fs = std::filesystem;

/// A file and the base name of the song that it became or belongs to.
struct Esito {
    std::string file;
    Result<std::string> nome;
};

/// Adds songs to one library.
class Aggiungi {
  public:
    explicit Aggiungi(const std::string& directory)
        : indice_(PercorsoIndice(AggiungiBarra(directory))), aggiunta_(PathFromUtf8(directory)) {}

    [[nodiscard]] ProfileFile& Indice() { return indice_; }
    /// Adds the song of a file, or all songs in a folder.
    void Uno(const std::string& nome);
    [[nodiscard]] std::vector<Esito> Prendi() && { return std::move(esiti_); }
    /// Takes back what was added.
    void Ritira(const Error& errore);

  private:
    void Metti(const std::string& file, FileBrano brano);

    ProfileFile indice_;
    Aggiunta aggiunta_;
    RaccoltaBrani raccolta_;
    std::map<std::string, Result<std::string>> fatti_;  ///< by path without extension
    std::vector<Esito> esiti_;
};

void Aggiungi::Uno(const std::string& nome) {
    const fs::path percorso = CercaFile(nome);
    std::error_code errore;
    const fs::file_status stato = fs::status(percorso, errore);
    raccolta_.Esamina(percorso);
    std::vector<FileBrano> brani = raccolta_.Prendi();
    if (fs::is_directory(stato)) {
        for (FileBrano& brano : brani) {
            const std::string file = Utf8FromPath(brano.lyk ? *brano.lyk : *brano.mid);
            Metti(file, std::move(brano));
        }
        if (brani.empty()) {
            esiti_.push_back({nome, Error{0, "there is no song in it"}});
        }
    } else if (!brani.empty()) {
        Metti(nome, std::move(brani.front()));
    } else if (!fs::is_regular_file(stato)) {
        esiti_.push_back(
            {nome, Error{0, fs::exists(stato) ? "it is no file" : "there is no such file"}});
    } else {
        const auto fatto = fatti_.find(Utf8FromPath(fs::path(percorso).replace_extension()));
        esiti_.push_back({nome, fatto != fatti_.end()
                                    ? fatto->second
                                    : Error{0, "it is neither a LYK nor a MIDI file"}});
    }
}

void Aggiungi::Metti(const std::string& file, FileBrano brano) {
    const std::string base = brano.base;
    Result<std::string> nome = Error{};
    if (auto errore = Tenta(file, [&] { nome = aggiunta_.Aggiungi(indice_, std::move(brano)); })) {
        nome = Error{0, std::move(*errore)};
    }
    fatti_.insert_or_assign(base, nome);
    esiti_.push_back({file, std::move(nome)});
}

void Aggiungi::Ritira(const Error& errore) {
    aggiunta_.Ritira();
    for (Esito& esito : esiti_) {
        if (esito.nome) {
            esito.nome = errore;
        }
    }
}

Resoconto Riferisci(const std::string& file, const Result<std::string>& nome) {
    Resoconto resoconto;
    const std::string errore =
        nome ? "" : WithReason("Can't add the file " + file, nome.error().text);
    resoconto.json = {
        {"file", file}, {"ok", bool(nome)}, {"name", nome ? *nome : ""}, {"error", errore}};
    if (nome) {
        resoconto.testo = SuUnaRiga(file) + ": " + SuUnaRiga(*nome) + "\n";
    } else {
        resoconto.messaggi.push_back(errore);
    }
    return resoconto;
}

/// Adds the files in their order; the index is written at the end.
std::vector<Esito> AggiungiTutti(const std::string& directory, const std::vector<std::string>& file,
                                 Uscite& uscite) {
    Aggiungi aggiungi(directory);
    ProfileFile::Batch lotto(aggiungi.Indice());
    for (std::size_t i = 0; i < file.size(); ++i) {
        aggiungi.Uno(file[i]);
        uscite.Avanza("Added " + std::to_string(i + 1) + " of " + std::to_string(file.size()));
    }
    if (const auto errore = lotto.Commit()) {
        aggiungi.Ritira(*errore);
    }
    return std::move(aggiungi).Prendi();
}

}  // namespace

void ComandoAdd(const std::string& directory, const std::vector<std::string>& file,
                Uscite& uscite) {
    std::optional<Error> rifiuto = RifiutoNome(directory);
    std::error_code errore;
    if (!rifiuto && !fs::is_directory(PathFromUtf8(directory), errore)) {
        rifiuto = Error{0, "there is no directory " + directory};
    }
    if (rifiuto) {
        for (const std::string& nome : file) {
            uscite.Scrivi(Riferisci(nome, *rifiuto));
        }
        return;
    }
    for (const Esito& esito : AggiungiTutti(directory, file, uscite)) {
        uscite.Scrivi(Riferisci(esito.file, esito.nome));
    }
}

}  // namespace sonnel
