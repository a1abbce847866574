#pragma once

#include "platform/Registry.h"
#include "platform/Shell.h"

#include <filesystem>
#include <functional>
#include <string_view>

namespace sonnel {

/// Writes a key of a section of the profile file win.ini. A failure is not reported.
using ScriviWinIni =
    std::function<void(std::string_view sezione, std::string_view chiave, std::string_view valore)>;

/// Makes the program (an absolute path) the one that opens LYK files: in the machine's store, in
/// win.ini and on the desktop. Does so only when the store holds an empty class for ".lyk", as
/// after an installation. Failures are not reported and may leave the association incomplete.
void AssociaLyk(Registry& registro, Shell& shell, const std::filesystem::path& programma,
                const ScriviWinIni& scriviWinIni);

}  // namespace sonnel
