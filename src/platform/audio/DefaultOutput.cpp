#include "platform/audio/DefaultOutput.h"

#include "platform/Paths.h"
#include "platform/audio/CubebOutput.h"
#include "platform/audio/SilentOutput.h"

#include <algorithm>
#include <iostream>
#include <utility>

namespace sonnel {

namespace {

constexpr int kRateWithoutDevice = 44100;
constexpr std::chrono::seconds kBetweenTries{2};
/// A device that asks for nothing as long as this has gone, whatever its system says.
constexpr std::chrono::seconds kLongestHalt{2};

}  // namespace

void DefaultOutput::Counter::Fill(std::span<float> out) noexcept {
    source->Fill(out);
    asked.fetch_add(static_cast<std::int64_t>(out.size() / 2), std::memory_order_release);
}

DefaultOutput::DefaultOutput(AudioDriver driver, const Clock& clock)
    : DefaultOutput(
          std::move(driver), clock,
          [](const std::string& system) { return std::make_unique<CubebOutput>(system); },
          [](const std::string& sentence) { std::cerr << sentence + "\n"; }) {}

DefaultOutput::DefaultOutput(AudioDriver driver, const Clock& clock, DeviceMaker makeDevice,
                             Say say)
    : driver_(std::move(driver)),
      clock_(clock),
      makeDevice_(std::move(makeDevice)),
      say_(std::move(say)) {}

DefaultOutput::~DefaultOutput() {
    Stop();
}

void DefaultOutput::Choose() {
    if (device_ || other_) {
        return;
    }
    switch (driver_.kind) {
        case AudioDriver::Kind::Device:
            MakeDevice();
            other_ = std::make_unique<SilentOutput>(device_->SampleRate());
            break;
        case AudioDriver::Kind::File:
            other_ = std::make_unique<SilentOutput>(kRateWithoutDevice,
                                                    WavFile(PathFromUtf8(driver_.name)));
            break;
        case AudioDriver::Kind::Silence:
            other_ = std::make_unique<SilentOutput>(kRateWithoutDevice);
            break;
    }
}

void DefaultOutput::MakeDevice() {
    device_ = makeDevice_(driver_.name);
    device_->SampleRate();
    const std::string system = device_->System();
    if (!driver_.name.empty() && system != driver_.name) {
        say_("The sound system \"" + driver_.name + "\" is not available; " +
             (system.empty() ? "none is used" : "\"" + system + "\" is used") +
             " instead. Check the setting AudioDriver or the environment variable SONNEL_AUDIO.");
    }
}

int DefaultOutput::SampleRate() {
    Choose();
    return device_ ? device_->SampleRate() : other_->SampleRate();
}

std::optional<Error> DefaultOutput::Start(SoundSource& source) {
    Stop();
    Choose();
    counter_.source = &source;
    counter_.asked = 0;
    deviceMissing_ = false;
    if (device_) {
        if (!Use(*device_)) {
            return {};
        }
        deviceMissing_ = device_->Lost();  // it may still come
        if (!std::exchange(saidSilent_, true)) {
            say_("No sound device can be opened: the song plays silently.");
        }
    }
    return Use(*other_);
}

/// Starts an output that continues at the current count.
std::optional<Error> DefaultOutput::Use(AudioOutput& output) {
    before_ = counter_.asked;
    lastAsked_ = -1;
    current_ = &output;
    auto error = output.Start(counter_);
    if (error) {
        current_ = nullptr;
    }
    return error;
}

void DefaultOutput::Stop() {
    if (current_ != nullptr) {
        current_->Stop();
        heardAtStop_ = before_ + current_->FramesHeard();
        current_ = nullptr;
    }
}

std::int64_t DefaultOutput::FramesHeard() {
    if (current_ == nullptr) {
        return heardAtStop_;
    }
    return std::min(before_ + current_->FramesHeard(), counter_.asked.load());
}

std::string DefaultOutput::Name() {
    return current_ != nullptr ? current_->Name() : "";
}

bool DefaultOutput::Halted() {
    const std::int64_t asked = counter_.asked;
    if (std::exchange(lastAsked_, asked) != asked) {
        lastProgress_ = clock_.Steady();
    }
    return clock_.Steady() - lastProgress_ > kLongestHalt;
}

void DefaultOutput::Maintain() {
    if (current_ == nullptr || !device_) {
        return;
    }
    const bool lost = current_ == device_.get() && (Halted() || device_->Lost());
    if (lost || (deviceMissing_ && MayTry())) {
        Replace();
        deviceMissing_ = current_ != device_.get();
    }
}

void DefaultOutput::LookAgain() {
    Maintain();
    if (device_ && current_ == other_.get() && MayTry()) {
        Replace();
    }
}

bool DefaultOutput::MayTry() const {
    return clock_.Steady() >= nextTry_;
}

/// Stops the output that runs and goes on with the device, or with silence when there is none or
/// when it was tried just now: one that fails again and again must not delay every call.
void DefaultOutput::Replace() {
    current_->Stop();
    if (MayTry()) {
        nextTry_ = clock_.Steady() + kBetweenTries;
        if (!Use(*device_)) {
            return;
        }
    }
    static_cast<void>(Use(*other_));  // silence always starts
}

}  // namespace sonnel
