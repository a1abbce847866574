#include "song/LeggiIntestazione.h"
#include "tool/Comandi.h"
#include "tool/FileNominato.h"

namespace sonnel {

Resoconto ComandoHeader(const std::string& file) {
    const Result<std::filesystem::path> nominato = FileNominato(file);
    const Result<Intestazione> letta = nominato ? LeggiIntestazione(*nominato) : nominato.error();
    const Intestazione campi = letta ? *letta : Intestazione{};
    Resoconto resoconto;
    if (letta) {
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
