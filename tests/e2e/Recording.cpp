#include "e2e/Recording.h"

#include "fakes/TempDirectory.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <stdexcept>

namespace sonnel::test {
namespace {

constexpr std::chrono::milliseconds kOneStep(60);
constexpr std::size_t kHeaderBytes = 44;
constexpr std::size_t kBytesPerFrame = 4;
constexpr double kFullScale = 32767;
constexpr double kAudible = 0.002;

std::uint32_t Number(const std::string& bytes, std::size_t offset) {
    std::uint32_t value = 0;
    std::memcpy(&value, &bytes[offset], sizeof value);
    return value;
}

Clock::duration Seconds(double seconds) {
    return std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(seconds));
}

}  // namespace

std::vector<Step> Steps(const std::vector<Sample>& samples) {
    std::vector<Step> steps;
    for (std::size_t i = 1; i < samples.size(); ++i) {
        const double change = samples[i].sung - samples[i - 1].sung;
        const Step step{samples[i].at, change > 0};
        const bool goesOn = !steps.empty() && steps.back().grown == step.grown &&
                            step.at - steps.back().at <= kOneStep;
        if (change != 0 && !goesOn) {
            steps.push_back(step);
        }
    }
    return steps;
}

SoundFile::SoundFile(const std::filesystem::path& path, const std::vector<Sample>& samples)
    : origin_(Clock::time_point::max()) {
    const std::string bytes = Content(path);
    if (bytes.size() < kHeaderBytes || Number(bytes, 40) + kHeaderBytes != bytes.size()) {
        throw std::runtime_error("the sound file is not whole");
    }
    rate_ = Number(bytes, 24);
    samples_.resize((bytes.size() - kHeaderBytes) / sizeof(std::int16_t));
    std::memcpy(samples_.data(), &bytes[kHeaderBytes], samples_.size() * sizeof(std::int16_t));
    for (const Sample& sample : samples) {
        if (sample.soundBytes >= kHeaderBytes) {
            const auto frames = (sample.soundBytes - kHeaderBytes) / kBytesPerFrame;
            origin_ = std::min(origin_, sample.at - Seconds(static_cast<double>(frames) / rate_));
        }
    }
}

Clock::time_point SoundFile::HeardAt(std::size_t frame) const {
    return origin_ + Seconds(static_cast<double>(frame) / rate_);
}

std::size_t SoundFile::FrameAt(Clock::time_point moment) const {
    const double seconds = std::chrono::duration<double>(moment - origin_).count();
    const auto frame = static_cast<std::size_t>(std::max(0.0, seconds * rate_));
    return std::min(frame, samples_.size() / 2);
}

Clock::time_point SoundFile::Onset() const {
    const auto first = std::find_if(samples_.begin(), samples_.end(), [](std::int16_t sample) {
        return std::abs(sample) > kAudible * kFullScale;
    });
    return HeardAt(static_cast<std::size_t>(first - samples_.begin()) / 2);
}

double SoundFile::Peak(Clock::time_point from, Clock::time_point to) const {
    int peak = 0;
    for (std::size_t i = 2 * FrameAt(from); i < 2 * FrameAt(to); ++i) {
        peak = std::max(peak, std::abs(int{samples_[i]}));
    }
    return peak / kFullScale;
}

}  // namespace sonnel::test
