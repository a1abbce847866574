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
    /// In twips, as an ordinary window. Nothing: usual size, placed by the desktop.
    std::optional<Rectangle> posto;
    bool intero = false;  ///< it fills the screen that `posto` is on

    bool operator==(const PostoParole&) const = default;
};

/// Where it opens, while the main window is on the screen with the index `principale`: where it was
/// closed, or as near to that as is visible. The first time, and when a screen has been added since
/// it got its place, it fills a screen without the main window.
[[nodiscard]] PostoParole PostoDaAprire(Registry& registro, const std::vector<Rectangle>& schermi,
                                        std::size_t principale);

/// Stores where it is closed and how many screens there were when it got that place. When it fills
/// a screen, only that screen's place is stored.
void RicordaPosto(Registry& registro, const Rectangle& posto, bool intero, std::size_t schermi);

/// The nearest visible place as an ordinary window, in twips.
[[nodiscard]] Rectangle PostoOrdinario(const Rectangle& posto,
                                       const std::vector<Rectangle>& schermi);

}  // namespace sonnel
