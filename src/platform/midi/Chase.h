#pragma once

#include "platform/midi/Sequence.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace sonnel {

/// The events (by their numbers, in order) that bring a freshly reset synthesizer to the state that
/// playing all events before number `end` would give it, without the notes. Events that a later one
/// of the same kind overrides are left out.
[[nodiscard]] std::vector<std::uint32_t> Chase(const Sequence& sequence, std::size_t end);

}  // namespace sonnel
