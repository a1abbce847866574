#include "library/RiscriviIntestazione.h"

#include "platform/Text.h"
#include "platform/files/DirectoryLock.h"
#include "platform/files/Files.h"
#include "platform/files/LineReader.h"
#include "song/Timeline.h"

#include <algorithm>
#include <array>
#include <cerrno>

namespace sonnel {
namespace {

/// The header lines that are still to be written.
class RigheIntestazione {
  public:
    explicit RigheIntestazione(const Intestazione& campi)
        : campi_{{{"*TI", OneLine(campi.Titolo)},
                  {"*AU", OneLine(campi.Autore)},
                  {"*AL", OneLine(campi.Album)}}} {}

    /// Writes the new field in place of its old line; false when the line is not one of these
    /// fields.
    bool Sostituisci(std::string_view riga, std::string& testo) {
        auto* const campo = std::find_if(campi_.begin(), campi_.end(), [&](const Campo& candidato) {
            return riga.starts_with(candidato.sigla);
        });
        if (campo == campi_.end()) {
            return false;
        }
        Scrivi(*campo, testo);
        return true;
    }
    /// Writes the fields that no line had.
    void Completa(std::string& testo) {
        for (Campo& campo : campi_) {
            if (!campo.scritto) {
                Scrivi(campo, testo);
            }
        }
    }

  private:
    struct Campo {
        std::string_view sigla;
        std::string valore;
        bool scritto = false;
    };

    static void Scrivi(Campo& campo, std::string& testo) {
        testo.append(campo.sigla).append(campo.valore).append(FineRiga);
        campo.scritto = true;
    }

    std::array<Campo, 3> campi_;
};

}  // namespace

std::string ConIntestazione(std::string_view testo, const Intestazione& campi) {
    RigheIntestazione intestazione(campi);
    bool corpo = false;
    std::string nuovo;
    LineReader righe(testo);
    while (const auto riga = righe.Next()) {
        if (intestazione.Sostituisci(*riga, nuovo) || riga->empty() || riga->starts_with(';')) {
            continue;
        }
        if (!corpo && riga->starts_with('0')) {
            corpo = true;
            intestazione.Completa(nuovo);
        }
        nuovo.append(*riga).append(FineRiga);
    }
    return nuovo;
}

std::optional<Error> RiscriviIntestazione(const std::filesystem::path& directory,
                                          std::string_view name, const Intestazione& campi) {
    const std::filesystem::path atteso = directory / PathFromUtf8(std::string(name) + ".lyk");
    if (!IsPlainName(name)) {
        return WriteError(atteso, EINVAL);
    }
    return RiscriviIntestazione(FindFile(atteso).value_or(atteso), campi);
}

std::optional<Error> RiscriviIntestazione(const std::filesystem::path& file,
                                          const Intestazione& campi) {
    const DirectoryLock altri(file.parent_path());
    const Result<std::string> letto = ReadFile(file);
    if (!letto) {
        return ReadError(file, letto.error().number);
    }
    const std::string testo = ConIntestazione(DecodeFileText(*letto), campi);
    // A file that is already UTF-8 keeps its encoding: no byte of its body may change.
    const std::string byte =
        letto->starts_with(Utf8Mark) ? std::string(Utf8Mark).append(testo) : EncodeFileText(testo);
    return ReplaceFileWithBackup(file, byte,
                                 {"sonnel.tmp", Utf8FromPath(file.stem()).append(".bak")});
}

}  // namespace sonnel
