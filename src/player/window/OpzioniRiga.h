#pragma once

#include "platform/Result.h"
#include "player/Canto.h"

#include <optional>
#include <string>
#include <vector>

namespace sonnel {

/// A parsed command line: the options, and the song that all other arguments name.
struct OpzioniRiga {
    std::optional<Canto> canto;  ///< of --key, --tempo and --melody
    bool uno = false;            ///< --one: the player that runs already gets the song
    std::string brano;           ///< the other arguments, blanks between them
};

/// The text to print instead of starting the player: help or version, whichever comes first in the
/// arguments; nothing when neither does.
[[nodiscard]] std::optional<std::string> RispostaRiga(const std::vector<std::string>& argomenti);

/// Takes the known options and their values out of the program's arguments. The error's text is a
/// sentence about the first invalid value.
[[nodiscard]] Result<OpzioniRiga> LeggiOpzioni(const std::vector<std::string>& argomenti);

}  // namespace sonnel
