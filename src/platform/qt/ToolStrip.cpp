#include "platform/qt/ToolStrip.h"

#include <QIcon>

namespace sonnel {
namespace {

constexpr QSize ImageSize(24, 24);

constexpr const char* Style =
    "#toolStrip { background: #f0f0f0; border-bottom: 1px solid #c8c8c8; }"
    "#toolStrip QToolBar { background: transparent; border: none; spacing: 0px; padding: 2px; }"
    "#toolStrip QLabel { background: transparent; }"
    "#toolStrip QToolButton { border: 1px solid transparent; border-radius: 5px; padding: 2px; }"
    "#toolStrip QToolButton:hover, #toolStrip QToolButton:focus {"
    "  background: #e0eaea; border-color: #9cc4c4; }"
    "#toolStrip QToolButton:pressed { background: #c8dcdc; }"
    "#toolStrip QToolButton:checked { background: #c8dcdc; border-color: #008080; }";

}  // namespace

void DressToolStrip(QWidget& strip, const char* more) {
    strip.setObjectName("toolStrip");
    strip.setAttribute(Qt::WA_StyledBackground);
    strip.setStyleSheet(QString(Style) + more);
}

QToolBar* AddToolBar(QWidget& strip) {
    auto* bar = new QToolBar(&strip);
    bar->setIconSize(ImageSize);
    return bar;
}

QAction* AddToolButton(QToolBar& bar, const char* tooltip, const char* image,
                       const std::function<void()>& press) {
    if (image == nullptr) {
        return bar.addSeparator();
    }
    QAction* action = bar.addAction(QIcon(QString(":/toolbar/%1.svg").arg(image)), tooltip);
    QObject::connect(action, &QAction::triggered, &bar, press);
    bar.widgetForAction(action)->setFocusPolicy(Qt::TabFocus);
    return action;
}

}  // namespace sonnel
