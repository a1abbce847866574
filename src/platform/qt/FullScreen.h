#pragma once

#include <QWidget>

namespace sonnel {

/// Gives a window a state with or without the full screen; `ordinary` is its place and size without
/// a frame for the latter. Where no window manager answers, the window takes its size by itself.
void SetWindowState(QWidget& window, Qt::WindowStates state, const QRect& ordinary);

/// Whether a window takes up its screen, by its state or by itself.
[[nodiscard]] bool FillsScreen(const QWidget& window);

}  // namespace sonnel
