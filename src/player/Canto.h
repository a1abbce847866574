#pragma once

#include "platform/midi/Performance.h"

#include <optional>
#include <string>
#include <string_view>

namespace sonnel {

/// How a song is sung: what the singer has changed of it.
struct Canto {
    int tonalita = 0;  ///< semitones, -12 to 12
    int tempo = 100;   ///< percent of the original, 50 to 150
    Performance::Melody melodia = Performance::Melody::Normal;

    bool operator==(const Canto&) const = default;
};

/// The same with values out of range at the nearest bound.
[[nodiscard]] Canto EntroLimiti(const Canto& canto);

/// The text that is stored, such as "2 95 soft" (key, tempo, melody), and back. Nothing when the
/// text is not valid.
[[nodiscard]] std::string TestoDaCanto(const Canto& canto);
[[nodiscard]] std::optional<Canto> CantoDaTesto(std::string_view testo);

/// "normal", "soft" or "off", and back.
[[nodiscard]] std::string_view NomeMelodia(Performance::Melody melodia);
[[nodiscard]] std::optional<Performance::Melody> MelodiaDaNome(std::string_view nome);

/// The changes as a text for the user, "" when there are none. `anticipo`: by how many ms the words
/// come earlier.
[[nodiscard]] std::string DescriviCanto(const Canto& canto, int anticipo);

/// A note's name, such as "C4" or "F#3", of a MIDI key.
[[nodiscard]] std::string NomeNota(int tasto);

}  // namespace sonnel
