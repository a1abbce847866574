// What a window shows, and what is done in it while it waits for its user.
#pragma once

#include "platform/qt/QtColour.h"

#include <QAction>
#include <QImage>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <stdexcept>
#include <string>

namespace sonnel::test {

inline constexpr int Scale = 15;  // twips to a pixel

/// What a widget shows, in pixels of the screen.
inline QImage Shot(QWidget& widget) {
    QImage image = widget.grab().toImage().convertToFormat(QImage::Format_RGB32);
    image.setDevicePixelRatio(1);
    return image;
}

/// How many pixels are exactly of a colour.
inline int Count(const QImage& image, Colour colour) {
    const QRgb wanted = ToQColor(colour).rgb();
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            count += image.pixel(x, y) == wanted ? 1 : 0;
        }
    }
    return count;
}

/// The menu items and toolbar buttons that cannot be used.
inline std::string OutOfUse(const QWidget& window) {
    std::string names;
    for (const QAction* action : window.findChildren<QAction*>()) {
        const std::string name = action->text().toStdString();
        names += action->isEnabled() || name.empty() ? "" : name + '|';
    }
    return names;
}

/// The control of a kind with an accessible name or a caption.
template <class Control>
Control& Find(const QWidget& window, const QString& name) {
    for (auto* control : window.findChildren<Control*>()) {
        if (control->accessibleName() == name || control->property("text") == name) {
            return *control;
        }
    }
    throw std::logic_error("no " + name.toStdString());
}

/// Runs an action once in the event loop of a window that opens now.
class Later : public QTimer {
  public:
    Later(int ms, const std::function<void()>& action) {
        setSingleShot(true);
        callOnTimeout(action);
        start(ms);
    }
};

}  // namespace sonnel::test
