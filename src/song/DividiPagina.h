#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace sonnel {

/// A syllable, or a part of one, in its line.
struct Pezzo {
    std::int32_t ms = 0;     ///< when it is sung, from the start of the song
    std::int32_t tempo = 0;  ///< the same in tenths of a second
    std::string testo;
};

using RigaParole = std::vector<Pezzo>;
using PaginaParole = std::vector<RigaParole>;

/// The most lines that a page shows.
inline constexpr std::size_t MassimoRighePagina = 4;

/// A silence as long as this ends a page, in ms.
inline constexpr std::int32_t PausaPagina = 4000;

/// Divides the long lines of a page at blanks, and a page of too many lines at pauses or into
/// nearly equal parts. `pagina` has no empty line. Returns pages that can be shown.
[[nodiscard]] std::vector<PaginaParole> DividiPagina(PaginaParole pagina);

/// Cuts the text after the blank at byte `spazio` and returns the rest.
[[nodiscard]] std::string TagliaDopo(std::string& testo, std::size_t spazio);

}  // namespace sonnel
