#pragma once

#include "platform/PictureBox.h"

#include <QColor>
#include <QFont>
#include <QPixmap>
#include <QWidget>
#include <functional>
#include <string>
#include <vector>

namespace sonnel {

/// A drawing surface that is a widget. Its picture lives in a pixmap of the screen's own
/// resolution, so it comes back whole after it was covered, and letters are sharp at any scale
/// factor.
class QtPictureBox : public QWidget, public PictureBox {
  public:
    explicit QtPictureBox(double twipsPerPixel, QWidget* parent = nullptr);

    void Clear() override;
    void SetBackColor(Colour colour) override;
    void SetForeColor(Colour colour) override;
    void SetFont(const FontSpec& font) override;
    [[nodiscard]] FontSpec Font() const override;
    [[nodiscard]] TextSize Measure(std::string_view text) const override;
    void Print(int x, int y, std::string_view text) override;

    std::function<void()> onClick;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

  private:
    /// A text drawn on the picture.
    struct Printed {
        int x = 0;
        int y = 0;
        QColor colour;
        QString text;
    };

    void FitPixmap();
    [[nodiscard]] QRectF PlaceOf(const Printed& printed) const;
    void TakeBackLast();
    void KeepPicture(const QRectF& place);

    double twipsPerPixel_;
    QColor backColour_ = Qt::black;
    QColor foreColour_ = Qt::white;
    QFont font_;
    QPixmap picture_;
    std::vector<Printed> printed_;  ///< since Clear, one for each place, the latest last
    QPixmap covered_;               ///< what the latest of them was printed on, at the top left
    QRect coveredPlace_;            ///< where that is in the picture, in pixels of the screen
};

}  // namespace sonnel
