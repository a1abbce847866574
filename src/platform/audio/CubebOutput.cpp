#include "platform/audio/CubebOutput.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <span>
#include <utility>

#include <cubeb/cubeb.h>

namespace sonnel {

namespace {

constexpr int kUsualRate = 48000;
constexpr int kLowestRate = 8000;
constexpr int kHighestRate = 96000;
/// Short enough for commands to act at once, long enough for a busy machine.
constexpr unsigned kLatencyMs = 20;

struct CubebDeleter {
    void operator()(cubeb* context) const { cubeb_destroy(context); }
    void operator()(cubeb_stream* stream) const {
        cubeb_stream_stop(stream);
        cubeb_stream_destroy(stream);
    }
};

}  // namespace

struct CubebOutput::Impl {
    std::string wanted;
    int rate = 0;
    unsigned latency = 0;
    SoundSource* source = nullptr;
    std::atomic<std::int64_t> asked{0};
    std::atomic<bool> lost{false};
    std::int64_t heard = 0;
    std::unique_ptr<cubeb, CubebDeleter> context;
    std::unique_ptr<cubeb_stream, CubebDeleter> stream;  // after the context: it must go first

    bool OpenContext();
    bool OpenStream();
    [[nodiscard]] cubeb_stream_params Parameters() const;

    static long OnData(cubeb_stream* /*stream*/, void* user, const void* /*input*/, void* output,
                       long frames) {
        auto& self = *static_cast<Impl*>(user);
        const auto count = static_cast<std::size_t>(frames);
        self.source->Fill(std::span(static_cast<float*>(output), 2 * count));
        self.asked.fetch_add(frames, std::memory_order_release);
        return frames;
    }
    static void OnState(cubeb_stream* /*stream*/, void* user, cubeb_state state) {
        if (state == CUBEB_STATE_ERROR) {
            static_cast<Impl*>(user)->lost.store(true);
        }
    }
};

bool CubebOutput::Impl::OpenContext() {
    if (context) {
        return true;
    }
    cubeb* opened = nullptr;
    if (cubeb_init(&opened, "Sonnel", wanted.empty() ? nullptr : wanted.c_str()) != CUBEB_OK) {
        return false;
    }
    context.reset(opened);
    return true;
}

cubeb_stream_params CubebOutput::Impl::Parameters() const {
    cubeb_stream_params parameters{};
    parameters.format = CUBEB_SAMPLE_FLOAT32NE;
    parameters.rate = static_cast<std::uint32_t>(rate);
    parameters.channels = 2;
    parameters.layout = CUBEB_LAYOUT_STEREO;
    parameters.prefs = CUBEB_STREAM_PREF_NONE;
    return parameters;
}

bool CubebOutput::Impl::OpenStream() {
    if (!OpenContext()) {
        return false;
    }
    cubeb_stream_params parameters = Parameters();
    std::uint32_t least = 0;
    if (cubeb_get_min_latency(context.get(), &parameters, &least) != CUBEB_OK) {
        least = 0;
    }
    latency = std::max(least, parameters.rate * kLatencyMs / 1000);
    asked = 0;
    heard = 0;
    lost = false;
    cubeb_stream* opened = nullptr;
    if (cubeb_stream_init(context.get(), &opened, "Sonnel", nullptr, nullptr, nullptr, &parameters,
                          latency, OnData, OnState, this) != CUBEB_OK) {
        return false;
    }
    stream.reset(opened);
    if (cubeb_stream_start(opened) != CUBEB_OK) {
        stream.reset();
        return false;
    }
    return true;
}

CubebOutput::CubebOutput(std::string system) : impl_(std::make_unique<Impl>()) {
    impl_->wanted = std::move(system);
}

CubebOutput::~CubebOutput() = default;

int CubebOutput::SampleRate() {
    if (impl_->rate == 0) {
        std::uint32_t preferred = 0;
        const bool known =
            impl_->OpenContext() &&
            cubeb_get_preferred_sample_rate(impl_->context.get(), &preferred) == CUBEB_OK;
        const bool usable = known && preferred >= kLowestRate && preferred <= kHighestRate;
        impl_->rate = usable ? static_cast<int>(preferred) : kUsualRate;
    }
    return impl_->rate;
}

std::optional<Error> CubebOutput::Start(SoundSource& source) {
    Stop();
    SampleRate();
    impl_->source = &source;
    if (impl_->OpenStream()) {
        return {};
    }
    // The connection may date from before the sound system was restarted.
    impl_->context.reset();
    if (impl_->OpenStream()) {
        return {};
    }
    return Error{ENODEV, "No sound device can be opened."};
}

void CubebOutput::Stop() {
    static_cast<void>(FramesHeard());  // keeps the last count
    impl_->stream.reset();
    if (impl_->lost) {
        impl_->context.reset();
    }
}

std::int64_t CubebOutput::FramesHeard() {
    std::uint64_t position = 0;
    if (impl_->stream && cubeb_stream_get_position(impl_->stream.get(), &position) == CUBEB_OK) {
        const std::int64_t asked = impl_->asked.load(std::memory_order_acquire);
        const auto limit = static_cast<std::uint64_t>(asked);
        impl_->heard = std::max(impl_->heard, static_cast<std::int64_t>(std::min(position, limit)));
    }
    return impl_->heard;
}

bool CubebOutput::Lost() const {
    return impl_->lost;
}

std::string CubebOutput::System() const {
    return impl_->context ? cubeb_get_backend_id(impl_->context.get()) : "";
}

int CubebOutput::LatencyFrames() const {
    return static_cast<int>(impl_->latency);
}

}  // namespace sonnel
