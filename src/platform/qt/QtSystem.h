#pragma once

#include "platform/EventiSistema.h"
#include "platform/MsgBox.h"
#include "platform/Orologio.h"
#include "platform/Schermo.h"
#include "platform/Temporizzatore.h"

#include <QTimer>

namespace sonnel {

class QtOrologio : public Orologio {
  public:
    [[nodiscard]] double TimeOfDay() const override;
    [[nodiscard]] std::chrono::nanoseconds Steady() const override;
};

/// A precise timer of the event loop.
class QtTemporizzatore : public Temporizzatore {
  public:
    QtTemporizzatore();
    void Start(int intervalMs, std::function<void()> tick) override;
    void Stop() override;

  private:
    QTimer timer_;
    std::function<void()> tick_;
};

class QtEventiSistema : public EventiSistema {
  public:
    void RunPending() override;
    void WaitPending(std::chrono::milliseconds limit) override;
    Pointer SetPointer(Pointer pointer) override;
    void Beep() override;

  private:
    Pointer pointer_ = Pointer::Normal;
};

/// The primary screen.
class QtSchermo : public Schermo {
  public:
    [[nodiscard]] int Width() const override;
    [[nodiscard]] int Height() const override;
    [[nodiscard]] std::vector<Rettangolo> Schermi() const override;
    [[nodiscard]] double TwipsPerPixel() const override;
};

/// Message boxes in front of the active window.
class QtMsgBox : public MsgBox {
  public:
    Answer Show(const Message& message) override;
};

}  // namespace sonnel
