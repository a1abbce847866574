#pragma once

#include "platform/audio/DeviceOutput.h"

#include <cstdint>
#include <future>
#include <memory>
#include <string>

namespace sonnel {

/// The default sound device, through cubeb. A sound system that does not answer never holds a call
/// up for longer than a moment: the call fails, and works again once the system has answered.
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
    /// Fails when no device can be opened in a moment; works again after a device was lost.
    std::optional<Error> Start(SoundSource& source) override;
    void Stop() override;
    /// At most the frames asked for, and never less than before.
    [[nodiscard]] std::int64_t FramesHeard() override;
    [[nodiscard]] std::string Name() override;
    /// Also while the sound system has not answered yet.
    [[nodiscard]] bool Lost() const override;
    [[nodiscard]] std::string System() const override;
    /// The latency the stream was opened with, in frames; 0 before Start.
    [[nodiscard]] int LatencyFrames() const;

  private:
    struct Device;

    /// Runs `work` on a thread of its own, because the sound system may hang. True when it ended
    /// soon; otherwise it goes on alone, and until it has ended the device is not touched.
    bool Work(void (*work)(Device&));
    [[nodiscard]] bool Answers() const;

    std::shared_ptr<Device> device_;
    std::future<void> working_;
    int rate_ = 0;
    std::int64_t heard_ = 0;
};

}  // namespace sonnel
