#include "platform/audio/CubebOutput.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <future>
#include <span>
#include <thread>
#include <utility>

#include <cubeb/cubeb.h>

namespace sonnel {

namespace {

constexpr int kUsualRate = 48000;
constexpr int kLowestRate = 8000;
constexpr int kHighestRate = 96000;
/// Long enough for two cores busy with four other processes: 20 and 35 ms had up to 72 gaps in 20 s
/// there. It delays commands only, as the position is what is heard.
constexpr unsigned kLatencyMs = 60;
/// A sound system that answers at all takes a few milliseconds to open or close a stream.
constexpr std::chrono::milliseconds kPatience{300};

struct CubebDeleter {
    void operator()(cubeb* context) const { cubeb_destroy(context); }
    void operator()(cubeb_stream* stream) const {
        cubeb_stream_stop(stream);
        cubeb_stream_destroy(stream);
    }
};

}  // namespace

/// The connection to the sound system and the stream on it. Every call but the callbacks may hang
/// with the system, so Work makes them; the thread that hangs keeps the device alive.
struct CubebOutput::Device {
    std::string wanted;
    int rate = 0;
    unsigned latency = 0;
    std::atomic<SoundSource*> source{nullptr};
    std::atomic<bool> filling{false};
    std::atomic<std::int64_t> asked{0};
    std::atomic<bool> lost{false};
    std::unique_ptr<cubeb, CubebDeleter> context;
    std::unique_ptr<cubeb_stream, CubebDeleter> stream;  // after the context: it must go first

    bool OpenContext();
    void FindRate();
    bool OpenStream();
    void OpenAnew();
    void Close();
    void Detach();
    [[nodiscard]] cubeb_stream_params Parameters() const;

    void Fill(float* output, std::size_t frames);
    static long OnData(cubeb_stream* /*stream*/, void* user, const void* /*input*/, void* output,
                       long frames) {
        static_cast<Device*>(user)->Fill(static_cast<float*>(output),
                                         static_cast<std::size_t>(frames));
        return frames;
    }
    static void OnState(cubeb_stream* /*stream*/, void* user, cubeb_state state) {
        if (state == CUBEB_STATE_ERROR) {
            static_cast<Device*>(user)->lost.store(true);
        }
    }
};

void CubebOutput::Device::Fill(float* output, std::size_t frames) {
    const std::span<float> out(output, 2 * frames);
    filling = true;
    if (SoundSource* from = source) {
        from->Fill(out);
    } else {
        std::fill(out.begin(), out.end(), 0.0F);
    }
    filling = false;
    asked.fetch_add(static_cast<std::int64_t>(frames), std::memory_order_release);
}

/// After it no Fill of the source runs, whatever the stream does.
void CubebOutput::Device::Detach() {
    source = nullptr;
    while (filling) {
        std::this_thread::yield();
    }
}

bool CubebOutput::Device::OpenContext() {
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

void CubebOutput::Device::FindRate() {
    std::uint32_t preferred = 0;
    const bool known =
        OpenContext() && cubeb_get_preferred_sample_rate(context.get(), &preferred) == CUBEB_OK;
    const bool usable = known && preferred >= kLowestRate && preferred <= kHighestRate;
    rate = usable ? static_cast<int>(preferred) : kUsualRate;
}

cubeb_stream_params CubebOutput::Device::Parameters() const {
    cubeb_stream_params parameters{};
    parameters.format = CUBEB_SAMPLE_FLOAT32NE;
    parameters.rate = static_cast<std::uint32_t>(rate);
    parameters.channels = 2;
    parameters.layout = CUBEB_LAYOUT_STEREO;
    parameters.prefs = CUBEB_STREAM_PREF_NONE;
    return parameters;
}

bool CubebOutput::Device::OpenStream() {
    if (!OpenContext()) {
        return false;
    }
    cubeb_stream_params parameters = Parameters();
    std::uint32_t least = 0;
    if (cubeb_get_min_latency(context.get(), &parameters, &least) != CUBEB_OK) {
        least = 0;
    }
    latency = std::max(least, parameters.rate * kLatencyMs / 1000);
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

void CubebOutput::Device::OpenAnew() {
    Close();
    asked = 0;
    lost = false;
    if (!OpenStream()) {
        // The connection may date from before the sound system was restarted.
        context.reset();
        OpenStream();
    }
}

void CubebOutput::Device::Close() {
    stream.reset();
    if (lost) {
        context.reset();
    }
}

CubebOutput::CubebOutput(std::string system) : device_(std::make_shared<Device>()) {
    device_->wanted = std::move(system);
}

CubebOutput::~CubebOutput() {
    Stop();
    Work([](Device& device) { device.context.reset(); });
}

bool CubebOutput::Answers() const {
    return !working_.valid() ||
           working_.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
}

bool CubebOutput::Work(void (*work)(Device&)) {
    if (!Answers()) {
        return false;
    }
    std::promise<void> done;
    working_ = done.get_future();
    std::thread([device = device_, work, done = std::move(done)]() mutable {
        work(*device);
        done.set_value();
    }).detach();
    return working_.wait_for(kPatience) == std::future_status::ready;
}

int CubebOutput::SampleRate() {
    if (rate_ == 0) {
        rate_ = Work([](Device& device) { device.FindRate(); }) ? device_->rate : kUsualRate;
    }
    return rate_;
}

std::optional<Error> CubebOutput::Start(SoundSource& source) {
    Stop();
    heard_ = 0;
    const int rate = SampleRate();
    if (Answers()) {
        device_->rate = rate;
        device_->source = &source;
        if (Work([](Device& device) { device.OpenAnew(); }) && device_->stream) {
            return {};
        }
        device_->Detach();
    }
    return Error{ENODEV, "No sound device can be opened."};
}

void CubebOutput::Stop() {
    static_cast<void>(FramesHeard());  // keeps the last count
    device_->Detach();
    Work([](Device& device) { device.Close(); });
}

std::int64_t CubebOutput::FramesHeard() {
    std::uint64_t position = 0;
    if (Answers() && device_->stream &&
        cubeb_stream_get_position(device_->stream.get(), &position) == CUBEB_OK) {
        const std::int64_t asked = device_->asked.load(std::memory_order_acquire);
        const auto limit = static_cast<std::uint64_t>(asked);
        heard_ = std::max(heard_, static_cast<std::int64_t>(std::min(position, limit)));
    }
    return heard_;
}

std::string CubebOutput::Name() {
    cubeb_device* device = nullptr;
    if (!Answers() || !device_->stream ||
        cubeb_stream_get_current_device(device_->stream.get(), &device) != CUBEB_OK) {
        return System();
    }
    const std::string name = device->output_name != nullptr ? device->output_name : "";
    cubeb_stream_device_destroy(device_->stream.get(), device);
    return System() + ":" + name;
}

bool CubebOutput::Lost() const {
    return device_->lost || !Answers();
}

std::string CubebOutput::System() const {
    return Answers() && device_->context ? cubeb_get_backend_id(device_->context.get()) : "";
}

int CubebOutput::LatencyFrames() const {
    return Answers() ? static_cast<int>(device_->latency) : 0;
}

}  // namespace sonnel
