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

/// Where a window of this size stands when it is centred on the screen; all in twips. A window
/// larger than the screen gets a negative coordinate.
[[nodiscard]] Posizione CentraForm(float larghezzaSchermo, float altezzaSchermo,
                                   float larghezzaFinestra, float altezzaFinestra);

/// Waits `secondi` seconds (half a second more or less, for the start is taken to the whole second)
/// while pending window events run. A wait across midnight ends too.
void Attendi(std::int16_t secondi, const Clock& orologio, SystemEvents& eventi);

/// Replaces every occurrence of `cerca`, left to right, never searching the inserted text again.
/// Returns the number of replacements (32,767 when there are more); an empty `cerca` changes
/// nothing.
std::int16_t SostituisciTesto(std::string& testo, std::string_view cerca,
                              std::string_view sostituisci);

/// The path with the platform's separator at its end, added when it is not there.
[[nodiscard]] std::string AggiungiBarra(std::string_view percorso);

}  // namespace sonnel
