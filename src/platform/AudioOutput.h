#pragma once

#include "platform/Result.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>

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
    /// After it has returned no Fill runs. Harmless when not started.
    virtual void Stop() = 0;
    /// Frames heard since Start, as the device reports them. The count may stand still between two
    /// readings and may be too high when the device has just started.
    [[nodiscard]] virtual std::int64_t FramesHeard() = 0;
    /// The device that plays, as its sound system calls it; "" when there is none.
    [[nodiscard]] virtual std::string Name() { return ""; }
    /// Called now and then on the user-interface thread: replaces a device that went away. The
    /// count of frames heard goes on.
    virtual void Maintain() {}
    /// Called when playing begins: looks for a device once more when there was none.
    virtual void LookAgain() {}
};

}  // namespace sonnel
