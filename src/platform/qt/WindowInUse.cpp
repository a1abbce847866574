#include "platform/qt/WindowInUse.h"

#include <QApplication>
#include <algorithm>

namespace sonnel {

QWidget* WindowInUse() {
    for (QWidget* window : {QApplication::activeModalWidget(), QApplication::activeWindow()}) {
        if (window != nullptr && window->windowType() != Qt::SplashScreen) {
            return window;
        }
    }
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto visible = std::find_if(windows.begin(), windows.end(), [](const QWidget* widget) {
        return widget->isVisible() && widget->windowType() == Qt::Window;
    });
    return visible == windows.end() ? nullptr : *visible;
}

}  // namespace sonnel
