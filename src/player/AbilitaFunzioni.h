#pragma once

#include "platform/midi/MMControl.h"

#include <cstdint>
#include <string_view>

namespace sonnel {

/// Which commands of the main window can be used.
struct StatoComandi {
    bool FileLoad = false;
    bool VisCalibratura = false;
    bool SoundPlay = false;
    bool SoundPause = false;
    bool SoundStop = false;
    bool VisInfo = false;
    bool BottoneOpzioni = false;  ///< the toolbar's Options button; its menu item is always usable
    bool Cursore = false;         ///< the position slider
    bool TimerCursore = false;    ///< the slider follows the song
    bool operator==(const StatoComandi&) const = default;
};

/// The only rule for the commands' states. Depends on the sequencer's mode, file name ("": no song)
/// and position in ms.
[[nodiscard]] StatoComandi AbilitaFunzioni(MciMode modo, std::string_view nomeFile,
                                           std::int32_t posizione);

}  // namespace sonnel
