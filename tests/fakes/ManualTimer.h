#pragma once

#include "platform/Timer.h"

#include <functional>
#include <utility>

namespace sonnel::test {

/// A timer fired by hand.
class ManualTimer : public Timer {
  public:
    void Start(int intervalMs, std::function<void()> tick) override {
        interval = intervalMs;
        tick_ = std::move(tick);
    }
    void Stop() override {
        interval = 0;
        tick_ = nullptr;
    }
    void Fire() {
        if (auto tick = tick_) {
            tick();
        }
    }

    int interval = 0;  ///< 0 while it is stopped

  private:
    std::function<void()> tick_;
};

}  // namespace sonnel::test
