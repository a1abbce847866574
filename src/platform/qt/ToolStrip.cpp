#include "platform/qt/ToolStrip.h"

#include "platform/qt/PaletteIcon.h"

namespace sonnel {
namespace {

constexpr QSize ImageSize(24, 24);

}  // namespace

QToolBar* AddToolBar(QWidget& strip) {
    auto* bar = new QToolBar(&strip);
    bar->setIconSize(ImageSize);
    return bar;
}

QAction* AddToolButton(QToolBar& bar, const char* tooltip, const char* image,
                       const std::function<void()>& press) {
    QAction* action = bar.addAction(PaletteIcon(QString(":/toolbar/%1.svg").arg(image)), tooltip);
    QObject::connect(action, &QAction::triggered, &bar, press);
    bar.widgetForAction(action)->setFocusPolicy(Qt::TabFocus);
    return action;
}

}  // namespace sonnel
