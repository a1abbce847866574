#pragma once

#include "platform/Screen.h"

#include <QWidget>

namespace sonnel {

/// Moves a window to the middle of the screen; its size does not change.
void CentraForm(QWidget& finestra, const Screen& schermo);

}  // namespace sonnel
