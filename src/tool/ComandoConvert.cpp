#include "convert/EstraiParole.h"
#include "convert/ScriviLyk.h"
#include "platform/Environment.h"
#include "platform/Text.h"
#include "platform/files/Files.h"
#include "song/Timeline.h"
#include "tool/Comandi.h"
#include "tool/InOrdine.h"
#include "tool/PianoConversione.h"
#include "tool/Tenta.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <filesystem>
#include <iterator>
#include <system_error>
#include <utility>

namespace sonnel {
namespace {

/// What became of one file.
struct EsitoConversione {
    bool lykScritto = false;
    bool midScritto = false;
    bool intestazione = false;
    bool parole = false;
    bool danneggiato = false;
    int eventi = 0;
    std::string errore;
};

/// The words of the file, or why it cannot be opened.
Result<Estrazione> Estrai(const std::filesystem::path& file, std::chrono::year_month_day oggi) {
    Midifile midifile;
    midifile.SetFileName(file);
    const Result<BaseTempi> base = BaseTempi::Apri(midifile);
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
        if (const auto errore = CopyFilesAtomically({{lavoro.origine, lavoro.mid}})) {
            esito.errore = errore->text;
            // Words that are new would stand in the way of another attempt.
            std::error_code ignorato;
            esito.lykScritto = sovrascrivi || !std::filesystem::remove(lavoro.lyk, ignorato);
            return;
        }
    }
    esito.midScritto = true;
}

void Converti(const Conversione& lavoro, bool sovrascrivi, std::chrono::year_month_day oggi,
              EsitoConversione& esito) {
    esito.errore = lavoro.errore;
    if (!esito.errore.empty()) {
        return;
    }
    const Result<Estrazione> parole = Estrai(lavoro.origine, oggi);
    if (!parole) {
        esito.errore = parole.error().text;
        return;
    }
    esito.intestazione = parole->IntestazioneKaraoke;
    esito.parole = parole->TestoIniziato;
    esito.danneggiato = parole->Danneggiato;
    esito.eventi = parole->NumEventi;
    Scrivi(lavoro, *parole, sovrascrivi, esito);
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
        if (esito.danneggiato) {
            resoconto.messaggi.push_back(lavoro.file +
                                         ": the file is damaged; words may be missing.");
        }
        if (esito.eventi > Timeline::Capienza) {
            resoconto.messaggi.push_back(lavoro.file + ": the player reads at most " +
                                         std::to_string(Timeline::Capienza) +
                                         " events of a song and refuses this one, which has " +
                                         std::to_string(esito.eventi) + ": split it.");
        }
    } else {
        const bool nominato = esito.errore.find(Utf8FromPath(lavoro.origine)) != std::string::npos;
        resoconto.messaggi.push_back(
            nominato ? esito.errore
                     : WithReason("Can't convert the file " + lavoro.file, esito.errore));
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
        [&](std::size_t i) {
            EsitoConversione esito;
            const auto lavoro = [&] { Converti(lavori[i], opzioni.sovrascrivi, oggi, esito); };
            if (auto errore = Tenta(lavori[i].file, lavoro)) {
                esito.errore = std::move(*errore);
            }
            return esito;
        },
        [&](std::size_t i, const EsitoConversione& esito) {
            uscite.Scrivi(Riferisci(lavori[i], esito));
            uscite.Avanza("Converted " + std::to_string(i + 1) + " of " +
                          std::to_string(lavori.size()));
        });
}

}  // namespace sonnel
