#pragma once

#include "platform/midi/Sequence.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace sonnel {

/// The events (by their numbers, in order) that bring a freshly reset synthesiser to where playing
/// all events before number `end` would have brought it, but for notes: what a later event of the
/// same kind overrides is left out, and so are notes.
[[nodiscard]] std::vector<std::uint32_t> Chase(const Sequence& sequence, std::size_t end);

}  // namespace sonnel
