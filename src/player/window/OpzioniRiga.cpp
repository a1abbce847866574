#include "player/window/OpzioniRiga.h"

#include "settings/TestoNumero.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>
#include <utility>

namespace sonnel {
namespace {

/// An option and its help text.
struct Opzione {
    std::string_view nome;
    std::string_view valore;  ///< its value's name, or its values; "" when it takes none
    std::string_view scopo;
    std::string_view voluto;  ///< what its value must be, for the error
};

constexpr std::array<Opzione, 6> Opzioni = {{
    {"--key", "N", "so many semitones higher, -12 to 12",
     "a whole number of semitones from -12 to 12"},
    {"--tempo", "N", "percent of the song's own tempo, 50 to 150",
     "a whole number of percent from 50 to 150"},
    {"--melody", "normal|soft|off", "how the tune is heard", "normal, soft or off"},
    {"--one", "", "hand the song to the player that runs already", ""},
    {"--help", "", "print this text", ""},
    {"--version", "", "print the version", ""},
}};

constexpr std::string_view Ambiente = R"(
Environment:
  SONNEL_SOUNDFONT   the SoundFont (.sf2 or .sf3) to play with
  SONNEL_AUDIO       "none" plays silently, "file:PATH.wav" writes the sound to a
                     file, anything else names a sound system
  XDG_CONFIG_HOME, XDG_DATA_HOME, XDG_CONFIG_DIRS
                     where the user's settings, the user's library and the
                     machine's settings are
  XDG_RUNTIME_DIR    where players find each other
)";

/// Applies one option; false when its value is invalid.
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

std::string Aiuto() {
    constexpr std::size_t colonna = 29;
    std::string testo =
        "Usage: sonnel [OPTION]... [SONG]\n"
        "Play a song: its LYK or MID file, or a karaoke MIDI file.\n\n";
    for (const Opzione& opzione : Opzioni) {
        std::string riga = "  ";
        riga.append(opzione.nome).append(opzione.valore.empty() ? "" : " ").append(opzione.valore);
        riga.resize(colonna, ' ');
        testo.append(riga).append(opzione.scopo).append("\n");
    }
    return testo.append(Ambiente);
}

std::string Versione() {
    return "sonnel " + std::to_string(SONNEL_VERSION_MAJOR) + "." +
           std::to_string(SONNEL_VERSION_MINOR) + "." + std::to_string(SONNEL_VERSION_REVISION) +
           "\n";
}

}  // namespace

std::optional<std::string> RispostaRiga(const std::vector<std::string>& argomenti) {
    for (const std::string& argomento : argomenti) {
        if (argomento == "--help" || argomento == "--version") {
            return argomento == "--help" ? Aiuto() : Versione();
        }
    }
    return std::nullopt;
}

Result<OpzioniRiga> LeggiOpzioni(const std::vector<std::string>& argomenti) {
    OpzioniRiga opzioni;
    for (std::size_t i = 0; i < argomenti.size(); ++i) {
        const std::string& argomento = argomenti[i];
        const auto nota = std::ranges::find(Opzioni, argomento, &Opzione::nome);
        if (nota == Opzioni.end()) {
            opzioni.brano += (opzioni.brano.empty() ? "" : " ") + argomento;
            continue;
        }
        if (nota->valore.empty()) {
            opzioni.uno |= argomento == "--one";
            continue;
        }
        Canto canto = opzioni.canto.value_or(Canto{});
        const std::string valore = ++i < argomenti.size() ? argomenti[i] : "";
        if (!Imposta(canto, argomento, valore)) {
            std::string frase = argomento;
            frase.append(" needs ").append(nota->voluto).append(", not \"").append(valore);
            return Error{0, frase.append("\".")};
        }
        opzioni.canto = canto;
    }
    return opzioni;
}

}  // namespace sonnel
