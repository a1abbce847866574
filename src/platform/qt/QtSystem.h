#pragma once

#include "platform/Clock.h"
#include "platform/MsgBox.h"
#include "platform/Screen.h"
#include "platform/SystemEvents.h"
#include "platform/Timer.h"

#include <QTimer>

namespace sonnel {

class QtClock : public Clock {
  public:
    [[nodiscard]] double TimeOfDay() const override;
    [[nodiscard]] std::chrono::nanoseconds Steady() const override;
};

/// A precise timer of the event loop.
class QtTimer : public Timer {
  public:
    QtTimer();
    void Start(int intervalMs, std::function<void()> tick) override;
    void Stop() override;

  private:
    QTimer timer_;
    std::function<void()> tick_;
};

class QtSystemEvents : public SystemEvents {
  public:
    void RunPending() override;
    void WaitPending(std::chrono::milliseconds limit) override;
    Pointer SetPointer(Pointer pointer) override;
    void Beep() override;

  private:
    Pointer pointer_ = Pointer::Normal;
};

/// The primary screen.
class QtScreen : public Screen {
  public:
    [[nodiscard]] int Width() const override;
    [[nodiscard]] int Height() const override;
    [[nodiscard]] std::vector<Rectangle> Screens() const override;
    [[nodiscard]] double TwipsPerPixel() const override;
};

/// Message boxes in front of the active window.
class QtMsgBox : public MsgBox {
  public:
    Answer Show(const Message& message) override;
};

}  // namespace sonnel
