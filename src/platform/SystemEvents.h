#pragma once

#include <chrono>

namespace sonnel {

enum class Pointer { Normal, Busy };

/// The door to the window system's event loop and its small signals.
class SystemEvents {
  public:
    virtual ~SystemEvents() = default;
    /// Lets pending window events run once.
    virtual void RunPending() = 0;
    /// Lets pending window events run, waiting for them up to `limit`.
    virtual void WaitPending(std::chrono::milliseconds limit) = 0;
    /// Returns the pointer that was shown before.
    virtual Pointer SetPointer(Pointer pointer) = 0;
    virtual void Beep() = 0;
};

}  // namespace sonnel
