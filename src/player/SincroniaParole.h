#pragma once

#include "player/DisegnoParole.h"
#include "settings/Config.h"
#include "song/Timeline.h"

#include <cstdint>

namespace sonnel {

/// Keeps the lyrics display in step with the music. Positions are milliseconds.
class SincroniaParole {
  public:
    SincroniaParole(const Config& config, Timeline& timeline, DisegnoParole& disegno);

    /// Rebuilds the display for a position.
    void Risincronizza(std::int32_t posizione);
    /// Draws the current page again after a change of its font or place.
    void Ridisegna();
    /// Applies the first event after the last applied one that is due; at most one.
    void ApplicaDovuto(std::int32_t posizione);
    /// Shows nothing and starts again at the first event.
    void Azzera();

  private:
    [[nodiscard]] double Soglia(const Evento& evento) const;
    void Applica(const Evento& evento);

    const Config& config_;
    Timeline& timeline_;
    DisegnoParole& disegno_;
};

/// How many characters a colour event's text counts, decimals rounded: none below 0; more than
/// 32,767 mean the whole page.
[[nodiscard]] std::int32_t ConteggioColore(const Evento& evento);

}  // namespace sonnel
