#include "platform/audio/FluidSynthesizer.h"

#include "platform/Paths.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <string>
#include <utility>

#include <fluidsynth.h>

namespace sonnel {

namespace {

constexpr int kChannels = 16;
constexpr int kDrumChannel = 9;
constexpr int kPolyphony = 256;
constexpr std::size_t kBlockFrames = 64;
constexpr int kDeviceId = 16;
/// A loud arrangement on all 16 channels peaks at 0.7 to 0.8 with the usual SoundFonts.
constexpr double kGain = 0.2;

struct FluidDeleter {
    void operator()(fluid_settings_t* settings) const { delete_fluid_settings(settings); }
    void operator()(fluid_synth_t* synth) const { delete_fluid_synth(synth); }
};
using Settings = std::unique_ptr<fluid_settings_t, FluidDeleter>;
using Synth = std::unique_ptr<fluid_synth_t, FluidDeleter>;

/// Receives FluidSynth's log: keeps the last error in the text it is given, drops the rest.
void KeepError(int level, const char* message, void* text) {
    if (text != nullptr && level <= FLUID_ERR) {
        *static_cast<std::string*>(text) = message;
    }
}

void SendLogTo(std::string* text) {
    for (int level = FLUID_PANIC; level < LAST_LOG_LEVEL; ++level) {
        fluid_set_log_function(level, KeepError, text);
    }
}

Settings MakeSettings(int sampleRate) {
    Settings settings(new_fluid_settings());
    // Only one thread uses the synthesizer, so its own locks and queues would only cost time.
    fluid_settings_setint(settings.get(), "synth.threadsafe-api", 0);
    fluid_settings_setint(settings.get(), "synth.polyphony", kPolyphony);
    fluid_settings_setint(settings.get(), "synth.device-id", kDeviceId);
    fluid_settings_setint(settings.get(), "synth.dynamic-sample-loading", 0);
    fluid_settings_setint(settings.get(), "synth.lock-memory", 0);
    fluid_settings_setint(settings.get(), "synth.cpu-cores", 1);
    fluid_settings_setnum(settings.get(), "synth.gain", kGain);
    if (fluid_settings_setnum(settings.get(), "synth.sample-rate", sampleRate) != FLUID_OK) {
        return nullptr;
    }
    return settings;
}

/// Carries out a universal real-time master volume, which FluidSynth itself ignores. False when it
/// is another message.
bool MasterVolume(fluid_synth_t* synth, std::span<const std::uint8_t> data) {
    if (data.size() != 6 || data[0] != 0x7F || data[2] != 0x04 || data[3] != 0x01) {
        return false;
    }
    const double volume = ((data[5] & 0x7F) * 128 + (data[4] & 0x7F)) / 16383.0;
    fluid_synth_set_gain(synth, static_cast<float>(kGain * volume * volume));
    return true;
}

}  // namespace

struct FluidSynthesizer::Impl {
    std::filesystem::path soundFont;
    int sampleRate = 0;
    Settings settings;
    Synth synth;  // after the settings: it must go first
    std::array<float, 2 * kBlockFrames> block{};
    std::size_t used = 2 * kBlockFrames;  ///< floats of the block that were already used
    bool tuned = false;                   ///< a tuning message came since the start

