#pragma once

#include "platform/AudioOutput.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <span>
#include <thread>
#include <vector>

namespace sonnel {

/// Where an output without a device puts the sound. Used by one thread at a time.
class FrameSink {
  public:
    virtual ~FrameSink() = default;
    /// Called by each Start, before the first frames.
    virtual std::optional<Error> Begin(int sampleRate) = 0;
    /// Takes the next frames, left and right interleaved.
    virtual void Take(std::span<const float> frames) = 0;
    /// Called by each Stop, after the last frames.
    virtual void End() = 0;
};

/// Sound without a device: asks for frames at the pace of the system's clock, about 10 ms ahead,
/// and throws them away or hands them to a sink. A frame counts as heard when its time has come.
class SilentOutput : public AudioOutput {
  public:
    explicit SilentOutput(int sampleRate, std::unique_ptr<FrameSink> sink = nullptr);
    ~SilentOutput() override;
    SilentOutput(const SilentOutput&) = delete;
    SilentOutput& operator=(const SilentOutput&) = delete;

    int SampleRate() override;
    /// Fails only when the sink does.
    std::optional<Error> Start(SoundSource& source) override;
    void Stop() override;
    [[nodiscard]] std::int64_t FramesHeard() const override;

  private:
    using SteadyClock = std::chrono::steady_clock;
    void Halt();
    void Run();
    void AskUpTo(std::int64_t frames);
    [[nodiscard]] std::int64_t Elapsed() const;

    const int sampleRate_;
    const std::unique_ptr<FrameSink> sink_;
    SoundSource* source_ = nullptr;
    std::vector<float> piece_;
    std::atomic<std::int64_t> asked_{0};
    std::atomic<SteadyClock::duration> origin_{};  // the clock at frame 0
    std::int64_t heardAtStop_ = 0;
    std::thread thread_;
    std::mutex mutex_;
    std::condition_variable wake_;
    bool stopping_ = false;
};

}  // namespace sonnel
