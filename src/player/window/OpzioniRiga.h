#pragma once

#include "platform/Result.h"
#include "player/Canto.h"

#include <optional>
#include <string>
#include <vector>

namespace sonnel {

/// What a command line says: options, and the song that all other arguments name.
struct OpzioniRiga {
    std::optional<Canto> canto;  ///< of --key, --tempo and --melody
    bool uno = false;            ///< --one: the player that runs already gets the song
    std::string brano;           ///< the other arguments, blanks between them
};

/// What to print instead of starting the player: the help or the version, whichever is asked for
/// first, whatever else the arguments say.
[[nodiscard]] std::optional<std::string> RispostaRiga(const std::vector<std::string>& argomenti);

/// Takes the known options and their values out of the program's arguments. The error's text is a
/// sentence about the first value that makes no sense.
[[nodiscard]] Result<OpzioniRiga> LeggiOpzioni(const std::vector<std::string>& argomenti);

}  // namespace sonnel
