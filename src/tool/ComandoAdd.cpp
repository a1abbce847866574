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
#include <optional>
#include <system_error>
#include <utility>

namespace sonnel {
namespace {

namespace fs = std::filesystem;

/// Adds songs to one library.
class Aggiungi {
  public:
    explicit Aggiungi(const std::string& directory)
        : indice_(PercorsoIndice(AggiungiBarra(directory))), aggiunta_(PathFromUtf8(directory)) {}

    [[nodiscard]] ProfileFile& Indice() { return indice_; }
    /// The base name of the song that the file became.
    [[nodiscard]] Result<std::string> Uno(const std::string& file);

  private:
    ProfileFile indice_;
    Aggiunta aggiunta_;
    RaccoltaBrani raccolta_;
};

Result<std::string> Aggiungi::Uno(const std::string& file) {
    const Result<fs::path> nominato = FileNominato(file);
    if (!nominato) {
        return nominato.error();
    }
    std::error_code errore;
    const fs::file_status stato = fs::status(*nominato, errore);
    if (!fs::is_regular_file(stato)) {
        return Error{0, fs::exists(stato) ? "it is no file" : "there is no such file"};
    }
    raccolta_.Esamina(*nominato);
    std::vector<FileBrano> brani = raccolta_.Prendi();
    if (brani.empty()) {
        return Error{0, "it is neither a LYK nor a MIDI file, or its song was added just now"};
    }
    return aggiunta_.Aggiungi(indice_, std::move(brani.front()));
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
std::vector<Result<std::string>> AggiungiTutti(const std::string& directory,
                                               const std::vector<std::string>& file,
                                               Uscite& uscite) {
    std::vector<Result<std::string>> nomi;
    Aggiungi aggiungi(directory);
    ProfileFile::Batch lotto(aggiungi.Indice());
    for (const std::string& uno : file) {
        Result<std::string> nome = Error{};
        if (auto errore = Tenta(uno, [&] { nome = aggiungi.Uno(uno); })) {
            nome = Error{0, std::move(*errore)};
        }
        nomi.push_back(std::move(nome));
        uscite.Avanza("Added " + std::to_string(nomi.size()) + " of " +
                      std::to_string(file.size()));
    }
    if (const auto errore = lotto.Commit()) {
        for (Result<std::string>& nome : nomi) {
            nome = nome ? Result<std::string>(*errore) : nome;
        }
    }
    return nomi;
}

}  // namespace

void ComandoAdd(const std::string& directory, const std::vector<std::string>& file,
                Uscite& uscite) {
    std::optional<Error> rifiuto = RifiutoNome(directory);
    std::error_code errore;
    if (!rifiuto && !fs::is_directory(PathFromUtf8(directory), errore)) {
        rifiuto = Error{0, "there is no directory " + directory};
    }
    const std::vector<Result<std::string>> nomi =
        rifiuto ? std::vector<Result<std::string>>(file.size(), *rifiuto)
                : AggiungiTutti(directory, file, uscite);
    for (std::size_t i = 0; i < file.size(); ++i) {
        uscite.Scrivi(Riferisci(file[i], nomi[i]));
    }
}

}  // namespace sonnel
