#pragma once

#include "platform/audio/DeviceOutput.h"

#include <memory>
#include <string>

namespace sonnel {

/// The default sound device, through cubeb.
class CubebOutput final : public DeviceOutput {
  public:
    /// `system`: the cubeb backend to use if possible ("pulse", "alsa", "jack", ...); "" leaves
    /// the choice to cubeb.
    explicit CubebOutput(std::string system = {});
    ~CubebOutput() override;
    CubebOutput(const CubebOutput&) = delete;
    CubebOutput& operator=(const CubebOutput&) = delete;

    /// The rate the device prefers when first asked; later calls return the same.
    int SampleRate() override;
    /// Fails when no device can be opened; works again after a device was lost.
    std::optional<Error> Start(SoundSource& source) override;
    void Stop() override;
    /// At most the frames asked for, and never less than before.
    [[nodiscard]] std::int64_t FramesHeard() override;
    [[nodiscard]] bool Lost() const override;
    [[nodiscard]] std::string System() const override;
    /// The latency the stream was opened with, in frames; 0 before Start.
    [[nodiscard]] int LatencyFrames() const;

  private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace sonnel
