#include "platform/qt/WindowInUse.h"

#include <QApplication>
#include <algorithm>

namespace sonnel {

namespace {

/// Not the splash, which closes by itself, nor a window that takes no focus, which other people
/// look at.
bool MayHaveBoxes(const QWidget& window) {
    return window.windowType() != Qt::SplashScreen &&
           !window.windowFlags().testFlag(Qt::WindowDoesNotAcceptFocus);
}

}  // namespace

QWidget* WindowInUse() {
    for (QWidget* window : {QApplication::activeModalWidget(), QApplication::activeWindow()}) {
        if (window != nullptr && MayHaveBoxes(*window)) {
            return window;
        }
    }
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto visible = std::find_if(windows.begin(), windows.end(), [](const QWidget* widget) {
        return widget->isVisible() && widget->windowType() == Qt::Window && MayHaveBoxes(*widget);
    });
    return visible == windows.end() ? nullptr : *visible;
}

}  // namespace sonnel
