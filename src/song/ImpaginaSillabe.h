#pragma once

#include "platform/midi/TempoMap.h"
#include "song/DividiPagina.h"
#include "song/Sillabe.h"

#include <vector>

namespace sonnel {

/// Lays a song's syllables out in lines and pages: at their marks or, if there are none, at pauses
/// and blanks. No page is empty or has too many lines.
[[nodiscard]] std::vector<PaginaParole> ImpaginaSillabe(Sillabe lette, const TempoMap& tempi);

}  // namespace sonnel
