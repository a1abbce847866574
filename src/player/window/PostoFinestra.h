#pragma once

#include "platform/Screen.h"

#include <vector>

namespace sonnel {

/// Where a window opens that was closed at `voluto`: there, if the user can see and take its upper
/// edge on one of the screens, else at the corner of the first one. It is never larger, with a
/// frame of usual size, than the screen it opens on and never narrower than `larghezzaMinima`. All
/// lengths in twips; with no screens the place is taken as it stands.
[[nodiscard]] Rectangle PostoVisibile(const Rectangle& voluto, int larghezzaMinima,
                                      const std::vector<Rectangle>& schermi);

}  // namespace sonnel
