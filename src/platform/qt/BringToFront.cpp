#include "platform/qt/BringToFront.h"

#include "platform/qt/X11Windows.h"

#include <QApplication>

namespace sonnel {

void BringToFront(QWidget& window) {
    if (!window.isVisible()) {
        return;
    }
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.raise();
    QWidget* const modal = QApplication::activeModalWidget();
    QWidget& front = modal == nullptr ? window : *modal;
    front.raise();
    front.activateWindow();
    // Window managers may refuse what a program asks for its own windows.
    (void)ActivateX11Window(static_cast<std::uint32_t>(front.winId()));
}

}  // namespace sonnel
