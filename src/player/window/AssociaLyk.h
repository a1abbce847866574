#pragma once

#include "platform/Registry.h"
#include "platform/Shell.h"

#include <filesystem>
#include <functional>
#include <string_view>

namespace sonnel {

/// Writes a key of a section of the profile file win.ini. A failure is silent.
using ScriviWinIni =
    std::function<void(std::string_view sezione, std::string_view chiave, std::string_view valore)>;

/// Makes the program, an absolute path, the one that opens LYK files: in the machine's store, in
/// win.ini and with the desktop. Only when the store holds an empty class for ".lyk", as it does
/// after the installation; a missing or another one leaves everything as it is. Failures are silent
/// and may leave the association incomplete.
void AssociaLyk(Registry& registro, Shell& shell, const std::filesystem::path& programma,
                const ScriviWinIni& scriviWinIni);

}  // namespace sonnel
