#include "platform/audio/SilentOutput.h"

#include <algorithm>
#include <utility>

namespace sonnel {

namespace {

constexpr int kPiecesPerSecond = 200;
constexpr int kPiecesAhead = 2;
/// After the whole process has stood still for longer, the sound goes on from where it was.
constexpr std::int64_t kLongestCatchUpSeconds = 1;

}  // namespace

SilentOutput::SilentOutput(int sampleRate, std::optional<WavFile> file)
    : sampleRate_(sampleRate),
      file_(std::move(file)),
      piece_(2 * static_cast<std::size_t>(sampleRate / kPiecesPerSecond)) {}

SilentOutput::~SilentOutput() {
    SilentOutput::Stop();
}

int SilentOutput::SampleRate() {
    return sampleRate_;
}

std::optional<Error> SilentOutput::Start(SoundSource& source) {
    Stop();
    if (auto error = file_ ? file_->Begin(sampleRate_) : std::nullopt) {
        return error;
    }
    source_ = &source;
    asked_ = 0;
    stopping_ = false;
    origin_ = SteadyClock::now().time_since_epoch();
    thread_ = std::thread(&SilentOutput::Run, this);
    return {};
}

void SilentOutput::Stop() {
    if (!thread_.joinable()) {
        return;
    }
    {
        const std::lock_guard lock(mutex_);
        stopping_ = true;
    }
    wake_.notify_one();
    thread_.join();
    heardAtStop_ = std::min(Elapsed(), asked_.load());
    if (file_) {
        file_->End();
    }
}

std::int64_t SilentOutput::FramesHeard() {
    return thread_.joinable() ? std::clamp<std::int64_t>(Elapsed(), 0, asked_) : heardAtStop_;
}

/// Frames whose time has come since Start.
std::int64_t SilentOutput::Elapsed() const {
    const auto elapsed = SteadyClock::now().time_since_epoch() - origin_.load();
    const auto whole = std::chrono::duration_cast<std::chrono::seconds>(elapsed);
    const auto rest = std::chrono::nanoseconds(elapsed - whole);
    return whole.count() * sampleRate_ + rest.count() * sampleRate_ / 1'000'000'000;
}

void SilentOutput::AskUpTo(std::int64_t frames) {
    while (asked_ < frames) {
        source_->Fill(piece_);
        if (file_) {
            file_->Take(piece_);
        }
        asked_ += static_cast<std::int64_t>(piece_.size() / 2);
    }
}

void SilentOutput::Run() {
    const auto pieceFrames = static_cast<std::int64_t>(piece_.size() / 2);
    std::unique_lock lock(mutex_);
    while (!stopping_) {
        lock.unlock();
        if (const std::int64_t behind = Elapsed() - asked_;
            behind > kLongestCatchUpSeconds * sampleRate_) {
            origin_ =
                origin_.load() + std::chrono::nanoseconds(behind * 1'000'000'000 / sampleRate_);
        }
        AskUpTo(Elapsed() + kPiecesAhead * pieceFrames);
        lock.lock();
        wake_.wait_for(lock, std::chrono::milliseconds(1000 / kPiecesPerSecond),
                       [this] { return stopping_; });
    }
}

}  // namespace sonnel
