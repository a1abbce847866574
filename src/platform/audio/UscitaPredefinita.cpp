#include "platform/audio/UscitaPredefinita.h"

#include "platform/Files.h"
#include "platform/audio/UscitaCubeb.h"
#include "platform/audio/UscitaSilenziosa.h"
#include "platform/audio/UscitaWav.h"

#include <algorithm>
#include <iostream>
#include <utility>

namespace sonnel {

namespace {

constexpr int kRateWithoutDevice = 44100;
constexpr std::chrono::seconds kBetweenTries{2};

}  // namespace

void UscitaPredefinita::Counter::Fill(std::span<float> out) noexcept {
    source->Fill(out);
    asked.fetch_add(static_cast<std::int64_t>(out.size() / 2), std::memory_order_release);
}

UscitaPredefinita::UscitaPredefinita(AudioDriver driver)
    : UscitaPredefinita(
          std::move(driver),
          [](const std::string& system) { return std::make_unique<UscitaCubeb>(system); },
          [](const std::string& sentence) { std::cerr << sentence + "\n"; }) {}

UscitaPredefinita::UscitaPredefinita(AudioDriver driver, DeviceMaker makeDevice, Say say)
    : driver_(std::move(driver)), makeDevice_(std::move(makeDevice)), say_(std::move(say)) {}

UscitaPredefinita::~UscitaPredefinita() {
    Stop();
}

void UscitaPredefinita::Choose() {
    if (device_ || other_) {
        return;
    }
    switch (driver_.kind) {
        case AudioDriver::Kind::Device:
            MakeDevice();
            other_ = std::make_unique<UscitaSilenziosa>(device_->SampleRate());
            break;
        case AudioDriver::Kind::File:
            other_ = std::make_unique<UscitaWav>(PathFromUtf8(driver_.name), kRateWithoutDevice);
            break;
        case AudioDriver::Kind::Silence:
            other_ = std::make_unique<UscitaSilenziosa>(kRateWithoutDevice);
            break;
    }
}

void UscitaPredefinita::MakeDevice() {
    device_ = makeDevice_(driver_.name);
    device_->SampleRate();
    const std::string system = device_->System();
    if (!driver_.name.empty() && system != driver_.name) {
        say_("The sound system \"" + driver_.name + "\" is not available; " +
             (system.empty() ? "none is used" : "\"" + system + "\" is used") +
             " instead. Check the setting AudioDriver or the environment variable SONNEL_AUDIO.");
    }
}

int UscitaPredefinita::SampleRate() {
    Choose();
    return device_ ? device_->SampleRate() : other_->SampleRate();
}

std::optional<Error> UscitaPredefinita::Start(SoundSource& source) {
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

/// Starts an output that goes on where the counter stands.
std::optional<Error> UscitaPredefinita::Use(UscitaAudio& output) {
    before_ = counter_.asked;
    current_ = &output;
    auto error = output.Start(counter_);
    if (error) {
        current_ = nullptr;
    }
    return error;
}

void UscitaPredefinita::Stop() {
    if (current_ != nullptr) {
        current_->Stop();
        heardAtStop_ = before_ + current_->FramesHeard();
        current_ = nullptr;
    }
}

std::int64_t UscitaPredefinita::FramesHeard() const {
    if (current_ == nullptr) {
        return heardAtStop_;
    }
    return std::min(before_ + current_->FramesHeard(), counter_.asked.load());
}

void UscitaPredefinita::Maintain() {
    if (current_ == nullptr || !device_) {
        return;
    }
    const bool lost = current_ == device_.get() && device_->Lost();
    const bool mayTry = Clock::now() >= nextTry_;
    if (!lost && !(deviceMissing_ && mayTry)) {
        return;
    }
    current_->Stop();
    // A device that fails again and again must not keep the user waiting at every turn.
    deviceMissing_ = !mayTry || !TryDevice();
    if (deviceMissing_) {
        static_cast<void>(Use(*other_));  // silence always starts
    }
}

bool UscitaPredefinita::TryDevice() {
    nextTry_ = Clock::now() + kBetweenTries;
    return !Use(*device_);
}

}  // namespace sonnel
