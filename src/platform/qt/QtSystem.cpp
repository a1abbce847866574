#include "platform/qt/QtSystem.h"

#include "platform/Numbers.h"
#include "platform/ScopeExit.h"
#include "platform/qt/FitScreen.h"
#include "platform/qt/WindowInUse.h"

#include <QApplication>
#include <QEventLoop>
#include <QLabel>
#include <QLayout>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QTime>
#include <algorithm>
#include <utility>

namespace sonnel {
namespace {

constexpr double TwipsPerInch = 1440;

QMessageBox::Icon ToQt(Icon icon) {
    switch (icon) {
        case Icon::Critical:
            return QMessageBox::Critical;
        case Icon::Question:
            return QMessageBox::Question;
        case Icon::Exclamation:
            return QMessageBox::Warning;
        case Icon::Information:
            return QMessageBox::Information;
        case Icon::None:
            break;
    }
    return QMessageBox::NoIcon;
}

struct ButtonAnswer {
    QMessageBox::StandardButton button;
    Answer answer;
};

/// The buttons in their order.
std::vector<ButtonAnswer> ToQt(Buttons buttons) {
    switch (buttons) {
        case Buttons::OkCancel:
            return {{QMessageBox::Ok, Answer::Ok}, {QMessageBox::Cancel, Answer::Cancel}};
        case Buttons::YesNo:
            return {{QMessageBox::Yes, Answer::Yes}, {QMessageBox::No, Answer::No}};
        case Buttons::RetryCancel:
            return {{QMessageBox::Retry, Answer::Retry}, {QMessageBox::Cancel, Answer::Cancel}};
        case Buttons::Ok:
            break;
    }
    return {{QMessageBox::Ok, Answer::Ok}};
}

/// A message box that stands in the middle of the screen when it has no parent to stand over.
class Box : public QMessageBox {
  public:
    using QMessageBox::QMessageBox;
    void FitText();

  protected:
    void showEvent(QShowEvent* event) override {
        QMessageBox::showEvent(event);
        if (parentWidget() == nullptr) {
            move(screen()->geometry().center() - rect().center());
        }
    }
};

/// Shows the text, once the box is complete, so that the box fits the screen: the label breaks no
/// word and does not scroll.
void Box::FitText() {
    constexpr int NarrowestText = 220;
    constexpr int WidestText = 500;
    constexpr QSize Rest(140, 100);  // icon, buttons and margins
    auto* label = findChild<QLabel*>("qt_msgbox_label");
    const QSize room = RoomOnScreen(*this) - Rest;
    auto* pane = new WrappedText(this);
    pane->setPlainText(text());
    // Not so narrow that the title is cut.
    const int wished = std::clamp(pane->WidthUnwrapped(), NarrowestText, WidestText);
    const int width = std::min(wished, room.width());
    pane->setFixedSize(width, std::min(pane->heightForWidth(width), room.height()));
    delete layout()->replaceWidget(label, pane);
    label->hide();
}

}  // namespace

double QtClock::TimeOfDay() const {
    return QTime::currentTime().msecsSinceStartOfDay() / 1000.0;
}

std::chrono::nanoseconds QtClock::Steady() const {
    return std::chrono::steady_clock::now().time_since_epoch();
}

QtTimer::QtTimer() {
    timer_.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer_, &QTimer::timeout, [this] {
        // The tick may start this timer anew.
        if (const auto tick = tick_) {
            tick();
        }
    });
}

void QtTimer::Start(int intervalMs, std::function<void()> tick) {
    tick_ = std::move(tick);
    timer_.start(intervalMs);
}

void QtTimer::Stop() {
    timer_.stop();
    tick_ = nullptr;
}

void QtSystemEvents::RunPending() {
    QCoreApplication::processEvents();
}

void QtSystemEvents::WaitPending(std::chrono::milliseconds limit) {
    QEventLoop loop;
    QTimer timer;
    timer.setSingleShot(true);
    QObject::connect(&timer, &QTimer::timeout, &loop, &QEventLoop::quit);
    timer.start(limit);
    loop.exec();
}

Pointer QtSystemEvents::SetPointer(Pointer pointer) {
    const Pointer before = pointer_;
    pointer_ = pointer;
    if (pointer != before) {
        if (pointer == Pointer::Busy) {
            QApplication::setOverrideCursor(Qt::WaitCursor);
        } else {
            QApplication::restoreOverrideCursor();
        }
    }
    return before;
}

void QtSystemEvents::Beep() {
    QApplication::beep();
}

int QtScreen::Width() const {
    return RoundHalfEven<int>(QGuiApplication::primaryScreen()->size().width() * TwipsPerPixel());
}

int QtScreen::Height() const {
    return RoundHalfEven<int>(QGuiApplication::primaryScreen()->size().height() * TwipsPerPixel());
}

std::vector<Rectangle> QtScreen::Screens() const {
    const auto twips = [this](int pixels) { return RoundHalfEven<int>(pixels * TwipsPerPixel()); };
    std::vector<Rectangle> screens;
    for (const QScreen* screen : QGuiApplication::screens()) {
        const QRect place = screen->geometry();
        screens.push_back(
            {twips(place.x()), twips(place.y()), twips(place.width()), twips(place.height())});
    }
    return screens;
}

double QtScreen::TwipsPerPixel() const {
    return TwipsPerInch / QGuiApplication::primaryScreen()->logicalDotsPerInch();
}

Answer QtMsgBox::Show(const Message& message) {
    Box box(WindowInUse());
    box.setTextFormat(Qt::PlainText);
    box.setText(QString::fromStdString(message.text).replace("\r\n", "\n"));
    box.setIcon(ToQt(message.icon));
    box.setWindowTitle(QString::fromStdString(message.title));
    const auto buttons = ToQt(message.buttons);
    for (const auto& [button, answer] : buttons) {
        box.addButton(button);
    }
    const auto first = static_cast<std::size_t>(message.defaultButton - 1);
    box.setDefaultButton(buttons.at(first < buttons.size() ? first : 0).button);
    if (buttons.back().answer != Answer::Ok) {
        box.setEscapeButton(buttons.back().button);
    }
    box.FitText();
    QApplication::setOverrideCursor(Qt::ArrowCursor);
    const ScopeExit restore([] { QApplication::restoreOverrideCursor(); });
    const int pressed = box.exec();
    for (const auto& [button, answer] : buttons) {
        if (button == pressed) {
            return answer;
        }
    }
    return buttons.back().answer;
}

}  // namespace sonnel
