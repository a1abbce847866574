#include "player/Scena.h"

#include "platform/Text.h"
#include "player/SincroniaParole.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>

namespace sonnel {
namespace {

// Tenths of a second.
constexpr double DurataMassima = 8;  // how long the colour moves through one syllable
constexpr double PausaLunga = 40;
constexpr double UnSecondo = 10;
constexpr int MassimoPunti = 3;

/// Where the song stands: the page and its last syllable.
struct Intorno {
    const std::string* pagina = nullptr;  ///< its text
    bool iniziata = false;                ///< there has been a page with words
    std::int32_t prima = 0;               ///< characters sung before the last syllable
    std::int32_t adesso = 0;              ///< characters sung including the last syllable
    double inizio = 0;                    ///< when the last syllable began
};

std::int32_t Caratteri(const std::vector<std::string>& righe) {
    std::size_t somma = 0;
    for (const std::string& riga : righe) {
        somma += CodePoints(riga) + FineRiga.size();
    }
    return static_cast<std::int32_t>(somma);
}

/// The state after all events shown so far. The count of sung characters never goes back within a
/// page.
Intorno Cerca(const Timeline& timeline) {
    Intorno intorno;
    for (std::int32_t i = 1; i <= timeline.UltimoEvento; ++i) {
        const Evento& evento = timeline.Eventi(static_cast<std::int16_t>(i));
        if (evento.Tipo == TipoEvento::Pagina) {
            intorno.pagina = &evento.Testo;
            intorno.iniziata = intorno.iniziata || !evento.Testo.empty();
            intorno.prima = intorno.adesso = 0;
        } else if (evento.Tipo == TipoEvento::Colore) {
            intorno.prima = intorno.adesso;
            intorno.adesso = std::max(intorno.adesso, ConteggioColore(evento));
            intorno.inizio = evento.Tempo;
        }
    }
    return intorno;
}

/// The next colour event; null when there is none.
const Evento* ProssimaParola(const Timeline& timeline, const std::string* pagina) {
    for (std::int32_t i = timeline.UltimoEvento + 1; i <= timeline.NumEventi(); ++i) {
        const Evento& evento = timeline.Eventi(static_cast<std::int16_t>(i));
        if (evento.Tipo == TipoEvento::Pagina) {
            pagina = &evento.Testo;
        } else if (evento.Tipo == TipoEvento::Colore && pagina != nullptr && !pagina->empty()) {
            return &evento;
        }
    }
    return nullptr;
}

/// The first line with words of the next page, "" when there is none.
std::string ProssimaRiga(const Timeline& timeline) {
    for (std::int32_t i = timeline.UltimoEvento + 1; i <= timeline.NumEventi(); ++i) {
        const Evento& evento = timeline.Eventi(static_cast<std::int16_t>(i));
        if (evento.Tipo == TipoEvento::Pagina && !evento.Testo.empty()) {
            const auto righe = RigheDiPagina(evento.Testo);
            return *std::find_if(righe.begin(), righe.end() - 1,
                                 [](const std::string& riga) { return !riga.empty(); });
        }
    }
    return "";
}

/// The number of characters sung, including the coloured part of the current syllable.
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
    const double secondi = std::max(0.0, (seguente->Tempo - tempo) / UnSecondo);
    return secondi > MassimoPunti ? 0 : static_cast<int>(std::ceil(secondi));
}

/// Whether the last line of the page is being sung.
bool InUltimaRiga(std::vector<std::string> righe, std::int32_t cantati) {
    if (righe.empty()) {
        return false;
    }
    righe.pop_back();
    return cantati > Caratteri(righe);
}

}  // namespace

Scena ScenaA(const Timeline& timeline, double tempo, const MostraScena& mostra) {
    Intorno intorno = Cerca(timeline);
    const Evento* const parola = ProssimaParola(timeline, intorno.pagina);
    Scena scena;
    scena.titolo = mostra.titolo && !intorno.iniziata;
    scena.punti = mostra.punti ? Punti(intorno, tempo, parola) : 0;
    if (intorno.pagina != nullptr && !intorno.pagina->empty()) {
        scena.righe = RigheDiPagina(*intorno.pagina);
        const std::int32_t tutti = Caratteri(scena.righe);
        intorno.prima = std::min(intorno.prima, tutti);
        intorno.adesso = std::min(intorno.adesso, tutti);
        scena.cantati = mostra.flusso ? Cantati(intorno, tempo, parola) : intorno.adesso;
    }
    if (mostra.prossima) {
        scena.prossima = ProssimaRiga(timeline);
        scena.annuncia = InUltimaRiga(scena.righe, intorno.adesso) && !scena.prossima.empty();
    }
    return scena;
}

}  // namespace sonnel
