#include "library/RiscriviIntestazione.h"
#include "tool/Argomenti.h"
#include "tool/Comandi.h"

#include <utility>

namespace sonnel {

Resoconto ComandoSetHeader(const std::string& file, const Intestazione& campi) {
    Resoconto resoconto;
    if (auto rifiuto = RifiutoNome(file)) {
        resoconto.messaggi.push_back(std::move(*rifiuto));
    } else if (!HaEstensione(file, ".lyk")) {
        // The lines of anything else, such as the song's music, would be torn apart.
        resoconto.messaggi.push_back("Can't write the file " + file +
                                     ": its name does not end in .lyk.");
    } else if (auto errore = RiscriviIntestazione(FileNominato(file), campi)) {
        resoconto.messaggi.push_back(std::move(errore->text));
    }
    resoconto.json = {{"file", file}, {"ok", resoconto.messaggi.empty()}};
    return resoconto;
}

}  // namespace sonnel
