#include "platform/qt/QtPictureBox.h"

#include "platform/Numbers.h"
#include "platform/qt/QtColour.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

namespace sonnel {
namespace {

constexpr double TwipsPerPoint = 20;

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
    printed_.clear();
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
    // Whole pixels: what size a smooth font gets is known without loading it, which takes long
    // where thousands of fonts are installed.
    font_.setPixelSize(std::max(RoundHalfEven<int>(font.size * TwipsPerPoint / twipsPerPixel_), 1));
    font_.setBold(font.bold);
    printed_.clear();
}

FontSpec QtPictureBox::Font() const {
    const double points = QFontDatabase::isSmoothlyScalable(font_.family())
                              ? font_.pixelSize() * twipsPerPixel_ / TwipsPerPoint
                              : QFontInfo(font_).pointSizeF();
    return {font_.family().toStdString(), std::round(points * 100) / 100, font_.bold()};
}

TextSize QtPictureBox::Measure(std::string_view text) const {
    const QFontMetricsF metrics(font_);
    double width = 0;
    const QStringList lines = ToQString(text).split("\r\n");
    for (const QString& line : lines) {
        width = std::max(width, metrics.horizontalAdvance(line));
    }
    const double height = metrics.height() * static_cast<double>(lines.size());
    return {width * twipsPerPixel_, height * twipsPerPixel_};
}

void QtPictureBox::Print(int x, int y, std::string_view text) {
    FitPixmap();
    const Printed next{x, y, foreColour_, ToQString(text)};
    const auto old = std::find_if(printed_.begin(), printed_.end(), [&next](const Printed& other) {
        return other.x == next.x && other.y == next.y;
    });
    // Drawing letters again over themselves would thicken their smooth edges each time.
    if (old != printed_.end() && old->colour == next.colour) {
        if (old->text.startsWith(next.text)) {
            return;
        }
        if (old + 1 == printed_.end() && next.text.startsWith(old->text)) {
            TakeBackLast();
        }
    }
    if (old != printed_.end()) {
        printed_.erase(old);
    }
    printed_.push_back(next);
    const QRectF place = PlaceOf(next);
    KeepPicture(place);
    QPainter painter(&picture_);
    painter.setFont(font_);
    painter.setPen(foreColour_);
    const QPointF corner(x / twipsPerPixel_, y / twipsPerPixel_);
    painter.drawText(corner + QPointF(0, QFontMetricsF(font_).ascent()), next.text);
    painter.end();
    update(place.toAlignedRect());
}

/// Where a text's ink may be. Letters may reach beyond their advance; an em on either side holds
/// them all.
QRectF QtPictureBox::PlaceOf(const Printed& printed) const {
    const QFontMetricsF metrics(font_);
    const double em = metrics.height();
    const QPointF corner(printed.x / twipsPerPixel_, printed.y / twipsPerPixel_);
    const QSizeF size(metrics.horizontalAdvance(printed.text), em);
    return QRectF(corner, size).adjusted(-em, -em, em, em);
}

/// Puts back what the latest text was printed on.
void QtPictureBox::TakeBackLast() {
    if (coveredPlace_.isEmpty()) {
        return;
    }
    const double ratio = picture_.devicePixelRatio();
    picture_.setDevicePixelRatio(1);
    QPainter painter(&picture_);
    painter.drawPixmap(coveredPlace_.topLeft(), covered_, QRect({}, coveredPlace_.size()));
    painter.end();
    picture_.setDevicePixelRatio(ratio);
}

void QtPictureBox::KeepPicture(const QRectF& place) {
    const double ratio = picture_.devicePixelRatio();
    const QRectF pixels(place.topLeft() * ratio, place.size() * ratio);
    coveredPlace_ = pixels.toAlignedRect().intersected(picture_.rect());
    if (coveredPlace_.isEmpty()) {
        return;
    }
    // One pixmap for all: to allocate one for every print would take most of a page's time.
    if (!QRect({}, covered_.size()).contains(QRect({}, coveredPlace_.size()))) {
        covered_ = QPixmap(covered_.size().expandedTo(coveredPlace_.size()));
    }
    QPainter painter(&covered_);
    painter.drawPixmap(QRect({}, coveredPlace_.size()), picture_, coveredPlace_);
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
    if (ratio != picture_.devicePixelRatio()) {
        coveredPlace_ = {};
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
