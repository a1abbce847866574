#include "library/RiscriviIntestazione.h"
#include "tool/Comandi.h"
#include "tool/FileNominato.h"

namespace sonnel {
namespace {

std::optional<Error> Riscrivi(const std::string& file, const Intestazione& campi) {
    const Result<std::filesystem::path> nominato = FileNominato(file);
    if (!nominato) {
        return nominato.error();
    }
    if (!HaEstensione(file, ".lyk")) {
        // The lines of anything else, such as the song's music, would be torn apart.
        return Error{0, "Can't write the file " + file + ": its name does not end in .lyk."};
    }
    return RiscriviIntestazione(*nominato, campi);
}

}  // namespace

Resoconto ComandoSetHeader(const std::string& file, const Intestazione& campi) {
    const std::optional<Error> errore = Riscrivi(file, campi);
    Resoconto resoconto;
    resoconto.json = {{"file", file}, {"ok", !errore}};
    if (errore) {
        resoconto.messaggi.push_back(errore->text);
    }
    return resoconto;
}

}  // namespace sonnel
