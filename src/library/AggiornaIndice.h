#pragma once

#include "library/CaricaIndice.h"
#include "platform/Result.h"

#include <optional>
#include <string>
#include <vector>

namespace sonnel {

/// What a rebuild could not do; the rebuild itself shows no message.
struct EsitoAggiornamento {
    std::vector<std::string> saltati;  ///< a sentence for each LYK file that was skipped
    std::optional<Error> errore;       ///< why the index could not be written; it is unchanged then
};

/// Reads the headers of all LYK files into the index, drops entries without a LYK file and fills
/// the song table from the result. Shows the busy pointer and no message; lets pending events run
/// after every file. Of files whose base names differ only in letter case the first one listed
/// counts. The entry of an unreadable LYK file stays unchanged. The index on disk is written once,
/// at the end.
EsitoAggiornamento AggiornaIndice(const Libreria& libreria);

}  // namespace sonnel
