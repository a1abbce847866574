#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

namespace sonnel {

/// The nearest whole number, halves to the even one; a value past the range of Int takes the
/// nearest bound, and NaN gives 0.
template <class Int>
[[nodiscard]] Int RoundHalfEven(double value) {
    if (std::isnan(value)) {
        return 0;
    }
    const double rounded = std::isinf(value) ? value : value - std::remainder(value, 1.0);
    if (rounded <= static_cast<double>(std::numeric_limits<Int>::min())) {
        return std::numeric_limits<Int>::min();
    }
    if (rounded >= static_cast<double>(std::numeric_limits<Int>::max())) {
        return std::numeric_limits<Int>::max();
    }
    return static_cast<Int>(rounded);
}

/// The number a text begins with, rounded: leading blanks skipped, a sign, digits and decimals read
/// up to the first other character; no digits give 0. Saturates at the bounds of 64 bits.
[[nodiscard]] std::int64_t ReadRounded(std::string_view text);

/// The same, with a value past the range of Int taking the nearest bound.
template <class Int>
[[nodiscard]] Int ReadInteger(std::string_view text) {
    return static_cast<Int>(std::clamp<std::int64_t>(
        ReadRounded(text), std::numeric_limits<Int>::min(), std::numeric_limits<Int>::max()));
}

/// A number of 0 or more with zeros in front of it where it has fewer digits than `digits`.
[[nodiscard]] std::string ZeroPadded(std::int64_t number, std::size_t digits);

}  // namespace sonnel
