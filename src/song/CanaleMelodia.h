#pragma once

#include "platform/midi/SmfReader.h"
#include "song/Timeline.h"

#include <optional>

namespace sonnel {

/// The tune of a song.
struct CanaleMelodia {
    int canale = 0;    ///< 0 to 15
    int piuBassa = 0;  ///< its lowest note, a MIDI key
    int piuAlta = 0;   ///< its highest
};

/// The channel whose notes start when the words are sung. Nothing when none matches well: most
/// words must have a note, and most notes a word.
[[nodiscard]] std::optional<CanaleMelodia> TrovaMelodia(const SmfFile& file,
                                                        const Timeline& timeline);

}  // namespace sonnel
