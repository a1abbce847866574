#include "convert/EstraiParole.h"
#include "convert/ScriviLyk.h"
#include "platform/Environment.h"
#include "platform/Text.h"
#include "platform/files/Files.h"
#include "song/Timeline.h"
#include "tool/Comandi.h"
#include "tool/ConversioneEsatta.h"
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

/// Whether the file has lyric events, where others keep their words.
bool HaVersi(Midifile& midifile) {
    for (int traccia = 1; traccia <= midifile.NumTracks(); ++traccia) {
        midifile.SetTrack(traccia);
        for (int evento = 1; evento <= midifile.NumEvents(); ++evento) {
            midifile.SetEvent(evento);
            if (midifile.Status() == kMeta && midifile.MetaType() == kMetaLyric) {
                return true;
            }
        }
    }
    return false;
}

/// Why the words are no song: a sentence with the file's name; "" when they are.
std::string Rifiuto(const std::string& file, const Estrazione& parole, Midifile& midifile) {
    if (parole.Accettata()) {
        return "";
    }
    if (parole.Errore) {
        return parole.Errore->text;
    }
    std::string motivo = "it has no words that begin with \\ or /; --exact reads others too";
    if (parole.TestoIniziato) {
        motivo = "it does not say that it is a karaoke file (@K)";
    } else if (HaVersi(midifile)) {
        motivo = "its words are lyric events, which only --exact reads";
    }
    return WithReason("Can't convert the file " + file, motivo);
}

void Scrivi(const Conversione& lavoro, const Estrazione& parole, bool sovrascrivi,
            EsitoConversione& esito) {
    if (const auto errore = ScriviLyk(lavoro.lyk, parole.Testo, sovrascrivi)) {
        esito.errore = errore->text;
        return;
    }
    esito.lykScritto = true;
    if (!parole.Accettata()) {
        return;
    }
    if (lavoro.copiaMid) {
        if (const auto errore = CopyFilesAtomically({{lavoro.origine, lavoro.mid}})) {
            esito.errore = errore->text;
            RitiraParole(lavoro, sovrascrivi, esito);
            return;
        }
    }
    esito.midScritto = true;
}

void Converti(const Conversione& lavoro, bool sovrascrivi, std::chrono::year_month_day oggi,
              EsitoConversione& esito) {
    Midifile midifile;
    midifile.SetFileName(lavoro.origine);
    const Result<BaseTempi> base = BaseTempi::Apri(midifile);
    if (!base) {
        esito.errore = base.error().text;
        return;
    }
    const Estrazione parole = EstraiParole(midifile, *base, oggi);
    esito.intestazione = parole.IntestazioneKaraoke;
    esito.parole = parole.TestoIniziato;
    esito.danneggiato = parole.Danneggiato;
    esito.eventi = parole.NumEventi;
    esito.errore = Rifiuto(lavoro.file, parole, midifile);
    Scrivi(lavoro, parole, sovrascrivi, esito);
}

/// What the player makes of a song that was converted, where that is not all of it.
std::vector<std::string> Avvertimenti(const std::string& file, const EsitoConversione& esito) {
    std::vector<std::string> frasi;
    if (esito.danneggiato) {
        frasi.push_back(file + ": the file is damaged; words may be missing.");
    }
    if (esito.eventi > Timeline::Capienza) {
        frasi.push_back(file + ": the player reads at most " + std::to_string(Timeline::Capienza) +
                        " events of a song and refuses this one, which has " +
                        std::to_string(esito.eventi) + ": split it.");
    }
    return frasi;
}

const char* NomeGenere(GenereParole genere) {
    switch (genere) {
        case GenereParole::Testi:
            return "text";
        case GenereParole::Versi:
            return "lyric";
        case GenereParole::Nessuno:
            break;
    }
    return "";
}

Resoconto Riferisci(const Conversione& lavoro, const EsitoConversione& esito, bool esatta) {
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
    if (esatta) {
        resoconto.json["words"] = NomeGenere(esito.genere);
    }
    if (esito.errore.empty()) {
        resoconto.testo =
            SuUnaRiga(lavoro.file) + ": " + SuUnaRiga(lyk) + ", " + SuUnaRiga(mid) + "\n";
        resoconto.messaggi = Avvertimenti(lavoro.file, esito);
    } else {
        resoconto.messaggi.push_back(esito.errore);
    }
    return resoconto;
}

}  // namespace

void ComandoConvert(const std::vector<std::string>& file, const OpzioniConvert& opzioni,
                    Uscite& uscite) {
    PianoConversione piano(opzioni.directory, opzioni.sovrascrivi, opzioni.esatta);
    std::vector<Conversione> lavori;
    lavori.reserve(file.size());
    std::transform(file.begin(), file.end(), std::back_inserter(lavori),
                   [&](const std::string& nome) { return piano.Prepara(nome); });
    const std::chrono::year_month_day oggi = DataOdierna(ProcessEnvironment);
    InOrdine(
        lavori.size(),
        [&](std::size_t i) {
            EsitoConversione esito;
            esito.errore = lavori[i].errore;
            const auto lavoro = [&] {
                if (opzioni.esatta) {
                    ConvertiEsatto(lavori[i], opzioni.sovrascrivi, esito);
                } else {
                    Converti(lavori[i], opzioni.sovrascrivi, oggi, esito);
                }
            };
            if (auto errore = esito.errore.empty() ? Tenta(lavori[i].file, lavoro) : std::nullopt) {
                esito.errore = std::move(*errore);
            }
            return esito;
        },
        [&](std::size_t i, const EsitoConversione& esito) {
            uscite.Scrivi(Riferisci(lavori[i], esito, opzioni.esatta));
            uscite.Avanza("Converted " + std::to_string(i + 1) + " of " +
                          std::to_string(lavori.size()));
        });
}

}  // namespace sonnel
