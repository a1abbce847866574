#pragma once

#include "platform/Clock.h"
#include "platform/audio/AudioDriver.h"
#include "platform/audio/DeviceOutput.h"

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace sonnel {

/// The output the player uses: a device, a WAV file or silence, as `driver` says. When no device
/// can be opened it plays silently and reports that once; if its device disappears it goes on with
/// the default one, or silently until there is one. All but Fill on one thread.
class DefaultOutput final : public AudioOutput {
  public:
    using DeviceMaker = std::function<std::unique_ptr<DeviceOutput>(const std::string&)>;
    using Say = std::function<void(const std::string& sentence)>;

    DefaultOutput(AudioDriver driver, const Clock& clock);
    /// `makeDevice` makes the output for a sound system's name; `say` gets messages for the user.
    DefaultOutput(AudioDriver driver, const Clock& clock, DeviceMaker makeDevice, Say say);
    ~DefaultOutput() override;
    DefaultOutput(const DefaultOutput&) = delete;
    DefaultOutput& operator=(const DefaultOutput&) = delete;

    int SampleRate() override;
    /// Fails only when a file cannot be written.
    std::optional<Error> Start(SoundSource& source) override;
    void Stop() override;
    [[nodiscard]] std::int64_t FramesHeard() override;
    [[nodiscard]] std::string Name() override;
    void Maintain() override;
    void LookAgain() override;

  private:
    /// Passes the frames of the source on, and counts them across replacements.
    struct Counter final : SoundSource {
        void Fill(std::span<float> out) noexcept override;
        SoundSource* source = nullptr;
        std::atomic<std::int64_t> asked{0};
    };
    void Choose();
    void MakeDevice();
    std::optional<Error> Use(AudioOutput& output);
    bool Halted();
    void Replace();
    [[nodiscard]] bool MayTry() const;

    const AudioDriver driver_;
    const Clock& clock_;
    const DeviceMaker makeDevice_;
    const Say say_;
    bool saidSilent_ = false;
    Counter counter_;
    std::unique_ptr<DeviceOutput> device_;
    std::unique_ptr<AudioOutput> other_;  ///< the file or the silence
    AudioOutput* current_ = nullptr;      ///< the one that runs
    std::int64_t before_ = 0;             ///< frames asked for by those that ran before it
    std::int64_t heardAtStop_ = 0;
    bool deviceMissing_ = false;
    std::chrono::nanoseconds nextTry_{0};
    std::int64_t lastAsked_ = 0;
    std::chrono::nanoseconds lastProgress_{0};
};

}  // namespace sonnel
