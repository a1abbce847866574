#pragma once

#include <QAction>
#include <QToolBar>
#include <QWidget>
#include <functional>

namespace sonnel {

/// Gives a widget the look of the strip with the toolbar at a window's top: light whatever the
/// desktop's theme, for the button images are drawn for it. `more`: style rules of the window's
/// own.
void DressToolStrip(QWidget& strip, const char* more = "");

/// A toolbar in a strip, to be filled with AddToolButton.
[[nodiscard]] QToolBar* AddToolBar(QWidget& strip);

/// Appends a button with a tooltip and the image of this name in resources/toolbar, or a separator
/// where `image` is null. The Tab key reaches buttons; a click leaves the focus where it is.
QAction* AddToolButton(QToolBar& bar, const char* tooltip, const char* image,
                       const std::function<void()>& press);

}  // namespace sonnel
