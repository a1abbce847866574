#pragma once

#include "platform/Result.h"

#include <cstdint>
#include <optional>
#include <span>

namespace sonnel {

/// What an output asks for its sound.
class SoundSource {
  public:
    virtual ~SoundSource() = default;
    /// Fills `out` with the next frames, left and right interleaved, two floats in -1..1 a frame.
    /// Called on the output's own thread: neither locks, allocates nor throws.
    virtual void Fill(std::span<float> out) noexcept = 0;
};

/// The door to the sound output.
class AudioOutput {
  public:
    virtual ~AudioOutput() = default;
    /// Frames per second; known before Start.
    virtual int SampleRate() = 0;
    /// Starts asking `source` for frames; it must live until Stop has returned. Fails when there is
    /// no device or file to play to.
    virtual std::optional<Error> Start(SoundSource& source) = 0;
    /// Ends the asking; no Fill runs after it has returned. Harmless when not started.
    virtual void Stop() = 0;
    /// Frames of those asked for since Start that have really been heard, as the device reports
    /// them. May stand still between two readings and, on a device that has just started, run
    /// ahead.
    [[nodiscard]] virtual std::int64_t FramesHeard() const = 0;
    /// Called now and then on the user-interface thread: replaces a device that went away. The
    /// count of frames heard goes on.
    virtual void Maintain() {}
};

}  // namespace sonnel
