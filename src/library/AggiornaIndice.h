#pragma once

#include "library/CaricaIndice.h"
#include "platform/Result.h"

#include <optional>
#include <string>
#include <vector>

namespace sonnel {

/// What a rebuild could not do; the rebuild itself shows no message.
struct EsitoAggiornamento {
    std::vector<std::string> saltati;  ///< a sentence for each LYK file that was passed over
    std::optional<Error> errore;       ///< the index could not be written and is as it was
};

/// Rebuilds the index from the LYK files of the directory, removes the entries whose LYK file is
/// gone, and replaces the song table. Shows the busy pointer and no message; lets pending events
/// run after every file. Of files whose base names differ only in letter case the first in the
/// order of the listing counts. The entry of a LYK file that cannot be read stays as it is. The
/// index on disk changes once, at the end.
EsitoAggiornamento AggiornaIndice(const Libreria& libreria);

}  // namespace sonnel
