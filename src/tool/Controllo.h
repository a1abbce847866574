#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace sonnel {

/// Something in a song that disturbs a singer.
struct Rilievo {
    std::size_t riga = 0;  ///< as an editor counts lines, from 1; 0: the song as a whole
    std::string cosa;      ///< what is there, what a singer notices, how to mend it
};

/// Looks through the text of a LYK file (UTF-8), in the order of its lines. `musica`: how long the
/// song's music lasts, in ms, where that is known.
[[nodiscard]] std::vector<Rilievo> ControllaTesto(std::string_view testo,
                                                  std::optional<std::int32_t> musica);

}  // namespace sonnel
