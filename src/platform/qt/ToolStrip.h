#pragma once

#include <QAction>
#include <QToolBar>
#include <QWidget>
#include <functional>

namespace sonnel {

/// A toolbar in the strip at a window's top, to be filled with AddToolButton.
[[nodiscard]] QToolBar* AddToolBar(QWidget& strip);

/// Appends a button with a tooltip and the image of this name in resources/toolbar. The Tab key
/// reaches it; a click leaves the focus where it is.
QAction* AddToolButton(QToolBar& bar, const char* tooltip, const char* image,
                       const std::function<void()>& press);

}  // namespace sonnel
