#include "song/LeggiIntestazione.h"
#include "tool/Argomenti.h"
#include "tool/Comandi.h"

#include <utility>

namespace sonnel {

Resoconto ComandoHeader(const std::string& file) {
    Intestazione campi;
    Resoconto resoconto;
    if (auto rifiuto = RifiutoNome(file)) {
        resoconto.messaggi.push_back(std::move(*rifiuto));
    } else if (const Result<Intestazione> letta = LeggiIntestazione(FileNominato(file))) {
        campi = *letta;
        resoconto.testo = SuUnaRiga(file) + ": " + SuUnaRiga(campi.Titolo) + " / " +
                          SuUnaRiga(campi.Autore) + " / " + SuUnaRiga(campi.Album) + "\n";
    } else {
        resoconto.messaggi.push_back(letta.error().text);
    }
    resoconto.json = {{"file", file},
                      {"ok", resoconto.messaggi.empty()},
                      {"title", campi.Titolo},
                      {"author", campi.Autore},
                      {"album", campi.Album}};
    return resoconto;
}

}  // namespace sonnel
