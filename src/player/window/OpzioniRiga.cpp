#include "player/window/OpzioniRiga.h"

#include "settings/TestoNumero.h"

#include <cstddef>
#include <utility>

namespace sonnel {
namespace {

/// Sets what one option says; false when its value makes no sense.
bool Imposta(Canto& canto, const std::string& opzione, const std::string& valore) {
    if (opzione == "--melody") {
        const auto melodia = MelodiaDaNome(valore);
        canto.melodia = melodia.value_or(canto.melodia);
        return melodia.has_value();
    }
    const auto numero = Intero(valore);
    (opzione == "--key" ? canto.tonalita : canto.tempo) = numero.value_or(0);
    return numero && canto == EntroLimiti(canto);
}

/// What an option wants; "" for one that is not known.
std::string Voluto(const std::string& opzione) {
    if (opzione == "--key") {
        return "a whole number of semitones from -12 to 12";
    }
    if (opzione == "--tempo") {
        return "a whole number of percent from 50 to 150";
    }
    return opzione == "--melody" ? "normal, soft or off" : "";
}

}  // namespace

Result<OpzioniRiga> LeggiOpzioni(const std::vector<std::string>& argomenti) {
    OpzioniRiga opzioni;
    for (std::size_t i = 0; i < argomenti.size(); ++i) {
        const std::string& argomento = argomenti[i];
        if (const std::string voluto = Voluto(argomento); !voluto.empty()) {
            Canto canto = opzioni.canto.value_or(Canto{});
            const std::string valore = ++i < argomenti.size() ? argomenti[i] : "";
            if (!Imposta(canto, argomento, valore)) {
                std::string frase = argomento;
                frase.append(" needs ").append(voluto).append(", not \"").append(valore);
                return Error{0, frase.append("\".")};
            }
            opzioni.canto = canto;
        } else {
            opzioni.brano += (opzioni.brano.empty() ? "" : " ") + argomento;
        }
    }
    return opzioni;
}

}  // namespace sonnel
