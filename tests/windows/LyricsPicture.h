#pragma once

#include "windows/Look.h"

#include "platform/Numbers.h"
#include "platform/qt/QtPictureBox.h"
#include "settings/Config.h"

#include <QFontMetricsF>
#include <QPainter>
#include <string>
#include <vector>

namespace sonnel::test {

using Lines = std::vector<std::string>;

/// The lyrics area with a page and the sung part of its first lines, `width` being that of the
/// area, in pixels, when the page was drawn.
inline QImage LyricsPicture(const QtPictureBox& lyrics, int width, const Config& config,
                            const Lines& page, const Lines& sung) {
    QFont font(QString::fromStdString(config.FontName));
    font.setPixelSize(RoundHalfEven<int>(lyrics.Font().size * 20 / Scale));
    font.setBold(config.FontBold);
    font.setHintingPreference(QFont::PreferNoHinting);
    const QFontMetricsF metrics(font);
    QImage area(lyrics.size() * lyrics.devicePixelRatioF(), QImage::Format_RGB32);
    area.setDevicePixelRatio(lyrics.devicePixelRatioF());
    area.fill(ToQColor(config.ColoreSfondo));
    QPainter painter(&area);
    painter.setFont(font);
    const auto print = [&](std::size_t line, const Lines& texts, Colour colour, int offset) {
        const double length = metrics.horizontalAdvance(QString::fromStdString(page[line]));
        const int x = RoundHalfEven<int>((width - length) * Scale / 2) + offset;
        const int y = RoundHalfEven<int>(static_cast<double>(line) * metrics.height() * Scale);
        painter.setPen(ToQColor(colour));
        painter.drawText(QPointF(x, y + offset) / Scale + QPointF(0, metrics.ascent()),
                         QString::fromStdString(texts[line]));
    };
    for (std::size_t line = 0; line < page.size(); ++line) {
        if (config.Ombra) {
            print(line, page, config.ColoreOmbra, 30);
        }
        print(line, page, config.ColoreTesto, 0);
    }
    for (std::size_t line = 0; line < sung.size(); ++line) {
        print(line, sung, config.ColoreSelezione, 0);
    }
    painter.end();
    area.setDevicePixelRatio(1);
    return area;
}

}  // namespace sonnel::test
