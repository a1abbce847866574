#pragma once

#include "library/CaricaIndice.h"
#include "library/ListaBrani.h"
#include "ui/basMessage.h"

#include <functional>

namespace sonnel {

/// What the two commands below need besides the library.
struct FinestreDB {
    ListaBrani& lista;
    FinestraMessaggio& messaggio;
    /// Makes the main window stop taking input (false) and take it again (true). The selection
    /// window does the same for itself when the command comes from it.
    std::function<void(bool)> abilitaFinestra;
};

/// "Update index": asks the user, rebuilds the index with a progress message, refills the list and
/// reports the result. The selection is kept by position.
void SincronizzaDB(const Libreria& libreria, const FinestreDB& finestre);

/// "Reload index": loads the index again and refills the list. The selection is kept by position.
void RileggiDB(const Libreria& libreria, ListaBrani& lista);

}  // namespace sonnel
