#pragma once

#include <QWidget>

namespace sonnel {

/// Brings a window that is on the screen to the front with the focus, also when it is an icon; it
/// stays maximised or full-screen. A modal window over it gets the focus.
void BringToFront(QWidget& window);

}  // namespace sonnel
