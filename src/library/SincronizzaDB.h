#pragma once

#include "library/CaricaIndice.h"
#include "ui/basMessage.h"

#include <cstdint>
#include <functional>

namespace sonnel {

/// The list of the song selection window, as the library's operations see it.
class ListaBrani {
  public:
    virtual ~ListaBrani() = default;
    /// Fills the list from the song table again, in its current order.
    virtual void AggiornaLista() = 0;
    /// Selects the line of the song at this position of the table; when no line shows it, the
    /// selection stays as it is.
    virtual void SelezionaBrano(std::int16_t posizione) = 0;
    /// Position of the selected line's song; 0 when no line is selected.
    [[nodiscard]] virtual std::int16_t BranoSelezionato() const = 0;
};

/// What the two commands below work with beside the library.
struct FinestreDB {
    ListaBrani& lista;
    FinestraMessaggio& messaggio;
    /// Makes the main window stop taking input (false) and take it again (true). The selection
    /// window, when the command comes from it, does the same for itself around the call.
    std::function<void(bool)> abilitaFinestra;
};

/// "Update index": asks, rebuilds the index with a progress message, refills the list and reports.
/// The selection is kept by position.
void SincronizzaDB(const Libreria& libreria, const FinestreDB& finestre);

/// "Reload index": loads the index again and refills the list. The selection is kept by position.
void RileggiDB(const Libreria& libreria, ListaBrani& lista);

}  // namespace sonnel
