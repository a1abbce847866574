#pragma once

#include <functional>

namespace sonnel {

/// A repeating timer that calls back on the user-interface thread.
class Timer {
  public:
    virtual ~Timer() = default;
    /// Calls `tick` every `intervalMs` milliseconds from now on; replaces what ran before.
    virtual void Start(int intervalMs, std::function<void()> tick) = 0;
    virtual void Stop() = 0;
};

}  // namespace sonnel
