#pragma once

#include "library/CaricaIndice.h"

#include <cstdint>
#include <filesystem>
#include <string_view>

namespace sonnel {

/// Deletes a song's files from the karaoke directory: those whose name up to its last dot is
/// exactly `nomeFile`, and the words and music that the player finds for it in other letter case. A
/// name that leaves the directory deletes nothing; files that cannot be deleted stay.
void EliminaFileBrano(const std::filesystem::path& directory, std::string_view nomeFile);

/// Asks whether the song at this position is to be deleted; then deletes its files and its entry
/// and loads the index again. False when the user has cancelled.
bool EliminaBrano(const Libreria& libreria, std::int16_t posizione);

}  // namespace sonnel
