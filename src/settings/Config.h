#pragma once

#include "platform/PictureBox.h"

#include <cstdint>
#include <string>

namespace sonnel {

/// The user's preferences. One record for the whole program, filled at start-up.
struct Config {
    Colour ColoreTesto = 8421376;
    Colour ColoreOmbra = 8421504;
    Colour ColoreSelezione = 16777215;
    Colour ColoreSfondo = 0;
    bool Ombra = true;
    std::string FontName = "Arial";
    float FontSize = 24;  ///< points
    bool FontBold = true;
    bool AutoFont = true;
    std::int32_t WinTop = 600;  ///< twips, like the three below
    std::int32_t WinLeft = 0;
    std::int32_t WinWidth = 0;  ///< default: the screen's width
    std::int32_t WinHeight = 5800;
    bool FullScreen = false;
    std::int32_t Compensazione = -1;  ///< tenths of a second; -1: never calibrated
    std::string OpenDir;              ///< karaoke database directory, ends in a separator
    bool Autoplay = true;
};

}  // namespace sonnel
