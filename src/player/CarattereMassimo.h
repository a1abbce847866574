#pragma once

#include "platform/PictureBox.h"
#include "song/Timeline.h"

namespace sonnel {

/// Gives the lyrics the largest font size at which every page of the song fits the width and the
/// height (twips); not below 8 points.
void CarattereMassimo(PictureBox& parole, const Timeline& timeline, int larghezza, int altezza);

}  // namespace sonnel
