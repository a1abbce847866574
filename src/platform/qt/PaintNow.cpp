#include "platform/qt/PaintNow.h"

#include "platform/qt/QtSystem.h"

#include <QWindow>

namespace sonnel {

void PaintNow(QWidget& window) {
    constexpr int Turns = 20;
    constexpr std::chrono::milliseconds Turn(10);
    QtSystemEvents events;
    for (int i = 0; i < Turns && !window.windowHandle()->isExposed(); ++i) {
        events.WaitPending(Turn);
    }
    window.repaint();
    events.RunPending();
}

}  // namespace sonnel
