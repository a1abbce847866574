#pragma once

#include <cstdint>

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

}  // namespace sonnel
