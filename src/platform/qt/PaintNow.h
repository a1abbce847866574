#pragma once

#include <QWidget>

namespace sonnel {

/// Paints a window that has just been shown, before work that keeps the event loop busy begins.
/// Waits for the window system to show it, a fifth of a second at most.
void PaintNow(QWidget& window);

}  // namespace sonnel
