#include "player/Canto.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdlib>

namespace sonnel {
namespace {

constexpr std::array<std::string_view, Performance::Melodies> Melodie{"normal", "soft", "off"};

/// Takes a whole number and the blank after it off a text.
std::optional<int> PrendiNumero(std::string_view& testo) {
    int numero = 0;
    const char* const fine = testo.data() + testo.size();
    const auto [dopo, errore] = std::from_chars(testo.data(), fine, numero);
    if (errore != std::errc() || dopo == fine || *dopo != ' ') {
        return std::nullopt;
    }
    testo.remove_prefix(static_cast<std::size_t>(dopo - testo.data()) + 1);
    return numero;
}

}  // namespace

Canto EntroLimiti(const Canto& canto) {
    return {std::clamp(canto.tonalita, Performance::LowestKey, Performance::HighestKey),
            std::clamp(canto.tempo, Performance::Slowest, Performance::Fastest), canto.melodia};
}

std::string_view NomeMelodia(Performance::Melody melodia) {
    return Melodie.at(static_cast<std::size_t>(melodia));
}

std::optional<Performance::Melody> MelodiaDaNome(std::string_view nome) {
    const auto* const trovata = std::find(Melodie.begin(), Melodie.end(), nome);
    return trovata == Melodie.end()
               ? std::nullopt
               : std::optional(static_cast<Performance::Melody>(trovata - Melodie.begin()));
}

std::string TestoDaCanto(const Canto& canto) {
    return std::to_string(canto.tonalita) + " " + std::to_string(canto.tempo) + " " +
           std::string(NomeMelodia(canto.melodia));
}

std::optional<Canto> CantoDaTesto(std::string_view testo) {
    const auto tonalita = PrendiNumero(testo);
    const auto tempo = PrendiNumero(testo);
    const auto melodia = MelodiaDaNome(testo);
    if (!tonalita || !tempo || !melodia) {
        return std::nullopt;
    }
    const Canto canto{*tonalita, *tempo, *melodia};
    return canto == EntroLimiti(canto) ? std::optional(canto) : std::nullopt;
}

std::string DescriviCanto(const Canto& canto, int anticipo) {
    std::string testo;
    const auto aggiungi = [&testo](const std::string& parte) {
        testo += (testo.empty() ? "" : ", ") + parte;
    };
    if (canto.tonalita != 0) {
        aggiungi("key " + std::string(canto.tonalita > 0 ? "+" : "\u2212") +
                 std::to_string(std::abs(canto.tonalita)));
    }
    if (canto.tempo != 100) {
        aggiungi("tempo " + std::to_string(canto.tempo) + " %");
    }
    if (canto.melodia != Performance::Melody::Normal) {
        aggiungi("melody " + std::string(NomeMelodia(canto.melodia)));
    }
    if (anticipo != 0) {
        aggiungi("words " + std::to_string(std::abs(anticipo)) + " ms " +
                 (anticipo > 0 ? "earlier" : "later"));
    }
    return testo;
}

std::string NomeNota(int tasto) {
    constexpr std::array<std::string_view, 12> Note{"C",  "C#", "D",  "D#", "E",  "F",
                                                    "F#", "G",  "G#", "A",  "A#", "B"};
    const int ottava = tasto / 12 - 1;  // the middle C, key 60, is C4
    return std::string(Note.at(static_cast<std::size_t>(tasto % 12))) + std::to_string(ottava);
}

}  // namespace sonnel
