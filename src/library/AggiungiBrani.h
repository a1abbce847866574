#pragma once

#include "library/CaricaIndice.h"
#include "library/ListaBrani.h"
#include "platform/CommonDialog.h"

#include <filesystem>
#include <vector>

namespace sonnel {

/// Shown for a song whose LYK file is in the karaoke directory already.
inline constexpr const char* BranoGiaPresente =
    "Selected song is already stored in the current database!";
/// Shown for a song that ImpedimentoNome keeps out of the index.
inline constexpr const char* NomeBranoImpossibile =
    "The name of this song's files holds characters that the index of the database can't store! "
    "Rename the LYK and MID file and try again.";

/// Lets the user choose songs of another directory. Imports those with a LYK file: copies LYK and
/// MID file, enters the song in the index, and at the end loads the index again and refills the
/// list. Message boxes report what cannot be added. A failed copy ends the import and leaves
/// nothing of that song; the songs copied before stay. Returns the chosen MIDI files without a LYK
/// file.
[[nodiscard]] std::vector<std::filesystem::path> AggiungiBrani(const Libreria& libreria,
                                                               CommonDialog& dialoghi,
                                                               ListaBrani& lista);

}  // namespace sonnel
