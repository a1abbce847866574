#pragma once

#include "platform/Screen.h"

#include <vector>

namespace sonnel {

/// Where to open a window that was closed at `voluto`: there, if the user can reach its title bar
/// on one of the screens, else at the corner of the first screen. With a usual frame it fits its
/// screen, but it is never narrower than `larghezzaMinima`. All lengths in twips; without any
/// screen `voluto` is returned.
[[nodiscard]] Rectangle PostoVisibile(const Rectangle& voluto, int larghezzaMinima,
                                      const std::vector<Rectangle>& schermi);

}  // namespace sonnel
