#pragma once

#include "platform/Clock.h"
#include "platform/SystemEvents.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

namespace sonnel {

/// Place of a window's top left corner, in twips.
struct Posizione {
    float left = 0;
    float top = 0;
};

/// The place that centres a window of this size on the screen, in twips; negative for a window that
/// is too large.
[[nodiscard]] Posizione CentraForm(float larghezzaSchermo, float altezzaSchermo,
                                   float larghezzaFinestra, float altezzaFinestra);

/// Waits `secondi` seconds while pending window events run. The start counts as the nearest whole
/// second, so the wait is up to half a second longer or shorter.
void Attendi(std::int16_t secondi, const Clock& orologio, SystemEvents& eventi);

/// Replaces every occurrence of `cerca`, left to right, never searching the inserted text again.
/// Returns the number of replacements (32,767 when there are more); an empty `cerca` changes
/// nothing.
std::int16_t SostituisciTesto(std::string& testo, std::string_view cerca,
                              std::string_view sostituisci);

/// The path with a separator at its end; added if missing.
[[nodiscard]] std::string AggiungiBarra(std::string_view percorso);

}  // namespace sonnel
