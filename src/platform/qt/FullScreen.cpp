#include "platform/qt/FullScreen.h"

#include <QScreen>
#include <QTimer>

namespace sonnel {
namespace {

bool HasScreenSize(const QWidget& window) {
    return window.geometry() == window.screen()->geometry();
}

}  // namespace

void SetWindowState(QWidget& window, Qt::WindowStates state, const QRect& ordinary) {
    constexpr int Patience = 300;  // ms that a window manager may take
    window.setWindowState(state);
    QTimer::singleShot(Patience, &window, [&window, state, ordinary] {
        const bool fills = HasScreenSize(window);
        if (window.isVisible() && window.isFullScreen() && !fills) {
            window.setGeometry(window.screen()->geometry());
        } else if (window.isVisible() && window.windowState() == state && !state && fills) {
            window.setGeometry(ordinary);
        }
    });
}

bool FillsScreen(const QWidget& window) {
    return window.isFullScreen() || HasScreenSize(window);
}

}  // namespace sonnel
