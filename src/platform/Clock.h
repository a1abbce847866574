#pragma once

#include <chrono>

namespace sonnel {

/// The door to the clocks.
class Clock {
  public:
    virtual ~Clock() = default;
    /// Local time of day: seconds since midnight, with fractions.
    [[nodiscard]] virtual double TimeOfDay() const = 0;
    /// A clock that only goes forward; its zero means nothing.
    [[nodiscard]] virtual std::chrono::nanoseconds Steady() const = 0;
};

}  // namespace sonnel
