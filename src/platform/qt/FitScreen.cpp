#include "platform/qt/FitScreen.h"

#include <QScreen>
#include <QStyle>
#include <cmath>
#include <memory>

namespace sonnel {
namespace {

constexpr QSize Frame(8, 40);  // pixels; what it is in fact is known only when the window is shown

}  // namespace

QSize RoomOnScreen(const QWidget& window) {
    return window.screen()->availableSize() - Frame;
}

void FitToScreen(QWidget& window) {
    // What was asked for before the style had its say may be less.
    for (QWidget* part : window.findChildren<QWidget*>()) {
        part->ensurePolished();
        part->updateGeometry();
    }
    const QSize room = RoomOnScreen(window);
    QSize size = window.sizeHint();
    if (size.height() > room.height()) {
        size.rwidth() += window.style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    }
    window.resize(size.boundedTo(room));
}

ScrollPane::ScrollPane(QWidget* content, QWidget* parent) : QScrollArea(parent) {
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    setWidget(content);
    // The ground is that of what it lies in.
    content->setAutoFillBackground(false);
    viewport()->setAutoFillBackground(false);
}

QSize ScrollPane::sizeHint() const {
    return widget()->sizeHint();
}

WrappedText::WrappedText(QWidget* parent) : QTextEdit(parent) {
    setReadOnly(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse);
    setFocusPolicy(Qt::ClickFocus);
    setFrameShape(QFrame::NoFrame);
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    document()->setDocumentMargin(0);
    viewport()->setAutoFillBackground(false);
    viewport()->setCursor(Qt::ArrowCursor);
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    connect(this, &QTextEdit::textChanged, this, &QWidget::updateGeometry);
}

int WrappedText::WidthUnwrapped() const {
    return fontMetrics().size(0, toPlainText()).width() + 1;
}

int WrappedText::heightForWidth(int width) const {
    const std::unique_ptr<QTextDocument> copy(document()->clone());
    copy->setTextWidth(width);
    return static_cast<int>(std::ceil(copy->size().height()));
}

QSize WrappedText::sizeHint() const {
    return {minimumWidth(), heightForWidth(minimumWidth())};
}

}  // namespace sonnel
