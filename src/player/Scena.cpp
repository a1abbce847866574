#include "player/Scena.h"

#include "platform/Text.h"
#include "player/SincroniaParole.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>
#include <utility>

namespace sonnel {
namespace {

// Tenths of a second.
constexpr double DurataMassima = 8;  // of the colour's way through a syllable
constexpr double PausaLunga = 40;
constexpr double UnSecondo = 10;
constexpr int MassimoPunti = 3;

/// The events around a moment of the song.
struct Intorno {
    const std::string* pagina = nullptr;  ///< its text
    bool iniziata = false;                ///< there has been a page with words
    std::int32_t prima = 0;               ///< characters sung before the last syllable
    std::int32_t adesso = 0;              ///< and with it
    double inizio = 0;                    ///< when it began
    std::int16_t seguente = 1;            ///< the first event that is not due yet
};

Intorno Cerca(const Timeline& timeline, double tempo) {
    Intorno intorno;
    for (; intorno.seguente <= timeline.NumEventi(); ++intorno.seguente) {
        const Evento& evento = timeline.Eventi(intorno.seguente);
        if (tempo < evento.Tempo) {
            break;
        }
        if (evento.Tipo == TipoEvento::Pagina) {
            intorno.pagina = &evento.Testo;
            intorno.iniziata = intorno.iniziata || !evento.Testo.empty();
            intorno.prima = intorno.adesso = 0;
        } else if (evento.Tipo == TipoEvento::Colore) {
            intorno.prima = std::exchange(intorno.adesso, ConteggioColore(evento));
            intorno.inizio = evento.Tempo;
        }
    }
    return intorno;
}

/// The first event of a type from `indice` on; nothing when there is none.
const Evento* Primo(const Timeline& timeline, std::int16_t indice, TipoEvento tipo) {
    for (std::int32_t i = indice; i <= timeline.NumEventi(); ++i) {
        const Evento& evento = timeline.Eventi(static_cast<std::int16_t>(i));
        if (evento.Tipo == tipo && (tipo == TipoEvento::Colore || !evento.Testo.empty())) {
            return &evento;
        }
    }
    return nullptr;
}

/// Characters sung: the last syllable counts as far as the colour has come in it.
double Cantati(const Intorno& intorno, double tempo, const Evento* seguente) {
    const double durata = std::min(
        DurataMassima, seguente != nullptr ? seguente->Tempo - intorno.inizio : DurataMassima);
    const double parte = durata > 0 ? std::clamp((tempo - intorno.inizio) / durata, 0.0, 1.0) : 1.0;
    return intorno.prima + parte * (intorno.adesso - intorno.prima);
}

/// Dots before the next word after a long pause.
int Punti(const Intorno& intorno, double tempo, const Evento* seguente) {
    if (seguente == nullptr || seguente->Tempo - intorno.inizio < PausaLunga) {
        return 0;
    }
    const double secondi = (seguente->Tempo - tempo) / UnSecondo;
    return secondi > MassimoPunti ? 0 : static_cast<int>(std::ceil(secondi));
}

/// Whether the last line of the page is being sung.
bool InUltimaRiga(const std::vector<std::string>& righe, std::int32_t cantati) {
    std::size_t prima = 0;
    for (std::size_t i = 0; i + 1 < righe.size(); ++i) {
        prima += CodePoints(righe[i]) + FineRiga.size();
    }
    return static_cast<std::size_t>(std::max(cantati, 0)) > prima;
}

}  // namespace

std::vector<std::string> RigheDiPagina(const std::string& testo) {
    std::vector<std::string> righe;
    std::size_t da = 0;
    for (std::size_t fine = testo.find(FineRiga); fine != std::string::npos;
         fine = testo.find(FineRiga, da)) {
        righe.push_back(testo.substr(da, fine - da));
        da = fine + FineRiga.size();
    }
    righe.push_back(testo.substr(da));
    return righe;
}

Scena ScenaA(const Timeline& timeline, double tempo, const MostraScena& mostra) {
    const Intorno intorno = Cerca(timeline, tempo);
    const Evento* const parola = Primo(timeline, intorno.seguente, TipoEvento::Colore);
    Scena scena;
    scena.titolo = mostra.titolo && !intorno.iniziata;
    scena.punti = mostra.punti ? Punti(intorno, tempo, parola) : 0;
    if (intorno.pagina != nullptr && !intorno.pagina->empty()) {
        scena.righe = RigheDiPagina(*intorno.pagina);
        scena.cantati = mostra.flusso ? Cantati(intorno, tempo, parola) : intorno.adesso;
    }
    if (mostra.prossima && InUltimaRiga(scena.righe, intorno.adesso)) {
        if (const Evento* pagina = Primo(timeline, intorno.seguente, TipoEvento::Pagina)) {
            scena.prossima = RigheDiPagina(pagina->Testo).front();
        }
    }
    return scena;
}

}  // namespace sonnel
