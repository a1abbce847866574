#include "platform/qt/QtPictureBox.h"

#include "platform/Numbers.h"
#include "platform/qt/QtColour.h"

#include <QFontInfo>
#include <QFontMetricsF>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

namespace sonnel {
namespace {

QString ToQString(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

}  // namespace

QtPictureBox::QtPictureBox(double twipsPerPixel, QWidget* parent)
    : QWidget(parent), twipsPerPixel_(twipsPerPixel) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    // Widths that grow with the size alone keep pages centred at every scale factor.
    font_.setHintingPreference(QFont::PreferNoHinting);
}

void QtPictureBox::Clear() {
    FitPixmap();
    picture_.fill(backColour_);
    last_ = {};
    update();
}

void QtPictureBox::SetBackColor(Colour colour) {
    backColour_ = ToQColor(colour);
}

void QtPictureBox::SetForeColor(Colour colour) {
    foreColour_ = ToQColor(colour);
}

void QtPictureBox::SetFont(const FontSpec& font) {
    font_.setFamily(QString::fromStdString(font.name));
    font_.setPointSizeF(std::max(font.size, 1.0));
    font_.setBold(font.bold);
    last_ = {};
}

FontSpec QtPictureBox::Font() const {
    const double size = std::round(QFontInfo(font_).pointSizeF() * 100) / 100;
    return {font_.family().toStdString(), size, font_.bold()};
}

TextSize QtPictureBox::Measure(std::string_view text) const {
    const QFontMetricsF metrics(font_);
    double width = 0;
    const QStringList lines = ToQString(text).split("\r\n");
    for (const QString& line : lines) {
        width = std::max(width, metrics.horizontalAdvance(line));
    }
    const double height = metrics.height() * static_cast<double>(lines.size());
    return {RoundHalfEven<int>(width * twipsPerPixel_),
            RoundHalfEven<int>(height * twipsPerPixel_)};
}

void QtPictureBox::Print(int x, int y, std::string_view text) {
    FitPixmap();
    const QFontMetricsF metrics(font_);
    const Printed next{x, y, foreColour_, ToQString(text)};
    const QPointF corner(x / twipsPerPixel_, y / twipsPerPixel_);
    const double done = AlreadyPrinted(next);
    // Letters may reach beyond their advance; an em on either side holds them all.
    const double em = metrics.height();
    QRectF place(corner, QSizeF(metrics.horizontalAdvance(next.text), em));
    place.adjust(-em, -em, em, em);
    QPainter painter(&picture_);
    if (done > 0) {
        place.setLeft(corner.x() + done);
        painter.setClipRect(place);
    }
    painter.setFont(font_);
    painter.setPen(foreColour_);
    painter.drawText(corner + QPointF(0, metrics.ascent()), next.text);
    painter.end();
    last_ = next;
    update(place.toAlignedRect());
}

/// How much of a text stands on the picture already, in pixels: drawing the same letters again
/// would thicken their smooth edges a little more each time.
double QtPictureBox::AlreadyPrinted(const Printed& next) const {
    const bool goesOn = !last_.text.isEmpty() && next.x == last_.x && next.y == last_.y &&
                        next.colour == last_.colour && next.text.startsWith(last_.text);
    return goesOn ? QFontMetricsF(font_).horizontalAdvance(last_.text) : 0;
}

/// Makes the pixmap at least as large as the widget, at the screen's resolution. What is drawn
/// stays; a smaller widget cuts nothing off.
void QtPictureBox::FitPixmap() {
    const double ratio = devicePixelRatioF();
    const QSize old = picture_.deviceIndependentSize().toSize();
    const QSize wanted = old.expandedTo(size());
    if (wanted == old && picture_.devicePixelRatio() == ratio) {
        return;
    }
    QPixmap next(wanted * ratio);
    next.setDevicePixelRatio(ratio);
    next.fill(backColour_);
    if (!picture_.isNull()) {
        QPainter painter(&next);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawPixmap(QRectF(QPointF(0, 0), old), picture_, picture_.rect());
    }
    picture_ = next;
}

void QtPictureBox::paintEvent(QPaintEvent* event) {
    FitPixmap();
    QPainter painter(this);
    painter.setClipRegion(event->region());
    painter.drawPixmap(0, 0, picture_);
}

void QtPictureBox::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && onClick) {
        onClick();
    }
}

}  // namespace sonnel
