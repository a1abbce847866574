#include "platform/midi/TempoMap.h"

#include "platform/Numbers.h"

#include <algorithm>
#include <limits>

namespace sonnel {
namespace {

constexpr std::uint64_t kDefaultTempo = 500000;
constexpr std::uint64_t kMicrosPerSecond = 1000000;
constexpr std::uint64_t kLatestMicros =
    1000 * static_cast<std::uint64_t>(std::numeric_limits<std::int32_t>::max());

}  // namespace

TempoMap::TempoMap(const SmfFile& file) {
    const auto ticks = static_cast<std::uint64_t>(file.division.ticks);
    const auto frames = static_cast<std::uint64_t>(file.division.framesPerSecond);
    const bool dropFrame = frames == 29;
    unit_ = frames == 0 ? ticks : (dropFrame ? 30 : frames) * ticks;
    latest_ = kLatestMicros * unit_;
    if (frames == 0) {
        stretches_.push_back({0, 0, kDefaultTempo});
        AddTempos(file);
    } else {
        stretches_.push_back({0, 0, dropFrame ? kMicrosPerSecond * 1001 / 1000 : kMicrosPerSecond});
    }
}

void TempoMap::AddTempos(const SmfFile& file) {
    std::vector<Stretch> changes;
    for (const SmfTrack& track : file.tracks) {
        for (const SmfEvent& event : track) {
            const std::uint64_t tempo =
                event.IsMeta(kMetaTempo) ? TempoOf(file.Data(event)).value_or(0) : 0;
            if (tempo > 0) {
                changes.push_back({event.tick, 0, tempo});
            }
        }
    }
    std::stable_sort(changes.begin(), changes.end(),
                     [](const Stretch& a, const Stretch& b) { return a.tick < b.tick; });
    for (Stretch& change : changes) {
        change.start = Time(stretches_.back(), change.tick);
        stretches_.push_back(change);
    }
}

std::uint64_t TempoMap::Time(const Stretch& stretch, std::uint64_t tick) const {
    const std::uint64_t ticks = tick - stretch.tick;
    const std::uint64_t room = latest_ - stretch.start;
    return ticks > room / stretch.micros ? latest_ : stretch.start + ticks * stretch.micros;
}

double TempoMap::Microseconds(std::uint64_t tick) const {
    const auto after = std::upper_bound(
        stretches_.begin(), stretches_.end(), tick,
        [](std::uint64_t at, const Stretch& stretch) { return at < stretch.tick; });
    return static_cast<double>(Time(*(after - 1), tick)) / static_cast<double>(unit_);
}

std::int32_t TempoMap::Milliseconds(std::uint64_t tick) const {
    return RoundHalfEven<std::int32_t>(Microseconds(tick) / 1000);
}

std::int32_t TempoMap::Tenths(std::uint64_t tick) const {
    return RoundHalfEven<std::int32_t>(Microseconds(tick) / 100000);
}

std::int64_t TempoMap::Frame(std::uint64_t tick, int rate) const {
    return RoundHalfEven<std::int64_t>(Microseconds(tick) * rate / kMicrosPerSecond);
}

}  // namespace sonnel
