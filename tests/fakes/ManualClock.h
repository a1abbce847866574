#pragma once

#include "platform/Clock.h"

#include <chrono>

namespace sonnel::test {

/// A clock advanced by hand; the time of day falls back to 0 at midnight.
class ManualClock : public Clock {
  public:
    double TimeOfDay() const override {
        const double seconds = startOfDay + std::chrono::duration<double>(now).count();
        return seconds - 86400.0 * static_cast<int>(seconds / 86400.0);
    }
    std::chrono::nanoseconds Steady() const override { return now; }
    void Advance(std::chrono::nanoseconds step) { now += step; }

    std::chrono::nanoseconds now{0};
    double startOfDay = 0;
};

}  // namespace sonnel::test