    std::optional<Error> Load();
    void RenderBlock() {
        fluid_synth_write_float(synth.get(), kBlockFrames, block.data(), 0, 2, block.data(), 1, 2);
    }
    void Silence();
    void EvenOutVoices();
    void Restart();
    void ForgetTunings();
};

/// Makes the synthesizer for this rate and loads the SoundFont.
std::optional<Error> FluidSynthesizer::Impl::Load() {
    std::string reason;
    SendLogTo(&reason);
    settings = MakeSettings(sampleRate);
    if (settings) {
        synth.reset(new_fluid_synth(settings.get()));
    }
    const bool loaded =
        synth && fluid_synth_sfload(synth.get(), Utf8FromPath(soundFont).c_str(), 1) >= 0;
    SendLogTo(nullptr);
    if (!synth) {
        return Error{EINVAL, "The synthesizer cannot be started at " + std::to_string(sampleRate) +
                                 " frames per second: " + reason};
    }
    if (!loaded) {
        return Error{EINVAL, "The SoundFont \"" + Utf8FromPath(soundFont) +
                                 "\" cannot be loaded. Choose another SoundFont file (.sf2 or "
                                 ".sf3). The synthesizer says: " +
                                 reason};
    }
    return {};
}

/// FluidSynth removes voices only when it renders, and a system reset before that revives them; so
/// a block is rendered and dropped.
void FluidSynthesizer::Impl::Silence() {
    fluid_synth_all_sounds_off(synth.get(), -1);
    RenderBlock();
    used = block.size();
}

/// A FluidSynth voice starts each note from the loudness its last note ended with. Inaudible notes
/// on all of them make that the same for every voice: nothing.
void FluidSynthesizer::Impl::EvenOutVoices() {
    fluid_synth_set_gain(synth.get(), 0);
    for (int channel = 0; channel < kChannels; ++channel) {
        if (channel == kDrumChannel) {
            continue;
        }
        fluid_synth_cc(synth.get(), channel, 7, 0);
        fluid_synth_cc(synth.get(), channel, 11, 0);
        for (int key = 0; key < 128; ++key) {
            if (fluid_synth_get_active_voice_count(synth.get()) >= kPolyphony) {
                break;
            }
            fluid_synth_noteon(synth.get(), channel, key, 1);
        }
    }
    RenderBlock();
    RenderBlock();
    Silence();
    fluid_synth_set_gain(synth.get(), static_cast<float>(kGain));
}

/// Tunings stay in FluidSynth's table after a reset; equal temperament means "none".
void FluidSynthesizer::Impl::ForgetTunings() {
    constexpr int entries = 128 * 128;
    std::array<double, 128> pitches{};
    for (int entry = 0; entry < entries && tuned; ++entry) {
        const int bank = entry / 128;
        const int program = entry % 128;
        if (fluid_synth_tuning_dump(synth.get(), bank, program, nullptr, 0, pitches.data()) ==
            FLUID_OK) {
            fluid_synth_activate_key_tuning(synth.get(), bank, program, "", nullptr, 0);
        }
    }
    tuned = false;
}

void FluidSynthesizer::Impl::Restart() {
    // A GS reset is a system reset that also brings back the way banks are selected.
    constexpr std::array<std::uint8_t, 9> gsReset = {0x41, 0x10, 0x42, 0x12, 0x40,
                                                     0x00, 0x7F, 0x00, 0x41};
    Silence();
    fluid_synth_system_reset(synth.get());
    EvenOutVoices();
    // Setting the rate is the one call that sets the modulators of reverb and chorus back.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
    fluid_synth_set_sample_rate(synth.get(), static_cast<float>(sampleRate));
#pragma GCC diagnostic pop
    ForgetTunings();
    fluid_synth_sysex(synth.get(), reinterpret_cast<const char*>(gsReset.data()), gsReset.size(),
                      nullptr, nullptr, nullptr, 0);
}

FluidSynthesizer::FluidSynthesizer(SoundFontFinder findSoundFont)
    : findSoundFont_(std::move(findSoundFont)) {}

FluidSynthesizer::~FluidSynthesizer() = default;

std::optional<Error> FluidSynthesizer::Prepare(int sampleRate) {
    Result<std::filesystem::path> found = findSoundFont_();
    if (!found) {
        return found.error();
    }
    if (impl_ && impl_->sampleRate == sampleRate && impl_->soundFont == *found) {
        return {};
    }
    impl_.reset();
    auto next = std::make_unique<Impl>();
    next->soundFont = *found;
    next->sampleRate = sampleRate;
    if (auto error = next->Load()) {
        return error;
    }
    impl_ = std::move(next);
    impl_->Restart();
    return {};
}

void FluidSynthesizer::Reset() noexcept {
    if (impl_) {
        impl_->Restart();
    }
}

bool FluidSynthesizer::PlaysDrums(int channel) noexcept {
    constexpr int drumBank = 128;
    int soundFont = 0;
    int bank = 0;
    int program = 0;
    return impl_ && impl_->synth &&
           fluid_synth_get_program(impl_->synth.get(), channel, &soundFont, &bank, &program) ==
               FLUID_OK &&
           bank == drumBank;
}

void FluidSynthesizer::ChannelMessage(std::uint8_t status, std::uint8_t data1,
                                      std::uint8_t data2) noexcept {
    if (!impl_) {
        return;
    }
    fluid_synth_t* synth = impl_->synth.get();
    const int channel = status & 0x0F;
    const int first = data1 & 0x7F;
    const int second = data2 & 0x7F;
    switch (status & 0xF0) {
        case 0x80:
            fluid_synth_noteoff(synth, channel, first);
            break;
        case 0x90:
            fluid_synth_noteon(synth, channel, first, second);
            break;
        case 0xA0:
            fluid_synth_key_pressure(synth, channel, first, second);
            break;
        case 0xB0:
            fluid_synth_cc(synth, channel, first, second);
            break;
        case 0xC0:
            fluid_synth_program_change(synth, channel, first);
            break;
        case 0xD0:
            fluid_synth_channel_pressure(synth, channel, first);
            break;
        case 0xE0:
            fluid_synth_pitch_bend(synth, channel, second * 128 + first);
            break;
        default:
            break;
    }
}

void FluidSynthesizer::SystemExclusive(std::span<const std::uint8_t> data) noexcept {
    constexpr std::size_t longest = 65536;
    if (!impl_ || data.size() < 4 || data.size() > longest ||
        MasterVolume(impl_->synth.get(), data)) {
        return;
    }
    constexpr std::uint8_t universal = 0x7E;
    constexpr std::uint8_t tuningStandard = 0x08;
    if (data[0] >= universal && data[2] == tuningStandard) {
        impl_->tuned = true;
    }
    fluid_synth_sysex(impl_->synth.get(), reinterpret_cast<const char*>(data.data()),
                      static_cast<int>(data.size()), nullptr, nullptr, nullptr, 0);
}

void FluidSynthesizer::AllSoundOff() noexcept {
    if (impl_) {
        impl_->Silence();
    }
}

void FluidSynthesizer::Render(std::span<float> out) noexcept {
    if (!impl_) {
        std::fill(out.begin(), out.end(), 0.0F);
        return;
    }
    while (!out.empty()) {
        if (impl_->used == impl_->block.size()) {
            impl_->RenderBlock();
            impl_->used = 0;
        }
        const std::size_t count = std::min(out.size(), impl_->block.size() - impl_->used);
        std::transform(impl_->block.data() + impl_->used, impl_->block.data() + impl_->used + count,
                       out.begin(), [](float sample) { return std::clamp(sample, -1.0F, 1.0F); });
        impl_->used += count;
        out = out.subspan(count);
    }
}

int FluidSynthesizer::ActiveVoices() const noexcept {
    return impl_ ? fluid_synth_get_active_voice_count(impl_->synth.get()) : 0;
}

}  // namespace sonnel
