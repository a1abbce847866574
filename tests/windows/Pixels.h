#pragma once

#include "platform/qt/QtColour.h"

#include <QImage>
#include <QRect>
#include <QWidget>

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

/// The smallest rectangle that holds every pixel of another colour than `background`.
inline QRect Ink(const QImage& image, Colour background) {
    const QRgb paper = ToQColor(background).rgb();
    QRect ink;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y) != paper) {
                ink = ink.united(QRect(x, y, 1, 1));
            }
        }
    }
    return ink;
}

}  // namespace sonnel::test
