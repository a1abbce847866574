#pragma once

#include "library/Brani.h"
#include "platform/MsgBox.h"
#include "platform/SystemEvents.h"
#include "platform/files/ProfileFile.h"
#include "settings/Config.h"

#include <filesystem>
#include <functional>
#include <system_error>

namespace sonnel {

/// What looking for the index has found.
enum class StatoIndice {
    Presente,
    Assente,           ///< no index, or no directory
    DispositivoPerso,  ///< the device is unavailable
    UnitaNonPronta,    ///< the drive is not ready: asking again may help
};

/// The state of the index that an error of the file functions, or none, means.
[[nodiscard]] StatoIndice StatoDaErrore(const std::error_code& errore);

/// Looks for the file on disk and whether it can be read.
[[nodiscard]] StatoIndice CercaIndice(const std::filesystem::path& indice);

/// Whether the directory is there and can be listed.
[[nodiscard]] bool Accessibile(const std::filesystem::path& directory);

/// What the library's operations work with; all of it must outlive them. The directory is the one
/// in the settings when an operation begins.
struct Libreria {
    const Config& config;
    TabellaBrani& brani;
    MsgBox& msgBox;
    SystemEvents& eventi;
    std::function<StatoIndice(const std::filesystem::path&)> cercaIndice = CercaIndice;
};

/// Replaces the song table with the content of the index, without looking at the songs' files. A
/// missing directory, drive or index is reported in a message box and leaves the table empty; so is
/// a library of more songs than the table holds, of which the first are loaded. Does not let
/// pending events run.
void CaricaIndice(const Libreria& libreria);

/// Fills the table with all songs of the index; a batch should be open on it.
void CaricaTabella(const ProfileFile& indice, TabellaBrani& brani);

/// Reports how many songs the table could not hold, if there are any.
void AvvisaEsclusi(const Libreria& libreria);

}  // namespace sonnel
