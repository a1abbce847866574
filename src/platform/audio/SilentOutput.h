#pragma once

#include "platform/AudioOutput.h"
#include "platform/audio/WavFile.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

namespace sonnel {

/// Sound without a device: asks for frames at the pace of the system's clock, about 10 ms ahead,
/// and drops them or writes them to a file. A frame counts as heard when its time has come.
class SilentOutput final : public AudioOutput {
  public:
    explicit SilentOutput(int sampleRate, std::optional<WavFile> file = std::nullopt);
    ~SilentOutput() override;
    SilentOutput(const SilentOutput&) = delete;
    SilentOutput& operator=(const SilentOutput&) = delete;

    int SampleRate() override;
    /// Fails only when the file cannot be created.
    std::optional<Error> Start(SoundSource& source) override;
    void Stop() override;
    [[nodiscard]] std::int64_t FramesHeard() override;

  private:
    using SteadyClock = std::chrono::steady_clock;
    void Run();
    void AskUpTo(std::int64_t frames);
    [[nodiscard]] std::int64_t Elapsed() const;

    const int sampleRate_;
    std::optional<WavFile> file_;
    SoundSource* source_ = nullptr;
    std::vector<float> piece_;
    std::atomic<std::int64_t> asked_{0};
    std::atomic<SteadyClock::duration> origin_{};  ///< the clock at frame 0
    std::int64_t heardAtStop_ = 0;
    std::thread thread_;
    std::mutex mutex_;
    std::condition_variable wake_;
    bool stopping_ = false;
};

}  // namespace sonnel
