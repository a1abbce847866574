#include "player/window/PostoParole.h"

#include "player/window/PostoFinestra.h"
#include "settings/Impostazioni.h"
#include "settings/TestoNumero.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace sonnel {
namespace {

// Twips.
constexpr int LarghezzaMinima = 2400;
constexpr int LarghezzaUsuale = 14400;
constexpr int AltezzaUsuale = 8100;

bool Contiene(const Rectangle& schermo, const Rectangle& posto) {
    return posto.left >= schermo.left && posto.left < schermo.left + schermo.width &&
           posto.top >= schermo.top && posto.top < schermo.top + schermo.height;
}

}  // namespace

Rectangle PostoOrdinario(const Rectangle& posto, const std::vector<Rectangle>& schermi) {
    return PostoVisibile(posto, LarghezzaMinima, schermi);
}

PostoParole PostoDaAprire(Registry& registro, const std::vector<Rectangle>& schermi,
                          std::size_t principale) {
    const auto numero = [&](const char* chiave) {
        return Intero(LeggiImpostazione(registro, SezioneParole, chiave, ""));
    };
    const auto left = numero("Left");
    const auto top = numero("Top");
    const Rectangle ricordato{left.value_or(0), top.value_or(0),
                              numero("Width").value_or(LarghezzaUsuale),
                              numero("Height").value_or(AltezzaUsuale)};
    const auto riempie = [&](const Rectangle& schermo) {
        Rectangle posto =
            PostoOrdinario({schermo.left, schermo.top, ricordato.width, ricordato.height}, schermi);
        posto.left += (schermo.width - posto.width) / 2;
        posto.top += (schermo.height - posto.height) / 2;
        return PostoParole{posto, true};
    };
    const Rectangle* altro = schermi.size() > 1 ? &schermi[principale == 0 ? 1 : 0] : nullptr;
    const bool nuovi = std::cmp_less(numero("Screens").value_or(0), schermi.size());
    if (altro != nullptr && (!left || !top || nuovi)) {
        return riempie(*altro);
    }
    if (!left || !top) {
        return {};
    }
    if (LeggiInterruttore(registro, SezioneParole, "FullScreen", false)) {
        const auto schermo = std::find_if(schermi.begin(), schermi.end(), [&](const Rectangle& s) {
            return Contiene(s, ricordato);
        });
        if (schermo != schermi.end() || altro != nullptr) {
            return riempie(schermo != schermi.end() ? *schermo : *altro);
        }
    }
    return {PostoOrdinario(ricordato, schermi), false};
}

void RicordaPosto(Registry& registro, const Rectangle& posto, bool intero, std::size_t schermi) {
    const auto salva = [&](const char* chiave, std::int32_t numero) {
        SalvaImpostazione(registro, SezioneParole, chiave, TestoNumero(numero));
    };
    salva("Left", posto.left);
    salva("Top", posto.top);
    if (!intero) {
        salva("Width", posto.width);
        salva("Height", posto.height);
    }
    SalvaImpostazione(registro, SezioneParole, "FullScreen", TestoLogico(intero));
    salva("Screens", static_cast<std::int32_t>(schermi));
}

}  // namespace sonnel
