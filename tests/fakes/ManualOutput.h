#pragma once

#include "platform/audio/DeviceOutput.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace sonnel::test {

/// A sound device that asks for frames when the test says so. What was asked for is heard after
/// `latency` frames, unless the test sets what is reported.
class ManualOutput : public DeviceOutput {
  public:
    int SampleRate() override { return rate; }
    std::optional<Error> Start(SoundSource& source) override {
        ++starts;
        asked = 0;
        reported.reset();
        lost = false;
        source_ = startError ? nullptr : &source;
        return startError;
    }
    void Stop() override { source_ = nullptr; }
    std::int64_t FramesHeard() override {
        return reported.value_or(std::max<std::int64_t>(0, asked - latency));
    }
    void Maintain() override { ++maintained; }
    void LookAgain() override { ++maintained; }
    bool Lost() const override { return lost; }
    std::string System() const override { return "manual"; }

    /// Asks for frames, `block` at a time, and appends what it got to `sound` when that is kept.
    void Ask(std::int64_t frames, std::int64_t block = 512) {
        while (source_ != nullptr && frames > 0) {
            const std::int64_t count = std::min(frames, block);
            buffer_.assign(2 * static_cast<std::size_t>(count), 0.0F);
            source_->Fill(buffer_);
            if (keepSound) {
                sound.insert(sound.end(), buffer_.begin(), buffer_.end());
            }
            asked += count;
            frames -= count;
        }
    }
    bool Running() const { return source_ != nullptr; }

    int rate = 44100;
    std::int64_t latency = 0;
    std::optional<std::int64_t> reported;
    std::optional<Error> startError;
    bool lost = false;
    int starts = 0;
    int maintained = 0;
    std::int64_t asked = 0;
    bool keepSound = false;
    std::vector<float> sound;

  private:
    SoundSource* source_ = nullptr;
    std::vector<float> buffer_;
};

}  // namespace sonnel::test
