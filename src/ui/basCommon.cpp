#include "ui/basCommon.h"

#include "platform/Numbers.h"

#include <algorithm>
#include <chrono>
#include <limits>

namespace sonnel {

Posizione CentraForm(float larghezzaSchermo, float altezzaSchermo, float larghezzaFinestra,
                     float altezzaFinestra) {
    return {(larghezzaSchermo - larghezzaFinestra) / 2, (altezzaSchermo - altezzaFinestra) / 2};
}

void Attendi(std::int16_t secondi, const Clock& orologio, SystemEvents& eventi) {
    using std::chrono::milliseconds;
    using Secondi = std::chrono::duration<double>;
    // The time of day only gives the fraction of the second. It jumps at midnight and when the
    // clock is set, so the steady clock measures the wait.
    const double oraDelGiorno = orologio.TimeOfDay();
    const auto partenza = orologio.Steady();
    const Secondi attesa(secondi + RoundHalfEven<std::int32_t>(oraDelGiorno) - oraDelGiorno);
    for (;;) {
        const Secondi resto = attesa - (orologio.Steady() - partenza);
        if (resto < Secondi::zero()) {
            return;
        }
        eventi.WaitPending(std::chrono::duration_cast<milliseconds>(resto) + milliseconds(1));
    }
}

std::int16_t SostituisciTesto(std::string& testo, std::string_view cerca,
                              std::string_view sostituisci) {
    if (cerca.empty()) {
        return 0;
    }
    std::string nuovo;
    std::size_t conta = 0;
    std::size_t inizio = 0;
    for (std::size_t trovato = testo.find(cerca); trovato != std::string::npos;
         trovato = testo.find(cerca, inizio)) {
        nuovo.append(testo, inizio, trovato - inizio).append(sostituisci);
        inizio = trovato + cerca.size();
        ++conta;
    }
    if (conta > 0) {
        nuovo.append(testo, inizio);
        testo = std::move(nuovo);
    }
    constexpr std::size_t Massimo = std::numeric_limits<std::int16_t>::max();
    return static_cast<std::int16_t>(std::min(conta, Massimo));
}

std::string AggiungiBarra(std::string_view percorso) {
    constexpr auto Barra = static_cast<char>(std::filesystem::path::preferred_separator);
    std::string conBarra(percorso);
    if (!conBarra.ends_with(Barra)) {
        conBarra += Barra;
    }
    return conBarra;
}

}  // namespace sonnel
