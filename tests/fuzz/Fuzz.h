#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace sonnel {

inline void Require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

/// What a target does with one input.
void Check(const std::string& bytes);

}  // namespace sonnel

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    sonnel::Check(std::string(data, data + size));
    return 0;
}
