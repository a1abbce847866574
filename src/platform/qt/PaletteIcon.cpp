#include "platform/qt/PaletteIcon.h"

#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QSvgRenderer>
#include <utility>

namespace sonnel {
namespace {

/// A colour between that of the text (1) and that of buttons (0).
QColor Line(const QPalette& palette, QPalette::ColorGroup group, float share) {
    const QColor text = palette.color(group, QPalette::ButtonText);
    const QColor ground = palette.color(group, QPalette::Button);
    const auto mix = [share](float a, float b) { return share * a + (1 - share) * b; };
    return QColor::fromRgbF(mix(text.redF(), ground.redF()), mix(text.greenF(), ground.greenF()),
                            mix(text.blueF(), ground.blueF()));
}

QColor Accent(const QPalette& palette) {
    constexpr int Half = 128;
    return palette.color(QPalette::Button).lightness() < Half ? QColor(0x30, 0xC0, 0xBA)
                                                              : QColor(0x00, 0x80, 0x80);
}

class PaletteIconEngine : public QIconEngine {
  public:
    explicit PaletteIconEngine(QByteArray svg) : svg_(std::move(svg)) {}

    [[nodiscard]] QIconEngine* clone() const override { return new PaletteIconEngine(svg_); }

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode,
               QIcon::State /*state*/) override {
        const QPalette palette = QGuiApplication::palette();
        const bool disabled = mode == QIcon::Disabled;
        // Thin lines in the text's own colour would be harder than the text.
        constexpr float Share = 0.75;
        const QColor line = Line(palette, disabled ? QPalette::Disabled : QPalette::Active, Share);
        QByteArray svg = svg_;
        svg.replace("#4c5f66", line.name().toLatin1());
        svg.replace("#008080", (disabled ? line : Accent(palette)).name().toLatin1());
        QSvgRenderer(svg).render(painter, rect);
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap picture(size);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        paint(&painter, QRect({}, size), mode, state);
        return picture;
    }

  private:
    QByteArray svg_;
};

}  // namespace

QIcon PaletteIcon(const QString& file) {
    QFile svg(file);
    (void)svg.open(QIODevice::ReadOnly);
    return QIcon(new PaletteIconEngine(svg.readAll()));
}

}  // namespace sonnel
