#pragma once

#include "platform/PictureBox.h"
#include "song/Timeline.h"

namespace sonnel {

/// Gives the lyrics the largest font size at which every page of the song fits the width and the
/// height (twips); not below 8 points.
void CarattereMassimo(PictureBox& parole, const Timeline& timeline, int larghezza, int altezza);

/// The height of so many lines of lyrics in the font that is set, in twips.
[[nodiscard]] double AltezzaRighe(PictureBox& parole, int righe);

}  // namespace sonnel
