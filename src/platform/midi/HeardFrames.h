#pragma once

#include <chrono>
#include <cstdint>
#include <optional>

namespace sonnel {

/// Turns the readings of a sound device, which stand still between two updates and may be wrong,
/// into a steady count of the frames heard.
class HeardFrames {
  public:
    explicit HeardFrames(int rate) : rate_(rate) {}

    /// The frames heard at `now`, from what the device reports: never more than were rendered, and
    /// never less than the last time. Between two changes of the reading the clock is used.
    std::int64_t Update(std::int64_t reading, std::int64_t rendered, std::chrono::nanoseconds now);

  private:
    int rate_;
    std::int64_t offset_ = 0;  ///< added to the readings of a device that began to count anew
    std::int64_t reading_ = 0;
    std::optional<std::chrono::nanoseconds> readAt_;
    std::int64_t heard_ = 0;
};

}  // namespace sonnel
