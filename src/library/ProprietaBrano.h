#pragma once

#include "library/CaricaIndice.h"
#include "library/ListaBrani.h"
#include "song/LeggiIntestazione.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace sonnel {

/// Which buttons of the song properties can be used.
struct BottoniProprieta {
    bool elimina = false;
    bool rinomina = false;
    bool inserisci = false;
    bool ok = false;
    friend bool operator==(const BottoniProprieta&, const BottoniProprieta&) = default;
};
/// Decides by: whether an entry of the album list is selected, the album box's text, and whether
/// anything was changed. A text of blanks alone counts as empty.
[[nodiscard]] BottoniProprieta AbilitaBottoni(bool voceSelezionata, std::string_view testoAlbum,
                                              bool modificato);

/// The song's fields as the window's texts mean them: without line ends and surrounding spaces.
[[nodiscard]] Intestazione CampiDaTesti(std::string_view titolo, std::string_view autore,
                                        std::string_view album);

/// Why a song cannot have these fields, a sentence; "" when it can.
[[nodiscard]] std::string ImpedimentoProprieta(const Intestazione& campi);

/// Gives the song at this position new fields: in the table, in the index and in its LYK file. A
/// message reports a LYK file that could not be changed. Refills the list and selects the song.
void ModificaProprieta(const Libreria& libreria, ListaBrani& lista, std::int16_t posizione,
                       const Intestazione& campi);

}  // namespace sonnel
