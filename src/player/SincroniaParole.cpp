#include "player/SincroniaParole.h"

#include "platform/Numbers.h"

#include <algorithm>
#include <limits>

namespace sonnel {
namespace {

constexpr int MillisecondiPerDecimo = 100;
constexpr double QuotaRisincronia = 6;  // divides the compensation of colours in a rebuild

}  // namespace

std::int32_t ConteggioColore(const Evento& evento) {
    const auto n = ReadInteger<std::int32_t>(evento.Testo);
    return n > std::numeric_limits<std::int16_t>::max() ? std::numeric_limits<std::int32_t>::max()
                                                        : std::max(n, 0);
}

SincroniaParole::SincroniaParole(const Config& config, Timeline& timeline, DisegnoParole& disegno)
    : config_(config), timeline_(timeline), disegno_(disegno) {}

void SincroniaParole::Risincronizza(std::int32_t posizione) {
    const double p = posizione / static_cast<double>(MillisecondiPerDecimo);
    std::int16_t ultimo = 0;
    while (ultimo < timeline_.NumEventi() &&
           p >= Soglia(timeline_.Eventi(static_cast<std::int16_t>(ultimo + 1)))) {
        ++ultimo;
    }
    timeline_.UltimoEvento = ultimo;
    Ridisegna();
}

void SincroniaParole::Ridisegna() {
    disegno_.Pulisci();
    std::string_view pagina;
    std::int32_t conteggio = 0;
    for (std::int32_t i = 1; i <= timeline_.UltimoEvento; ++i) {
        const Evento& evento = timeline_.Eventi(static_cast<std::int16_t>(i));
        if (evento.Tipo == TipoEvento::Pagina) {
            pagina = evento.Testo;
            conteggio = 0;
        } else if (evento.Tipo == TipoEvento::Colore) {
            conteggio = ConteggioColore(evento);
        }
    }
    if (timeline_.UltimoEvento > 0) {
        disegno_.MostraPagina(pagina);
        disegno_.ColoraPagina(conteggio, config_.ColoreSelezione);
    }
}

double SincroniaParole::Soglia(const Evento& evento) const {
    const double tempo = evento.Tempo;
    const double compensazione = config_.Compensazione;
    return evento.Tipo == TipoEvento::Pagina
               ? tempo - compensazione
               : RoundHalfEven<std::int32_t>(tempo - compensazione / QuotaRisincronia);
}

void SincroniaParole::ApplicaDovuto(std::int32_t posizione) {
    for (std::int32_t i = timeline_.UltimoEvento + 1; i <= timeline_.NumEventi(); ++i) {
        const auto indice = static_cast<std::int16_t>(i);
        const Evento& evento = timeline_.Eventi(indice);
        const std::int64_t soglia = std::int64_t{evento.Tempo} - config_.Compensazione;
        if (posizione >= soglia * MillisecondiPerDecimo) {
            timeline_.UltimoEvento = indice;
            Applica(evento);
            return;
        }
    }
}

void SincroniaParole::Applica(const Evento& evento) {
    if (evento.Tipo == TipoEvento::Pagina) {
        disegno_.MostraPagina(evento.Testo);
    } else if (evento.Tipo == TipoEvento::Colore) {
        disegno_.ColoraPagina(ConteggioColore(evento), config_.ColoreSelezione);
    }
}

void SincroniaParole::Azzera() {
    timeline_.UltimoEvento = 0;
    disegno_.MostraPagina("");
}

}  // namespace sonnel
