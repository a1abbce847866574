#pragma once

#include "platform/AudioOutput.h"

#include <string>

namespace sonnel {

/// An output on a sound device, which may go away while it plays.
class DeviceOutput : public AudioOutput {
  public:
    /// Whether the device went away since Start.
    [[nodiscard]] virtual bool Lost() const = 0;
    /// The sound system in use; "" before SampleRate or Start was called or when there is none.
    [[nodiscard]] virtual std::string System() const = 0;
};

}  // namespace sonnel
