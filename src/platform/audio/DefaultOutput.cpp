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

}  // namespace

void DefaultOutput::Counter::Fill(std::span<float> out) noexcept {
    source->Fill(out);
    asked.fetch_add(static_cast<std::int64_t>(out.size() / 2), std::memory_order_release);
}

DefaultOutput::DefaultOutput(AudioDriver driver)
    : DefaultOutput(
          std::move(driver),
          [](const std::string& system) { return std::make_unique<CubebOutput>(system); },
          [](const std::string& sentence) { std::cerr << sentence + "\n"; }) {}

DefaultOutput::DefaultOutput(AudioDriver driver, DeviceMaker makeDevice, Say say)
    : driver_(std::move(driver)), makeDevice_(std::move(makeDevice)), say_(std::move(say)) {}

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
        if (!std::exchange(saidSilent_, true)) {
            say_("No sound device can be opened: the song plays silently.");
        }
    }
    return Use(*other_);
}

/// Starts an output that continues at the current count.
std::optional<Error> DefaultOutput::Use(AudioOutput& output) {
    before_ = counter_.asked;
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

void DefaultOutput::Maintain() {
    if (current_ == nullptr || !device_) {
        return;
    }
    const bool lost = current_ == device_.get() && device_->Lost();
    const bool mayTry = SteadyClock::now() >= nextTry_;
    if (!lost && !(deviceMissing_ && mayTry)) {
        return;
    }
    current_->Stop();
    // A device that fails again and again must not delay every call.
    deviceMissing_ = !mayTry || !TryDevice();
    if (deviceMissing_) {
        static_cast<void>(Use(*other_));  // silence always starts
    }
}

bool DefaultOutput::TryDevice() {
    nextTry_ = SteadyClock::now() + kBetweenTries;
    return !Use(*device_);
}

}  // namespace sonnel
