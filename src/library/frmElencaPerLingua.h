#pragma once

#include "library/ElencoBrani.h"
#include "ui/CercaRighe.h"

#include <vector>

namespace sonnel {

/// The lines of all songs in the order of the user's language, letter case not counting; equal ones
/// in the order of the table.
[[nodiscard]] std::vector<RigaElenco> ElencaPerLingua(const TabellaBrani& brani, Ordine ordine);

}  // namespace sonnel
