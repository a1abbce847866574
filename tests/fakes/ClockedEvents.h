#pragma once

#include "fakes/ManualClock.h"
#include "platform/SystemEvents.h"

#include <algorithm>
#include <chrono>
#include <functional>
#include <utility>

namespace sonnel::test {

/// An event loop in which waiting moves a manual clock; an event comes after `nextEvent` at latest.
class ClockedEvents : public SystemEvents {
  public:
    explicit ClockedEvents(ManualClock& clock) : clock_(clock) {}
    void RunPending() override {
        ++turns;
        clock_.Advance(perTurn);
    }
    void WaitPending(std::chrono::milliseconds limit) override {
        ++turns;
        std::exchange(whileWaiting, [] {})();
        clock_.Advance(std::min(limit, nextEvent));
    }
    Pointer SetPointer(Pointer shown) override { return std::exchange(pointer, shown); }
    void Beep() override { ++beeps; }

    std::chrono::milliseconds nextEvent = std::chrono::milliseconds::max();
    std::chrono::nanoseconds perTurn{0};  ///< what handling the pending events takes
    int turns = 0;
    std::function<void()> whileWaiting = [] {};  ///< what goes on during the next wait
    int beeps = 0;
    Pointer pointer = Pointer::Normal;

  private:
    ManualClock& clock_;
};

}  // namespace sonnel::test
