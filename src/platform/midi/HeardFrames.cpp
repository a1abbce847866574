#include "platform/midi/HeardFrames.h"

#include <algorithm>

namespace sonnel {

std::int64_t HeardFrames::Update(std::int64_t reading, std::int64_t rendered,
                                 std::chrono::nanoseconds now) {
    const std::int64_t counted = std::clamp<std::int64_t>(
        std::clamp<std::int64_t>(reading, 0, rendered) + offset_, 0, rendered);
    if (counted < reading_ - rate_) {
        offset_ += reading_ - counted;
        readAt_ = now;
    } else if (counted != reading_ || !readAt_) {
        reading_ = counted;
        readAt_ = now;
    }
    const double seconds = std::chrono::duration<double>(now - *readAt_).count();
    const double since = std::clamp(seconds * rate_, 0.0, static_cast<double>(rendered));
    const std::int64_t estimate = std::min(reading_ + static_cast<std::int64_t>(since), rendered);
    heard_ = std::max(heard_, estimate);
    return heard_;
}

}  // namespace sonnel
