#pragma once

#include <QWidget>

namespace sonnel {

/// The window that a new dialog belongs to: the modal one or the active one, else, while another
/// program is active or none yet, any that is on the screen. Null when there is none. A dialog ends
/// with its parent, so a splash, which closes itself, is never that window.
[[nodiscard]] QWidget* WindowInUse();

}  // namespace sonnel
