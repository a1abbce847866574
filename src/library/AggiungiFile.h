#pragma once

#include "library/SincronizzaDB.h"
#include "platform/Result.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace sonnel {

/// How adding songs to the library ended.
struct EsitoAggiunta {
    int aggiunti = 0;
    std::vector<std::pair<std::filesystem::path, std::string>> esclusi;  ///< and why
    int presenti = 0;             ///< songs that were already in the library's directory
    bool annullato = false;       ///< by the user
    bool interrotto = false;      ///< nothing more could be written, as on a full disk
    std::optional<Error> errore;  ///< the index could not be written, and nothing was added
};

/// Adds the songs among files and folders to the library, see RaccoltaBrani and Aggiunta, while the
/// message window is shown; its Cancel stops at the next file. The index is written once, with all
/// songs added until then. The song table and the list are filled again when a song was added.
[[nodiscard]] EsitoAggiunta AggiungiFile(const Libreria& libreria,
                                         const std::vector<std::filesystem::path>& percorsi,
                                         const FinestreDB& finestre);

/// The outcome as a sentence.
[[nodiscard]] std::string Riepilogo(const EsitoAggiunta& esito);

/// The songs that were not added, a line for each.
[[nodiscard]] std::string RigheEsclusi(const EsitoAggiunta& esito);

}  // namespace sonnel
