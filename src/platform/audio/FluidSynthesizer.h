#pragma once

#include "platform/Result.h"
#include "platform/Synthesizer.h"

#include <filesystem>
#include <functional>
#include <memory>

namespace sonnel {

/// The synthesizer: FluidSynth with a General MIDI SoundFont. Messages take effect at its next
/// block of 64 frames. The same messages give the same samples on every synthesizer just prepared,
/// and after Reset too but for the rounding of a few last bits (1e-7 of full scale), as long as no
/// more than 256 voices sound at once.
class FluidSynthesizer final : public Synthesizer {
  public:
    using SoundFontFinder = std::function<Result<std::filesystem::path>()>;
    /// Prepare asks `findSoundFont` each time and loads when its answer or the rate has changed.
    explicit FluidSynthesizer(SoundFontFinder findSoundFont);
    ~FluidSynthesizer() override;
    FluidSynthesizer(const FluidSynthesizer&) = delete;
    FluidSynthesizer& operator=(const FluidSynthesizer&) = delete;

    /// Rates from 8,000 to 96,000 frames per second.
    std::optional<Error> Prepare(int sampleRate) override;
    void Reset() noexcept override;
    [[nodiscard]] bool PlaysDrums(int channel) noexcept override;
    void ChannelMessage(std::uint8_t status, std::uint8_t data1,
                        std::uint8_t data2) noexcept override;
    void SystemExclusive(std::span<const std::uint8_t> data) noexcept override;
    void AllSoundOff() noexcept override;
    void Render(std::span<float> out) noexcept override;

    /// Voices that sound or ring on.
    [[nodiscard]] int ActiveVoices() const noexcept;

  private:
    struct Impl;
    SoundFontFinder findSoundFont_;
    std::unique_ptr<Impl> impl_;  // none until Prepare has succeeded
};

}  // namespace sonnel
