#pragma once

#include "platform/midi/TempoMap.h"
#include "song/DividiPagina.h"
#include "song/Sillabe.h"

#include <vector>

namespace sonnel {

/// Lays a song's syllables out in lines and pages: where their marks say or, without marks, at
/// pauses and blanks. No page is empty or has more lines than one shows.
[[nodiscard]] std::vector<PaginaParole> ImpaginaSillabe(Sillabe lette, const TempoMap& tempi);

}  // namespace sonnel
