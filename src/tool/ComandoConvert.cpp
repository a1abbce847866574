#include "convert/EstraiParole.h"
#include "convert/ScriviLyk.h"
#include "platform/Environment.h"
#include "platform/Files.h"
#include "song/Timeline.h"
#include "tool/Argomenti.h"
#include "tool/Comandi.h"
#include "tool/InOrdine.h"
#include "tool/PianoConversione.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <iterator>

namespace sonnel {
namespace {

/// What became of one file.
struct EsitoConversione {
    bool lykScritto = false;
    bool midScritto = false;
    bool intestazione = false;
    bool parole = false;
    int eventi = 0;
    std::string errore;
};

/// The words of the file, or why it cannot be opened.
Result<Estrazione> Estrai(const std::string& file, std::chrono::year_month_day oggi) {
    Midifile midifile;
    midifile.SetFileName(PathFromUtf8(file));
    if (auto errore = midifile.SetAction(MidifileAction::Open)) {
        return *errore;
    }
    const Result<BaseTempi> base = BaseTempi::Leggi(midifile);
    if (!base) {
        return base.error();
    }
    return EstraiParole(midifile, *base, oggi);
}

void Scrivi(const Conversione& lavoro, const Estrazione& parole, bool sovrascrivi,
            EsitoConversione& esito) {
    if (const auto errore = ScriviLyk(lavoro.lyk, parole.Testo, sovrascrivi)) {
        esito.errore = errore->text;
        return;
    }
    esito.lykScritto = true;
    if (!parole.Accettata()) {
        esito.errore = parole.Errore ? parole.Errore->text : KarNonAccettato;
        return;
    }
    if (lavoro.copiaMid) {
        if (const auto errore = CopyFilesAtomically({{PathFromUtf8(lavoro.file), lavoro.mid}})) {
            esito.errore = errore->text;
            return;
        }
    }
    esito.midScritto = true;
}

EsitoConversione Converti(const Conversione& lavoro, bool sovrascrivi,
                          std::chrono::year_month_day oggi) {
    EsitoConversione esito;
    esito.errore = lavoro.errore;
    if (!esito.errore.empty()) {
        return esito;
    }
    const Result<Estrazione> parole = Estrai(lavoro.file, oggi);
    if (!parole) {
        esito.errore = parole.error().text;
        return esito;
    }
    esito.intestazione = parole->IntestazioneKaraoke;
    esito.parole = parole->TestoIniziato;
    esito.eventi = parole->Righe.Eventi();
    Scrivi(lavoro, *parole, sovrascrivi, esito);
    return esito;
}

Resoconto Riferisci(const Conversione& lavoro, const EsitoConversione& esito) {
    const std::string lyk = esito.lykScritto ? Utf8FromPath(lavoro.lyk) : "";
    const std::string mid = esito.midScritto ? Utf8FromPath(lavoro.mid) : "";
    Resoconto resoconto;
    resoconto.json = {{"file", lavoro.file},
                      {"ok", esito.errore.empty()},
                      {"lyk", lyk},
                      {"mid", mid},
                      {"karaokeHeader", esito.intestazione},
                      {"lyricsStarted", esito.parole},
                      {"error", esito.errore}};
    if (esito.errore.empty()) {
        resoconto.testo =
            SuUnaRiga(lavoro.file) + ": " + SuUnaRiga(lyk) + ", " + SuUnaRiga(mid) + "\n";
        if (esito.eventi > Timeline::Capienza) {
            resoconto.messaggi.push_back(lavoro.file + ": the player reads at most " +
                                         std::to_string(Timeline::Capienza) +
                                         " events of a song and refuses this one, which has " +
                                         std::to_string(esito.eventi) + ": split it.");
        }
    } else {
        resoconto.messaggi.push_back(ConNome(lavoro.file, esito.errore));
    }
    return resoconto;
}

}  // namespace

void ComandoConvert(const std::vector<std::string>& file, const OpzioniConvert& opzioni,
                    Uscite& uscite) {
    PianoConversione piano(opzioni.directory, opzioni.sovrascrivi);
    std::vector<Conversione> lavori;
    lavori.reserve(file.size());
    std::transform(file.begin(), file.end(), std::back_inserter(lavori),
                   [&](const std::string& nome) { return piano.Prepara(nome); });
    const std::chrono::year_month_day oggi = DataOdierna(ProcessEnvironment);
    InOrdine(
        lavori.size(),
        [&](std::size_t i) { return Converti(lavori[i], opzioni.sovrascrivi, oggi); },
        [&](std::size_t i, const EsitoConversione& esito) {
            uscite.Scrivi(Riferisci(lavori[i], esito));
            uscite.Avanza("Converted " + std::to_string(i + 1) + " of " +
                          std::to_string(lavori.size()));
        });
}

}  // namespace sonnel
