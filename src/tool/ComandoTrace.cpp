#include "platform/files/Files.h"
#include "platform/midi/Sequence.h"
#include "player/DisegnoParole.h"
#include "player/ImpaginazioneParole.h"
#include "player/SincroniaParole.h"
#include "tool/Comandi.h"
#include "tool/LetturaBrano.h"
#include "tool/SuperficieRegistrata.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <optional>
#include <utility>

namespace sonnel {
namespace {

/// For each event, when the first of it and those after it is due, in ms. The entry after the last
/// event stands for never.
std::vector<std::int64_t> PrimeScadenze(const Timeline& timeline, std::int32_t compensazione) {
    constexpr std::int64_t MillisecondiPerDecimo = 100;
    const auto numero = static_cast<std::size_t>(timeline.NumEventi());
    std::vector<std::int64_t> scadenze(numero + 1, std::numeric_limits<std::int64_t>::max());
    for (std::size_t i = numero; i > 0; --i) {
        const std::int64_t tempo = timeline.Eventi(static_cast<std::int16_t>(i)).Tempo;
        scadenze[i - 1] = std::min(scadenze[i], (tempo - compensazione) * MillisecondiPerDecimo);
    }
    return scadenze;
}

/// The song on a virtual sequencer and a display that keeps what is drawn.
class Prova {
  public:
    Prova(Timeline& timeline, const OpzioniTrace& opzioni)
        : timeline_(timeline), intervallo_(opzioni.intervallo) {
        config_.Compensazione = opzioni.compensazione;
    }

    /// Plays it from its start to its end; returns the steps.
    Json Suona(std::int32_t lunghezza);

  private:
    void Parti();
    void Riferisci(std::int64_t posizione);
    void Nota(std::int64_t posizione, TipoEvento tipo);

    Timeline& timeline_;
    std::int64_t intervallo_;
    Config config_;
    MessaggiRaccolti msgBox_;
    CorniceFinta cornice_;
    SuperficieRegistrata superficie_{config_.ColoreSelezione};
    ImpaginazioneParole impaginazione_{config_, timeline_, superficie_, cornice_, msgBox_};
    DisegnoParole disegno_{config_, superficie_, cornice_, impaginazione_};
    SincroniaParole sincronia_{config_, timeline_, disegno_};
    Json passi_ = Json::array();
};

Json Prova::Suona(std::int32_t lunghezza) {
    Parti();
    const std::vector<std::int64_t> scadenze = PrimeScadenze(timeline_, config_.Compensazione);
    // The sequencer plays no more at the song's end. Reports at which nothing can be due are
    // skipped.
    for (std::int64_t posizione = intervallo_; posizione < lunghezza; posizione += intervallo_) {
        const std::int64_t scadenza = scadenze[static_cast<std::size_t>(timeline_.UltimoEvento)];
        if (scadenza >= lunghezza) {
            break;
        }
        if (scadenza > posizione) {
            posizione = (scadenza + intervallo_ - 1) / intervallo_ * intervallo_;
        }
        if (posizione < lunghezza) {
            Riferisci(posizione);
        }
    }
    return std::move(passi_);
}

/// The play command shows what belongs to the song's start.
void Prova::Parti() {
    sincronia_.Risincronizza(0);
    if (timeline_.UltimoEvento > 0) {
        Nota(0, TipoEvento::Pagina);
        if (!superficie_.Cantato().empty()) {
            Nota(0, TipoEvento::Colore);
        }
    }
}

void Prova::Riferisci(std::int64_t posizione) {
    const std::int16_t prima = timeline_.UltimoEvento;
    superficie_.Dimentica();
    sincronia_.ApplicaDovuto(static_cast<std::int32_t>(posizione));
    if (timeline_.UltimoEvento != prima) {
        Nota(posizione, timeline_.Eventi(timeline_.UltimoEvento).Tipo);
    }
}

void Prova::Nota(std::int64_t posizione, TipoEvento tipo) {
    Json passo{{"ms", posizione}, {"kind", static_cast<int>(tipo)}};
    if (tipo == TipoEvento::Pagina) {
        const PaginaMostrata& pagina = disegno_.Pagina();
        passo["lines"] =
            std::vector<std::string>(pagina.Righe.begin(), pagina.Righe.begin() + pagina.NumRighe);
    } else if (tipo == TipoEvento::Colore) {
        passo["lines"] = superficie_.Cantato();
    }
    passi_.push_back(std::move(passo));
}

std::string TestoPassi(const Json& passi) {
    std::string testo;
    for (const Json& passo : passi) {
        testo += std::to_string(passo["ms"].get<std::int64_t>()) + "\t";
        testo += NomeTipo(static_cast<TipoEvento>(passo["kind"].get<int>()));
        testo += "\t";
        std::string righe;
        for (const Json& riga : passo.value("lines", Json::array())) {
            righe += (righe.empty() ? "" : " / ") + SuUnaRiga(riga.get<std::string>());
        }
        testo += righe + "\n";
    }
    return testo;
}

/// How long the song's music lasts, in ms; nothing, and a message, when it cannot be read.
std::optional<std::int32_t> Durata(const FileBrano& brano, std::vector<std::string>& messaggi) {
    const std::filesystem::path mid = brano.mid.value_or(PathFromUtf8(brano.base + ".mid"));
    const Result<SmfFile> musica = LeggiMusica(mid, Utf8FromPath(mid), messaggi);
    if (!musica) {
        messaggi.push_back(musica.error().text);
        return std::nullopt;
    }
    return LengthMs(*musica);
}

}  // namespace

Resoconto ComandoTrace(const std::string& brano, const OpzioniTrace& opzioni) {
    ParoleLette parole = ParoleDelBrano(brano, {".lyk", ".mid"});
    Resoconto resoconto;
    resoconto.messaggi = std::move(parole.messaggi);
    const auto durata = parole.complete ? Durata(parole.file, resoconto.messaggi) : std::nullopt;
    Json passi = durata ? Prova(parole.timeline, opzioni).Suona(*durata) : Json::array();
    resoconto.testo = TestoPassi(passi);
    resoconto.json = {{"file", brano}, {"ok", durata.has_value()}};
    resoconto.json["steps"] = std::move(passi);
    return resoconto;
}

}  // namespace sonnel
