#pragma once

#include <QScrollArea>
#include <QTextEdit>

namespace sonnel {

/// How large a window can be on the screen it is on, when its frame has the usual size.
[[nodiscard]] QSize RoomOnScreen(const QWidget& window);

/// Gives a window that is not shown yet the size it asks for, as far as its screen has room.
void FitToScreen(QWidget& window);

/// Shows a widget whole where there is room, else so much of it that the rest can be scrolled to.
class ScrollPane : public QScrollArea {
  public:
    explicit ScrollPane(QWidget* content, QWidget* parent = nullptr);
    [[nodiscard]] QSize sizeHint() const override;
};

/// A text to be read and copied. It is wrapped between words, and within a word that is longer than
/// a line; it scrolls where it is given less than its height.
class WrappedText : public QTextEdit {
  public:
    explicit WrappedText(QWidget* parent = nullptr);
    /// The width of its longest line when nothing is wrapped.
    [[nodiscard]] int WidthUnwrapped() const;
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }
};

}  // namespace sonnel
