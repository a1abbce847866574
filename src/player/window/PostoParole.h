#pragma once

#include "platform/Registry.h"
#include "platform/Screen.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace sonnel {

/// The section of the settings in which the lyrics window keeps its own.
inline constexpr const char* SezioneParole = "LyricsWindow";

/// Where the lyrics window is.
struct PostoParole {
    /// In twips, as an ordinary window; nothing: of the usual size, where the desktop puts it.
    std::optional<Rectangle> posto;
    bool intero = false;  ///< it fills the screen that `posto` is on

    bool operator==(const PostoParole&) const = default;
};

/// Where it opens, the main window being on the screen with the index `principale`: as it was
/// closed, or so near to that as can be seen. The first time, and when there are more screens than
/// when it took its place, it fills one that the main window is not on.
[[nodiscard]] PostoParole PostoDaAprire(Registry& registro, const std::vector<Rectangle>& schermi,
                                        std::size_t principale);

/// Remembers where it is closed, and how many screens there were when it took that place. Of one
/// that fills a screen only where that is.
void RicordaPosto(Registry& registro, const Rectangle& posto, bool intero, std::size_t schermi);

/// The nearest place as an ordinary window, in twips, that can be seen on one of the screens.
[[nodiscard]] Rectangle PostoOrdinario(const Rectangle& posto,
                                       const std::vector<Rectangle>& schermi);

}  // namespace sonnel
