#pragma once

#include "library/SincronizzaDB.h"
#include "platform/CommonDialog.h"
#include "platform/Environment.h"

#include <cstdint>
#include <functional>

namespace sonnel {

/// What the conversion of a karaoke file works with beside the library; all of it outlives it.
struct PartiKar {
    CommonDialog& dialoghi;
    ListaBrani& lista;
    Environment ambiente;  ///< may set today's date, see DataOdierna
    /// Lets the user edit the song at a position of the table.
    std::function<void(std::int16_t)> ProprietaBrano;
};

/// Lets the user choose a karaoke MIDI file, makes a song of it in the file's directory, and moves
/// that song into the library if the user wants it. Questions and results are message boxes. A step
/// that fails can be tried again; what was written or copied before the end stays.
void ConvertiKar(const Libreria& libreria, const PartiKar& parti);

}  // namespace sonnel
