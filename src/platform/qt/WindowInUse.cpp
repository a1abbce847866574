#include "platform/qt/WindowInUse.h"

#include <QApplication>
#include <algorithm>

namespace sonnel {

QWidget* WindowInUse() {
    if (QWidget* modal = QApplication::activeModalWidget()) {
        return modal;
    }
    if (QWidget* active = QApplication::activeWindow()) {
        return active;
    }
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto visible = std::find_if(windows.begin(), windows.end(), [](const QWidget* widget) {
        return widget->isVisible() && widget->windowType() == Qt::Window;
    });
    return visible == windows.end() ? nullptr : *visible;
}

}  // namespace sonnel
